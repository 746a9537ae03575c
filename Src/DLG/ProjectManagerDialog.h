#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "BE/Project.h"
#include "DLG/DialogBaseImpl.h"
#include "DLG/ExclusiveRadios.h"
#include "DLG/Export.h"
#include "KOR/BatchOperation.h"
#include "KOR/InterfaceRef.h"
#include "TL/ProjectManager.h"
#include "UIF/MessageBox.h"

namespace DLG::ProjectManager {

// Makes a trimmed or collected copy of inProject in a folder the user chooses, with the options
// the user sets (remembered in the preferences). The dialog closes once a copy has been written:
// then 0. Closed without one: TL::ProjectManager::kResult_Cancelled. The project must not be null.
DLG_API long DisplayProjectManager(KOR::InterfaceRef<BE::IProject> inProject);

// What destination validation answers besides 0.
inline constexpr long kError_DestinationNotAFolder = static_cast<std::int32_t>(0xA0110005);
inline constexpr long kError_DestinationNotWriteable = static_cast<std::int32_t>(0xA0110004);
// The host's code for a failure of no listed kind: the operation could not even be queued.
inline constexpr long kError_NotStarted = static_cast<std::int32_t>(0xA00F0001);

// The save question before an unsaved project is managed: only its "save" answer goes on. The
// host's message box has no button set of its own for it: Yes saves, No goes back to the dialog.
inline constexpr unsigned long kSaveQuestionButtons = UIF::kMessageBox_YesNo;
inline constexpr unsigned long kSaveQuestionIcon = UIF::kMessageBoxIcon_Question;
inline constexpr long kSaveAnswer = UIF::kMessageBoxResult_Yes;
// The failure box: OK alone, the error icon.
inline constexpr unsigned long kFailureButtons = UIF::kMessageBox_OK;
inline constexpr unsigned long kFailureIcon = UIF::kMessageBoxIcon_Error;

// The handle frames proposed for a project: its frame rate rounded to the nearest whole number
// (halves away from zero), 30 when it has no frame rate.
int DefaultHandleFrames(const BE::IProject& inProject);

// The options before the preferences are read; the destination is the project file's folder.
TL::ProjectManager::Options DefaultOptions(const BE::IProject& inProject);

// The string ID of the message for a failed run's code (negative, not the cancellation).
unsigned int FailureMessageID(long inResult);
// inText with its first "%s" replaced by inFailureText; a text without "%s" stays as it is.
std::wstring SubstituteFailureText(std::wstring inText, const std::wstring& inFailureText);

// The host calls the project manager makes. The defaults are the host's own; tests replace them.
struct HostCalls {
    std::function<TL::ProjectManager::ProjectManagerOperationRef(const BE::ProjectRef&,
                                                                 const TL::ProjectManager::Options&, bool)>
        createOperation;
    // Conforms the project's audio; true when everything is conformed.
    std::function<bool(const BE::ProjectRef&)> conform;
    // Saves the project to its own file without reporting; 0 or a negative host code.
    std::function<long(const BE::ProjectRef&)> save;
    std::function<void(long)> showSaveError;
    std::function<long(const std::wstring&, const std::wstring&, unsigned long, unsigned long, long)> messageBox;
    // Shows the progress of a started operation until it completes; false when cancelled.
    std::function<bool(const std::wstring&, const KOR::InterfaceRef<KOR::IBatchOperation>&)> runProgress;
    std::function<void(bool)> pauseWorkerThreads;
};
HostCalls DefaultHostCalls();

// The sizes the dialog shows after a calculation: both, only the failure text in the resulting
// size, or nothing new when the user cancelled.
struct CalculatedSizes {
    std::optional<std::wstring> original;
    std::optional<std::wstring> resulting;
};

// The project manager without its window: the options, their preferences, the destination's
// validation, the calculation and the run.
class ProjectManagerLogic {
public:
    // Purges the media caches and reads the preferences.
    ProjectManagerLogic(BE::ProjectRef inProject, HostCalls inHost);

    TL::ProjectManager::Options& Options() { return mOptions; }
    const TL::ProjectManager::Options& Options() const { return mOptions; }

    void ReadPreferences();
    void WritePreferences() const;

    // 0 when the destination is a writeable folder, possibly after falling back to the stored
    // destination or the documents folder; otherwise the code, with the destination cleared.
    long ValidateDestination();
    // The free space on the destination's volume, as text.
    std::wstring FreeSpaceText() const;

    // Computes the sizes under a progress dialog.
    CalculatedSizes Calculate();

    // What the OK button does, to the end: the result of the run, or nothing when it stopped
    // before the operation (a save not made, a conform not completed).
    std::optional<long> Run();

private:
    bool SaveIfChanged();
    // Starts inOperation and follows it under a progress dialog titled inTitleID; its result.
    long RunOperation(const TL::ProjectManager::ProjectManagerOperationRef& inOperation, unsigned int inTitleID);
    long RunWithWorkersPaused();
    void ReportFailure(long inResult, const std::wstring& inFailureText) const;

    BE::ProjectRef mProject;
    HostCalls mHost;
    TL::ProjectManager::Options mOptions;
};

} // namespace DLG::ProjectManager

namespace DLG {

// The dialog's controls on ProjectManager::ProjectManagerLogic.
class ProjectManagerDlg : public DialogBaseImpl {
public:
    ProjectManagerDlg(const UIF::Workspace& inWorkspace, ProjectManager::ProjectManagerLogic& ioLogic);

    // The run's result once the dialog closed after one.
    std::optional<long> Result() const { return mResult; }

private:
    enum class Mode { kTrimmed, kCollected };

    void BindControls() override;
    void BindOptions();
    void BindSizes();
    void ShowOptions();
    void ShowDestination();
    // The handle field follows the include-handles box.
    void ForgetResultingSize();
    void EnableHandleFrames();
    void ReadOptions();
    void Browse();
    void Calculate();
    void Ok();
    void ReportInvalidDestination(long inCode) const;

    ProjectManager::ProjectManagerLogic& mLogic;
    std::optional<long> mResult;
    ExclusiveRadios<Mode> mMode;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mExcludeUnused;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mMakeOffline;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mIncludeHandles;
    boost::intrusive_ptr<zelui::controls::UI_NumberEdit> mHandleFrames;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mIncludePreviews;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mIncludeConformed;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mRename;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mPath;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mFreeSpace;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mOriginalSize;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mResultingSize;
};

} // namespace DLG
