#pragma once

#include <string>

#include "zelui/Controls.h"

namespace zelui::controls {

// A drop-down list of texts; "QComboBox" in layout scripts. Changes the user makes are broadcast,
// changes made through these calls are not.
class HOST_API UI_Popup : public UI_Control {
public:
    using UI_Control::UI_Control;
    ~UI_Popup() override;

    void Clear();
    // Appends an item and returns its index.
    int AddItem(const std::wstring& inText);
    int GetItemCount() const;
    std::wstring GetItemText(int inIndex) const;
    void SelectItem(int inIndex);
    // The selected item, or -1.
    int GetSelectedItem() const;
};

// A field that takes the key the user presses in it, with its modifiers, as its value;
// "UI_KeyCaptureEdit" in layout scripts. Tab and Shift+Tab still move the focus. Each key
// pressed is broadcast as a change.
class HOST_API UI_KeyCaptureEdit : public UI_Control {
public:
    using UI_Control::UI_Control;
    ~UI_KeyCaptureEdit() override;

    // The key in portable text ("Ctrl+Shift+Z"); empty for none.
    void SetKey(const std::wstring& inKey);
    std::wstring GetKey() const;
};

} // namespace zelui::controls
