#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include "DLG/Export.h"
#include "KOR/Time.h"
#include "KOR/Timecode.h"

namespace zelui::drawbot {
class SupplierInterface;
}
namespace zelui::ui {
class UI_Node;
}

namespace DLG {

// The status text and action button text, as string IDs, of an export state. States 4 and 7
// share theirs; 0 and unknown states show the idle texts.
DLG_API std::pair<unsigned int, unsigned int> ExportStateTextIDs(std::uint32_t inState);

// The export-to-tape dialog. The host's export controller fills it, runs it, reports the
// export's state and progress through the setters while it runs, and closes it; the dialog
// forwards each change the user makes to a control to the callback, with the control's name.
//
// The layout script is read when the dialog is made and built when it runs; the setters may be
// called before the run (the controls then show their values once built). The progress and
// button setters need their controls: calling them while the dialog is not running fails the
// input contract.
class DLG_API ExportToTapeDialogImpl {
public:
    using ControlChangedFunction = boost::function<void(const std::wstring& inControlName)>;

    ExportToTapeDialogImpl(const std::wstring& inScriptName, const zelui::drawbot::SupplierInterface* inSupplier,
                           zelui::ui::UI_Node* inParent, bool inHasDeviceController,
                           boost::shared_ptr<ControlChangedFunction> inCallback);
    ~ExportToTapeDialogImpl();
    ExportToTapeDialogImpl(const ExportToTapeDialogImpl&) = delete;
    ExportToTapeDialogImpl& operator=(const ExportToTapeDialogImpl&) = delete;

    // Runs the dialog until the user cancels or the host closes it; Enter ends nothing. False
    // when it was cancelled or its script could not be read.
    bool DoModal();

    void SetControlValues(const KOR::Timecode& inFirst, const KOR::Timecode& inSecond, const KOR::Timecode& inThird,
                          KOR::Time inAssembleTime, bool inActivateRecordingDevice, bool inAssembleAtTimecode,
                          bool inDelayMovieStart, bool inPreroll, bool inAbortAfter, bool inRenderAudioBeforeExport,
                          bool inReportDroppedFrames, std::uint32_t inDelayFrames, std::uint32_t inPrerollFrames,
                          std::uint32_t inAbortAfterCount);
    // The activate flag comes last here, first in SetControlValues: the host calls both by position.
    void GetControlValues(KOR::Time& outAssembleTime, bool& outAssembleAtTimecode, bool& outDelayMovieStart,
                          bool& outPreroll, bool& outAbortAfter, bool& outRenderAudioBeforeExport,
                          bool& outReportDroppedFrames, bool& outActivateRecordingDevice, std::uint32_t& outDelayFrames,
                          std::uint32_t& outPrerollFrames, std::uint32_t& outAbortAfterCount) const;

    void SetExportState(std::uint32_t inState);
    void SetActionButtonString(const std::wstring& inText);
    void SetDroppedFramesString(const std::wstring& inText);
    void UpdateProgressTimecodes(const KOR::Timecode& inStart, const KOR::Timecode& inEnd,
                                 const KOR::Timecode& inCurrent);
    // Ends the run as confirmed, keeping the values the controls show; nothing when not running.
    void CloseDialog();

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace DLG
