#pragma once

#include <string>

#include <boost/intrusive_ptr.hpp>

#include "ColorPicker/UI_ColorPickerControlsContainer.h"
#include "DLG/Export.h"
#include "KOR/Color.h"
#include "zelui/UI_Dialog.h"

namespace DLG::ColorPicker {

// The picker's window: the controls container above OK and Cancel. Only Cancel (or Escape,
// which presses it) cancels; every other way of ending the dialog confirms the colour.
class DLG_API ColorPickerDlog : public zelui::ui::OS_Dialog {
public:
    ColorPickerDlog(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                    KOR::ParamColor<unsigned long> inColor, const std::wstring& inTitle);
    ~ColorPickerDlog() override;

    // The chosen colour: each channel ANDed with the web-safe mask.
    KOR::ParamColor<unsigned long> GetColorRGB() const;
    bool GetCancelled() const { return mCancelled; }
    void CancelButtonPressed();
    const boost::intrusive_ptr<UI_ColorPickerControlsContainer>& GetContainer() const { return mContainer; }

    void UI_SizeChanged(const zelui::ui::Rect& inBounds) override;
    bool UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent) override;
    bool UI_DoMouseEvent(zelui::ui::UI_Node* inNode, const zelui::ui::MouseEvent& inEvent) override;

    static constexpr int kButtonRowHeight = 44;

private:
    boost::intrusive_ptr<UI_ColorPickerControlsContainer> mContainer;
    boost::intrusive_ptr<zelui::controls::UI_Button> mOkButton;
    boost::intrusive_ptr<zelui::controls::UI_Button> mCancelButton;
    bool mCancelled = false;
};

} // namespace DLG::ColorPicker
