#pragma once

#include <string>

#include "KOR/HostAPI.h"

namespace TL {

// The pages of the product help.
inline const std::wstring kHelpHomePage = L"home";

// Shows pages of the product help; the running host installs one in KOR::Services().
class HOST_API HelpService {
public:
    virtual ~HelpService();
    // True when the page was handed to a viewer.
    virtual bool OpenHelpPage(const std::wstring& inPage) = 0;
};

class HOST_API TarvixHelpCenter {
public:
    // Opens inPage in the help viewer; false when the host offers no help or lacks the page.
    static bool OpenHelpPage(const std::wstring& inPage);
};

} // namespace TL
