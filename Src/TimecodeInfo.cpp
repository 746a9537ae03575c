#include "DLG/TimecodeInfo.h"

#include <boost/make_shared.hpp>
#include <boost/signals2/signal.hpp>

#include "BE/ProjectSettings.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

// Listens to a project's settings and passes its timecode info on when they change.
class ProjectTimecodeNotifier : public UIF::TimecodeNotifier {
public:
    ProjectTimecodeNotifier(KOR::InterfaceRef<BE::IProject> inProject,
                            KOR::InterfaceRef<BE::IProjectSettings> inSettings)
        : mProject(std::move(inProject)),
          mConnection(inSettings->ConnectSettingsChanged([this] { mChanged(GetTimecodeInfo(mProject)); }))
    {
    }

    boost::signals2::connection Connect(const Listener& inListener) override { return mChanged.connect(inListener); }

private:
    KOR::InterfaceRef<BE::IProject> mProject;
    boost::signals2::signal<void(const UIF::TimecodeInfo&)> mChanged;
    boost::signals2::scoped_connection mConnection;
};

} // namespace

UIF::TimecodeInfo GetTimecodeInfo(KOR::InterfaceRef<BE::IProject> inProject)
{
    ZEL_INPUT_CONTRACT(inProject != NULL);
    const KOR::InterfaceRef<BE::IProjectSettings> inProjectSettings = inProject->GetProjectSettings();
    ZEL_INPUT_CONTRACT(inProjectSettings != NULL);
    const KOR::InterfaceRef<BE::IVideoSettings> video = inProjectSettings->GetVideoSettings();
    const KOR::InterfaceRef<BE::IAudioSettings> audio = inProjectSettings->GetAudioSettings();
    UIF::TimecodeInfo info;
    info.displayFormat = inProjectSettings->GetTimeDisplayFormat();
    info.videoFrameRate = video->GetFrameRate();
    info.audioDisplayFormat = inProjectSettings->GetAudioTimeDisplayFormat();
    info.audioRate = audio->GetSampleRate();
    return info;
}

UIF::TimecodeControlInfo CreateNotifyingTimecodeControlInfo(KOR::InterfaceRef<BE::IProject> inProject)
{
    ZEL_INPUT_CONTRACT(inProject != NULL);
    UIF::TimecodeControlInfo info;
    static_cast<UIF::TimecodeInfo&>(info) = GetTimecodeInfo(inProject);
    info.notifier = boost::make_shared<ProjectTimecodeNotifier>(inProject, inProject->GetProjectSettings());
    return info;
}

} // namespace DLG
