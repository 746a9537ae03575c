#pragma once

#include <functional>
#include <utility>
#include <vector>

#include <boost/intrusive_ptr.hpp>

#include "zelui/Controls.h"

namespace DLG {

// The radio buttons of one choice, each standing for a value. The host leaves a radio button's
// neighbours checked, so the group keeps them exclusive: a click (or Space, or its mnemonic)
// checks that one and clears the others, and clicking the checked one leaves it checked.
template <class Value>
class ExclusiveRadios {
public:
    using Radio = boost::intrusive_ptr<zelui::controls::UI_RadioButton>;

    ExclusiveRadios() = default;
    ExclusiveRadios(const ExclusiveRadios&) = delete;
    ExclusiveRadios& operator=(const ExclusiveRadios&) = delete;

    // Adds the radio button that stands for inValue; a null one (the script lacks it) is skipped.
    void Add(const Radio& inRadio, Value inValue)
    {
        if (!inRadio) {
            return;
        }
        inRadio->NotifyWhenChanged([this, inValue] { Choose(inValue); });
        mRadios.emplace_back(inRadio, inValue);
    }

    // Runs inHandler with the value of each radio button the user picks.
    void OnChoose(std::function<void(Value)> inHandler) { mHandler = std::move(inHandler); }

    // Checks the radio button for inValue alone, telling no one.
    void Check(Value inValue)
    {
        for (const auto& [radio, value] : mRadios) {
            radio->SetChecked(value == inValue);
        }
    }

    bool IsChecked(Value inValue) const
    {
        for (const auto& [radio, value] : mRadios) {
            if (value == inValue && radio->IsChecked()) {
                return true;
            }
        }
        return false;
    }

    // Enables or disables the radio button for inValue.
    void SetEnabled(Value inValue, bool inEnabled)
    {
        for (const auto& [radio, value] : mRadios) {
            if (value == inValue) {
                radio->SetEnabled(inEnabled);
            }
        }
    }

private:
    void Choose(Value inValue)
    {
        Check(inValue);
        if (mHandler) {
            mHandler(inValue);
        }
    }

    std::vector<std::pair<Radio, Value>> mRadios;
    std::function<void(Value)> mHandler;
};

} // namespace DLG
