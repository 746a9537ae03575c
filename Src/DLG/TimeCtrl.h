#pragma once

#include <string>

#include <boost/signals2/connection.hpp>

#include "DLG/Export.h"
#include "DLG/HotNumberControl.h"
#include "KOR/Timecode.h"
#include "UIF/TimecodeInfo.h"

namespace DLG {

// A time field: a hot number whose number is a count of frames, shown as timecode in the
// display format and clamped to a minimum and maximum time. Dragging steps one frame per
// pixel; typing takes timecode in the display format, or "+..." and "-..." to add to or take
// from the time shown. It follows the project's timecode settings through the info's notifier.
class DLG_API TimeCtrl : public zelui::controls::UI_HotTextNumber {
public:
    TimeCtrl(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
             const UIF::TimecodeControlInfo& inInfo);
    // Takes inReplaced's place in its window. With inStationName the control's station has that
    // name (numbered while another live station holds it); without, a unique one.
    TimeCtrl(zelui::controls::UI_HotTextNumber& inReplaced, const UIF::TimecodeControlInfo& inInfo,
             const std::wstring& inStationName = std::wstring());
    ~TimeCtrl() override;

    // The time is kept exactly, between frames too, until the user changes it.
    void SetTime(KOR::Time inTime);
    // Within the minimum and maximum time.
    KOR::Time GetTime() const;
    void SetDisplayFormat(unsigned int inFormat);
    unsigned int GetDisplayFormat() const { return mFormat; }
    // Keeps the time shown; a zero rate turns a frame-counting format into milliseconds.
    void SetFrameRate(KOR::FrameRate inRate);
    KOR::FrameRate GetFrameRate() const { return mRate; }
    void SetMinimumTime(KOR::Time inTime);
    void SetMaximumTime(KOR::Time inTime);
    KOR::Time GetMinimumTime() const { return mMinimumTime; }
    KOR::Time GetMaximumTime() const { return mMaximumTime; }
    // Shows the project's audio time display (format and rate) instead of its video one.
    void SetUseAlternateDisplay(bool inUseAlternate);
    const std::wstring& GetStationName() const { return mStation; }

    void UpdateStringFromValue() override;
    bool UI_DoMouseEvent(zelui::ui::UI_Node* inNode, const zelui::ui::MouseEvent& inEvent) override;

protected:
    void CommitInPlaceText() override;

private:
    struct Display {
        unsigned int format;
        KOR::FrameRate rate;
    };

    void Initialize(const UIF::TimecodeControlInfo& inInfo, const std::wstring& inStationName);
    // What the number counts: frames at the rate, or milliseconds when the rate is zero.
    KOR::FrameRate CountingRate() const;
    void SetNumberFromTime(KOR::Time inTime);
    void UpdateNumberRange();
    void ApplyProjectInfo(const UIF::TimecodeInfo& inInfo);
    void StoreCurrentDisplay();
    KOR::Time Clamped(KOR::Time inTime) const;
    bool IsAcceptableEntry(const std::wstring& inText) const;

    std::wstring mStation;
    unsigned int mFormat = KOR::kTimecodeFormat_SMPTE30;
    KOR::FrameRate mRate = KOR::kFrameRate_Video30;
    Display mPrimary{KOR::kTimecodeFormat_SMPTE30, KOR::kFrameRate_Video30};
    Display mAlternate{KOR::kTimecodeFormat_AudioSamples, KOR::kFrameRate_Audio48000};
    bool mUseAlternate = false;
    KOR::Timecode mTimecode;
    KOR::Time mMinimumTime;
    KOR::Time mMaximumTime;
    KOR::Time mExactTime;       // the time last set, while the number still shows it
    double mExactNumber = -1.0; // the number that mExactTime set
    InteractiveRelay mRelay;
    boost::shared_ptr<UIF::TimecodeNotifier> mNotifier; // kept alive while the control listens
    boost::signals2::scoped_connection mNotifierConnection;
};

// A time control shows and reads back a time field of a dialog.
inline void ShowValue(TimeCtrl& ioControl, KOR::Time inTime) { ioControl.SetTime(inTime); }
inline void ReadValue(const TimeCtrl& inControl, KOR::Time& outTime) { outTime = inControl.GetTime(); }

} // namespace DLG
