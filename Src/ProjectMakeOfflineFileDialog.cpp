#include "DLG/ProjectMakeOfflineFileDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "DLG/ExclusiveRadios.h"

namespace DLG {

namespace {

using zelui::controls::UI_RadioButton;

class ProjectMakeOfflineFileDialog : public DialogBaseImpl {
public:
    ProjectMakeOfflineFileDialog(const UIF::Workspace& inWorkspace, bool)
        : DialogBaseImpl(L"ProjectMakeOfflineFileDialog", inWorkspace)
    {
    }

    bool Result() const { return mDeleteFiles; }

private:
    // Keeping the files is the choice that loses nothing, whatever the caller last chose.
    void BindControls() override
    {
        BindOkAndCancel();
        mChoice.Add(GetUINodePtr<UI_RadioButton>(L"remainRadioButton"), false);
        mChoice.Add(GetUINodePtr<UI_RadioButton>(L"deleteRadioButton"), true);
        mChoice.Check(false);
    }

    void ReadControls() override { mDeleteFiles = mChoice.IsChecked(true); }

    ExclusiveRadios<bool> mChoice;
    bool mDeleteFiles = false;
};

} // namespace

bool DoProjectMakeOfflineFileDialog(bool& outDeleteFiles)
{
    return RunScriptDialog<ProjectMakeOfflineFileDialog>(L"ProjectMakeOfflineFileDialog.vrel", outDeleteFiles);
}

} // namespace DLG
