#include "DLG/HideShowTracksDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_ListBox;

struct Tracks {
    std::vector<std::wstring> names;
    std::vector<bool> shown;
};

class HideShowTracksDialog : public DialogBaseImpl {
public:
    HideShowTracksDialog(const UIF::Workspace& inWorkspace, const Tracks& inTracks)
        : DialogBaseImpl(L"HideShowTracksDialog", inWorkspace), mTracks(inTracks)
    {
    }

    const Tracks& Result() const { return mTracks; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        mList = GetUINodePtr<UI_ListBox>(L"columnList");
        if (mList) {
            mList->SetRowsCheckable(true);
            for (const std::wstring& name : mTracks.names) {
                mList->AddRow({name});
            }
            Bind(mList, mTracks.shown);
            mList->SelectRow(0);
            mList->SetFocus();
        }
        OnChange<UI_Button>(L"showAllButton", [this] { CheckEveryRow(true); });
        OnChange<UI_Button>(L"hideAllButton", [this] { CheckEveryRow(false); });
    }

    void CheckEveryRow(bool inChecked)
    {
        if (mList) {
            ShowValue(*mList, std::vector<bool>(mTracks.names.size(), inChecked));
        }
    }

    Tracks mTracks;
    boost::intrusive_ptr<UI_ListBox> mList;
};

} // namespace

bool DoHideShowTracksDialog(std::vector<std::wstring>& inNames, std::vector<bool>& ioShown)
{
    ZEL_INPUT_CONTRACT(inNames.size() == ioShown.size());
    Tracks tracks{inNames, ioShown};
    if (!RunScriptDialog<HideShowTracksDialog>(L"HideShowTracksDialog.vrel", tracks)) {
        return false;
    }
    ioShown = tracks.shown;
    return true;
}

} // namespace DLG
