#include "DLG/FitClipDialog.h"

#include <array>
#include <utility>

#include "DLG/DialogBaseImpl.h"
#include "DLG/ExclusiveRadios.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"

namespace DLG {

namespace {

using zelui::controls::UI_RadioButton;

// In the order in which FitClipChoice lets a later checked one win.
constexpr std::array<unsigned long, 5> kChoiceOrder = {kFitClip_ChangeSpeed, kFitClip_TrimHead, kFitClip_TrimTail,
                                                       kFitClip_IgnoreOutPoint, kFitClip_IgnoreInPoint};

constexpr std::array<std::pair<const wchar_t*, unsigned long>, 5> kRadios = {{
    {L"changeClipSpeedRadioButton", kFitClip_ChangeSpeed},
    {L"trimClipsHeadRadioButton", kFitClip_TrimHead},
    {L"trimClipsTailRadioButton", kFitClip_TrimTail},
    {L"ignoreSequenceInPointRadioButton", kFitClip_IgnoreInPoint},
    {L"ignoreSequenceOutPointRadioButton", kFitClip_IgnoreOutPoint},
}};

struct FitClip {
    unsigned long options;
    unsigned long choice;
};

class FitClipDialog : public DialogBaseImpl {
public:
    FitClipDialog(const UIF::Workspace& inWorkspace, const FitClip& inFitClip)
        : DialogBaseImpl(L"FitClipDialog", inWorkspace), mFitClip(inFitClip)
    {
    }

    const FitClip& Result() const { return mFitClip; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (const unsigned int message = FitClipMessage(mFitClip.options)) {
            if (const auto text = GetUINodePtr<zelui::controls::UI_StaticText>(L"fitClipStaticText")) {
                text->SetText(LoadString(message));
            }
        }
        for (const auto& [name, choice] : kRadios) {
            mChoices.Add(GetUINodePtr<UI_RadioButton>(name), choice);
            mChoices.SetEnabled(choice, IsFitClipChoiceOffered(mFitClip.options, choice));
        }
        mChoices.Check(kFitClip_ChangeSpeed);
    }

    void ReadControls() override
    {
        unsigned long checked = 0;
        for (const auto& [name, choice] : kRadios) {
            checked |= mChoices.IsChecked(choice) ? choice : 0;
        }
        mFitClip.choice = FitClipChoice(checked);
    }

    FitClip mFitClip;
    ExclusiveRadios<unsigned long> mChoices;
};

} // namespace

unsigned int FitClipMessage(unsigned long inOptions)
{
    unsigned int message = 0;
    if (inOptions & kFitClip_ClipLonger) {
        message = kStr_FitClipLonger;
    }
    if (inOptions & kFitClip_ClipShorter) {
        message = kStr_FitClipShorter;
    }
    return message;
}

bool IsFitClipChoiceOffered(unsigned long inOptions, unsigned long inChoice) { return (inOptions & inChoice) != 0; }

unsigned long FitClipChoice(unsigned long inChecked)
{
    unsigned long choice = kFitClip_ChangeSpeed;
    for (const unsigned long candidate : kChoiceOrder) {
        if (inChecked & candidate) {
            choice = candidate;
        }
    }
    return choice;
}

bool DoFitClipDialog(unsigned long inOptions, unsigned long& outChoice)
{
    FitClip fitClip{inOptions, kFitClip_ChangeSpeed};
    const bool confirmed = RunScriptDialog<FitClipDialog>(L"FitClipDialog.vrel", fitClip);
    outChoice = confirmed ? fitClip.choice : 0;
    return confirmed;
}

} // namespace DLG
