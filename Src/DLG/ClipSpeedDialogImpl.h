#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "BE/Project.h"
#include "DLG/DialogBaseImpl.h"
#include "DLG/Export.h"
#include "DLG/HotNumberControl.h"
#include "DLG/TimeCtrl.h"
#include "KOR/Time.h"
#include "zelui/UI_SubView.h"

namespace UIF {
class Commander;
}

namespace DLG::ClipSpeedDialog {

// Edits a clip's speed in percent and its duration, linked (ganged) or not, with reversed
// playback and kept audio pitch. referenceDuration is the clip's duration at 100 %.
// inEnableReverse and inEnablePitch enable the two check boxes; inEnableDuration enables the
// duration and the gang: without it the duration stays as it is and speed edits leave it alone.
// On confirmation writes the speed, the duration, the two check boxes and outGanged (whether the
// duration followed the speed, so that the caller knows whether to ripple the clip's length);
// returns whether the user confirmed. The project must not be null.
DLG_API bool DoClipSpeedDialog(UIF::Commander* inCommander, KOR::InterfaceRef<BE::IProject> inProject,
                               double& ioSpeedPercent, KOR::Time& ioDuration, const KOR::Time& inReferenceDuration,
                               bool& ioReverse, bool& ioMaintainPitch, bool& outGanged, bool inEnableReverse,
                               bool inEnablePitch, bool inEnableDuration);

// Speeds are whole hundredths of a percent: 10000 is normal speed.
inline constexpr std::int32_t kNormalSpeed = 10000;
// The longest duration the dialog gives a clip: 23:59:00.
inline constexpr KOR::Time kLongestDuration = KOR::Time::FromSeconds(86340);
// Whether speed and duration are linked, remembered in the backend's properties.
inline constexpr const wchar_t* kGangedProperty = L"ClipSpeed.Ganged";
inline constexpr bool kDefaultGanged = true;
// The message station of the duration field.
inline constexpr const wchar_t* kDurationStation = L"uif.timecodeControl.station";

// A typed percentage in hundredths, rounded half to even.
std::int32_t HundredthsFromPercent(double inPercent);
// The percentage the speed field shows for inHundredths: hundredths x 0.01f, widened.
double ShownPercent(std::int32_t inHundredths);
// The percentage kept for the caller: hundredths x 0.01 in single precision.
double KeptPercent(std::int32_t inHundredths);
// reference x multiplier / (hundredths / 10000), to the nearest tick (half to even), exactly.
// inHundredths must be above zero.
KOR::Time DurationAtSpeed(KOR::Time inReference, double inRateMultiplier, std::int32_t inHundredths);
// The inverse: the nearest hundredths (half to even) at which the clip lasts inDuration.
// inDuration must be above zero.
std::int64_t HundredthsForDuration(KOR::Time inReference, double inRateMultiplier, KOR::Time inDuration);

// The speed and duration of a clip and the rule that ties them while ganged. Every duration is
// derived from the reference duration, never from the one shown before, so that normal speed
// always gives back reference x multiplier to the tick.
class SpeedLink {
public:
    // What the fields show after an edit, and the speed kept for the caller.
    struct Update {
        std::optional<double> shownSpeed; // the speed field shows this, when set
        bool checkReverse = false;        // a negative speed was typed: playback is reversed
        KOR::Time duration;               // the duration field shows this
        double keptSpeed = 0.0;
    };

    SpeedLink(KOR::Time inReference, double inRateMultiplier, double inSpeedPercent, KOR::Time inDuration,
              bool inGanged);

    // A speed typed in the speed field (negative: reversed).
    Update EnterSpeed(double inTypedPercent);
    // A duration typed in the duration field. Ganged, the speed follows, within inMaxHundredths;
    // a duration that no allowed speed gives is replaced by the one the nearest speed gives.
    Update EnterDuration(KOR::Time inTyped, std::int32_t inMaxHundredths);
    // Links or unlinks. Linking derives the duration from the current speed; at the limit the
    // speed field shows the raised speed negated when playback is reversed.
    Update ToggleGang(bool inReversed);
    // Links or unlinks without deriving anything: the state remembered from the last use.
    void SetGanged(bool inGanged) { mGanged = inGanged; }

    bool IsGanged() const { return mGanged; }
    std::int32_t Hundredths() const { return mHundredths; }
    double Factor() const { return mFactor; }
    KOR::Time Duration() const { return mDuration; }
    double KeptSpeed() const { return mKeptSpeed; }

private:
    // Ganged: the duration from the speed, no longer than kLongestDuration; at the limit the
    // speed is raised to match. False when the speed is zero (the duration stays).
    bool DeriveDuration();
    void SetHundredths(std::int32_t inHundredths);
    // The speed that makes the clip last inDuration: the factor exactly, the hundredths rounded.
    void SetSpeedForDuration(KOR::Time inDuration, std::int32_t inHundredths);
    // With inSpeedSet the speed kept for the caller becomes the one the hundredths give.
    Update Current(std::optional<double> inShownSpeed, bool inCheckReverse, bool inSpeedSet);

    KOR::Time mReference;
    double mRateMultiplier;
    std::int32_t mHundredths;
    double mFactor;
    // Set while the factor is reference x multiplier / this duration (a typed one, or the longest)
    // rather than hundredths / 10000, so that linking again gives this duration back.
    std::optional<KOR::Time> mFactorDuration;
    KOR::Time mDuration;
    double mKeptSpeed;
    bool mGanged;
};

} // namespace DLG::ClipSpeedDialog

namespace DLG {

// The link between the speed and duration fields: a chain drawn whole while they are ganged and
// broken while they are not. A click, or Space while it has the focus, asks to toggle.
class GangSubView : public zelui::ui::UI_SubView {
public:
    GangSubView(zelui::ui::UI_Node& inArea, const ClipSpeedDialog::SpeedLink& inLink, std::function<void()> inToggle);

    // Shows the link's state again (drawing and accessible name).
    void Refresh();

    void UI_Draw(zelui::drawbot::DrawInterface& ioDrawer) override;
    bool UI_DoMouseEvent(zelui::ui::UI_Node* inNode, const zelui::ui::MouseEvent& inEvent) override;
    bool UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent) override;

private:
    const ClipSpeedDialog::SpeedLink& mLink;
    std::function<void()> mToggle;
};

// The caller's values as the clip speed dialog edits them.
struct ClipSpeedValues {
    double speedPercent;
    KOR::Time duration;
    bool reverse;
    bool maintainPitch;
    bool ganged; // the result only: the dialog reads the remembered gang when it binds
};

// What the caller allows to change.
struct ClipSpeedEnabling {
    bool reverse;
    bool pitch;
    bool duration;
};

class ClipSpeedDialogImpl : public DialogBaseImpl {
public:
    ClipSpeedDialogImpl(const UIF::Workspace& inWorkspace, KOR::InterfaceRef<BE::IProject> inProject,
                        const ClipSpeedValues& inValues, KOR::Time inReferenceDuration,
                        const ClipSpeedEnabling& inEnabling);

    const ClipSpeedValues& Result() const { return mValues; }

private:
    void BindControls() override;
    void ReadControls() override;
    void BindSpeed();
    void BindDuration();
    void BindGang();
    void SpeedEntered();
    void DurationEntered();
    void ToggleGang();
    void Show(const ClipSpeedDialog::SpeedLink::Update& inUpdate);

    KOR::InterfaceRef<BE::IProject> mProject;
    ClipSpeedValues mValues;
    ClipSpeedEnabling mEnabling;
    ClipSpeedDialog::SpeedLink mLink;
    boost::intrusive_ptr<HotNumberControl> mSpeed;
    boost::intrusive_ptr<TimeCtrl> mDuration;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mReverse;
    boost::intrusive_ptr<GangSubView> mGangView;
};

} // namespace DLG
