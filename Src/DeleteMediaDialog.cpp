#include "DLG/DeleteMediaDialog.h"

#include <optional>

#include "DLG/DialogBaseImpl.h"

namespace DLG::DeleteMedia {

namespace {

using zelui::controls::UI_CheckBox;

class DeleteMediaDialog : public DialogBaseImpl {
public:
    explicit DeleteMediaDialog(const UIF::Workspace& inWorkspace) : DialogBaseImpl(L"DeleteMediaDialog", inWorkspace)
    {
    }

    // The check box's last state; empty when the user never saw it.
    std::optional<bool> DeleteMedia() const { return mDeleteMedia; }

private:
    // The state is followed click by click, since a cancelled dialog reports it too.
    void BindControls() override
    {
        BindOkAndCancel();
        const auto checkbox = GetUINodePtr<UI_CheckBox>(L"deleteMediaCheckbox");
        if (!checkbox) {
            return;
        }
        checkbox->SetChecked(true);
        mDeleteMedia = true;
        checkbox->NotifyWhenChanged([this, raw = checkbox.get()] { mDeleteMedia = raw->IsChecked(); });
        checkbox->SetFocus();
    }

    std::optional<bool> mDeleteMedia;
};

} // namespace

bool DoDeleteMediaDialog(bool& outDeleteMedia)
{
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"DeleteMediaDialog.vrel", script);
    if (!workspace) {
        return false;
    }
    DeleteMediaDialog dialog(*workspace);
    dialog.Run(script);
    if (const std::optional<bool> deleteMedia = dialog.DeleteMedia()) {
        outDeleteMedia = *deleteMedia;
    }
    return !dialog.WasCancelled();
}

} // namespace DLG::DeleteMedia
