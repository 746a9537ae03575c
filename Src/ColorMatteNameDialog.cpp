#include "DLG/ColorMatteNameDialog.h"

#include "BE/ColorMatte.h"
#include "DLG/DialogBaseImpl.h"
#include "DLG/ScriptLoader.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "UIF/MessageBox.h"
#include "zelcore/Error.h"

namespace DLG::ColorMatteName {

namespace {

using zelui::controls::UI_TextEdit;

bool IsBlank(const std::wstring& inText) { return inText.find_first_not_of(L" \t\r\n") == std::wstring::npos; }

class ColorMatteNameDialog : public DialogBaseImpl {
public:
    ColorMatteNameDialog(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                         std::wstring inName)
        : DialogBaseImpl(L"ColorMatteNameDialog", inSupplier, inParent), mName(std::move(inName))
    {
    }

    const std::wstring& Name() const { return mName; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        mNameEdit = Bind<UI_TextEdit>(L"matteNameTextEdit", mName);
        if (mNameEdit) {
            mNameEdit->SelectAll();
        }
    }

    // A matte needs a name to be found by in the project: an empty one keeps the dialog open.
    bool ValidateControls() override
    {
        if (mNameEdit && IsBlank(mNameEdit->GetText())) {
            UIF::MessageBoxW(LoadString(kStr_ColorMatteNameEmpty), LoadString(kStr_ColorMatteNameCaption),
                             UIF::kMessageBox_OK, UIF::kMessageBoxIcon_Error, 0);
            mNameEdit->SelectAll();
            return false;
        }
        return true;
    }

    std::wstring mName;
    boost::intrusive_ptr<UI_TextEdit> mNameEdit;
};

} // namespace

void CreateColorMatteNameDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                                const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent)
{
    ZEL_INPUT_CONTRACT(inDialogID == kColorMatteNameDialogID);
    const auto parameters = KOR::InterfaceRef<BE::IColorMatteNameParameters>::Query(inParameters);
    ZEL_INPUT_CONTRACT(parameters != nullptr);

    ScriptLoader loader(L"ColorMatteNameDialog.vrel");
    std::stringstream script;
    if (!loader.GetStream(script)) {
        return;
    }
    ColorMatteNameDialog dialog(inSupplier, inParent, parameters->GetName());
    dialog.Run(script);
    if (!dialog.WasCancelled()) {
        parameters->SetName(dialog.Name());
    }
}

} // namespace DLG::ColorMatteName
