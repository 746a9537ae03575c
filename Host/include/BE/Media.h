#pragma once

#include <string>

#include "KOR/InterfaceRef.h"

namespace BE {

// A media file of the project. A numbered still sequence is one media item: its path is that
// of its first frame.
class HOST_API IMedia : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual std::wstring GetFilePath() const = 0;
    // How many numbered stills the item stands for; 0 when it is one file.
    virtual int GetStillCount() const = 0;

protected:
    ~IMedia() override;
};

using MediaRef = KOR::InterfaceRef<IMedia>;

} // namespace BE
