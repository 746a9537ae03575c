#include "DLG/SetNumberedMarkerDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "DLG/HotNumberControl.h"

namespace DLG::SetNumberedMarker {

namespace {

struct Marker {
    long number;
    std::wstring name;
};

class SetNumberedMarkerDialog : public DialogBaseImpl {
public:
    SetNumberedMarkerDialog(const UIF::Workspace& inWorkspace, const Marker& inMarker)
        : DialogBaseImpl(L"SetNumberedMarkerDialog", inWorkspace), mMarker(inMarker)
    {
    }

    const Marker& Result() const { return mMarker; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        ShowNumber();
        if (const auto name = Bind<zelui::controls::UI_TextEdit>(L"markerNameTextEdit", mMarker.name)) {
            name->SelectAll();
        }
    }

    // The caller chose the number; the control tells which marker is being named and takes no input.
    void ShowNumber()
    {
        const auto scripted = GetUINodePtr<zelui::controls::UI_HotTextNumber>(L"markerNumberHotTextNumber");
        if (!scripted) {
            return;
        }
        mNumber = new HotNumberControl(*scripted);
        scripted->SetVisible(false);
        mNumber->SetVisible(true);
        ShowValue(*mNumber, static_cast<double>(mMarker.number));
        mNumber->SetEnabled(false);
    }

    Marker mMarker;
    boost::intrusive_ptr<HotNumberControl> mNumber;
};

} // namespace

bool DoSetNumberedMarkerDialog(long inNumber, std::wstring& ioName)
{
    Marker marker{inNumber, ioName};
    if (!RunScriptDialog<SetNumberedMarkerDialog>(L"SetNumberedMarkerDialog.vrel", marker)) {
        return false;
    }
    ioName = marker.name;
    return true;
}

} // namespace DLG::SetNumberedMarker
