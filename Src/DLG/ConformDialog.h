#pragma once

#include <atomic>
#include <optional>
#include <string>

#include "BE/Project.h"
#include "BE/Sequence.h"
#include "DLG/DialogBaseImpl.h"
#include "DLG/Export.h"
#include "KOR/BatchOperation.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Stations.h"
#include "KOR/WorkQueue.h"
#include "MF/Abort.h"

namespace DLG {

// Conforms the audio that the scope still needs, in a dialog that shows how far it got and lets
// the user stop. True at once, without a dialog, when nothing in the scope needs conforming;
// otherwise whether the dialog ended with everything conformed.
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IProject> inProject);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::ITrackItemSelection> inSelection);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IClip> inClip);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::ISequence> inSequence);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IChildClip> inChildClip);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IProjectItemSelection> inSelection);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IMasterClip> inMasterClip);

// What a conform covers: one of seven kinds of host object, the others null. Used is the first
// one set, in the order of the members.
struct ConformScope {
    KOR::InterfaceRef<BE::ISequence> sequence = nullptr;
    KOR::InterfaceRef<BE::IChildClip> childClip = nullptr;
    KOR::InterfaceRef<BE::IClip> clip = nullptr;
    KOR::InterfaceRef<BE::IMasterClip> masterClip = nullptr;
    KOR::InterfaceRef<BE::ITrackItemSelection> trackItems = nullptr;
    KOR::InterfaceRef<BE::IProjectItemSelection> projectItems = nullptr;
    KOR::InterfaceRef<BE::IProject> project = nullptr;
};

// Asks the host's conform utility about the scope's first set member; false without asking
// when none is set.
bool NeedsConform(const ConformScope& inScope, bool inConform, const std::wstring& inStation,
                  const KOR::InterfaceRef<MF::IAbort>& inAbort);

// The station every conform dialog listens on besides its operation's, registered the first
// time it is asked for.
const std::wstring& ConformDialogStation();

class ConformDialog;

// The background work of a conform dialog: one object that is the batch operation the dialog
// follows, the request queued on the shared work queue and the abort query the host's conform
// utility polls. The host's batch operation base gives it its unique station (registered in the
// constructor, disposed in the destructor) and the atomic abort flag, the only state it shares
// with the user-interface thread.
class ConformDialogOperation final : public KOR::BatchOperation, public KOR::IThreadedQueueRequest, public MF::IAbort {
public:
    // Asked for under this identifier, the operation answers with itself.
    static const KOR::InterfaceID kIID;

    // Conforms inDialog's scope; with no dialog it has nothing to do.
    explicit ConformDialogOperation(const ConformDialog* inDialog);
    ConformDialogOperation(const ConformDialogOperation&) = delete;
    ConformDialogOperation& operator=(const ConformDialogOperation&) = delete;

    std::uint32_t AddRef() override;
    std::uint32_t Release() override;
    bool QueryInterface(const KOR::InterfaceID& inID, void** outObject) override;

    std::wstring GetName() const;
    // Queues the work at priority 3 on the shared work queue, once; whether it was queued.
    bool Start();
    KOR::InterfaceRef<ConformDialogOperation> GetSelf();

    // Conforms the scope, then posts the completion message, also when the host's utility throws.
    void Run() override;
    // Cancelling (RequestCancel) is all that raises it.
    bool IsAborted() const override { return IsCancelRequested(); }

private:
    ~ConformDialogOperation() override;

    std::optional<ConformScope> mScope;
    std::atomic<std::uint32_t> mRefs{0};
    bool mStarted = false;
};

// Shows which media is being conformed and how far the whole conform got, from the conform
// messages on the operation's station and the dialog station. Cancel (or Escape, or closing)
// asks the operation to stop; the dialog stays until the operation says it finished, so that no
// worker is left at work when it returns. Confirmed when everything was conformed.
class ConformDialog : public DialogBaseImpl, public KOR::Listener {
public:
    ConformDialog(ConformScope inScope, const UIF::Workspace& inWorkspace);
    ~ConformDialog() override;

    const ConformScope& Scope() const { return mScope; }

protected:
    void BindControls() override;
    void ListenerMessageHandler(const std::wstring& inStation, const KOR::Message& inMessage) override;

private:
    void ShowProgress(const std::wstring& inMediaName, float inFraction);
    void Finish(bool inCompleted, const std::wstring& inFailure);
    void RequestCancel();

    ConformScope mScope;
    KOR::InterfaceRef<ConformDialogOperation> mOperation;
    std::wstring mOperationStation;
    bool mFinished = false;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mMediaText;
    boost::intrusive_ptr<zelui::controls::UI_ProgressBar> mProgressBar;
    boost::intrusive_ptr<zelui::controls::UI_Button> mCancelButton;
};

} // namespace DLG
