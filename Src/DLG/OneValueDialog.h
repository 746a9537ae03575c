#pragma once

#include <string>

namespace DLG {

// The script dialog inNodeName (its script is inNodeName plus ".vrel") with one number edit,
// inEditName, showing ioValue with all its text selected, so that typing replaces it. ioValue
// is written only when the user confirms; returns whether they did.
bool RunNumberDialog(const std::wstring& inNodeName, const std::wstring& inEditName, double& ioValue);

// What a name dialog says when the user confirms an empty name, by string ID. With both
// zero, any name (an empty one too) is taken.
struct EmptyNameMessage {
    unsigned int text = 0;
    unsigned int caption = 0;
};

// The script dialog inNodeName with one text edit, inEditName, showing ioName with all its text
// selected. With inRefusal set, an empty name keeps the dialog open after that message box.
// ioName is written only when the user confirms; returns whether they did.
bool RunNameDialog(const std::wstring& inNodeName, const std::wstring& inEditName, std::wstring& ioName,
                   EmptyNameMessage inRefusal = {});

} // namespace DLG
