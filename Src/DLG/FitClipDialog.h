#pragma once

#include "DLG/Export.h"

namespace DLG {

// How a clip that does not fit its place in the sequence is made to fit: the choices, one bit
// each, and the options bits that tell the dialog which message to show.
inline constexpr unsigned long kFitClip_ChangeSpeed = 0x4;
inline constexpr unsigned long kFitClip_TrimHead = 0x8;
inline constexpr unsigned long kFitClip_TrimTail = 0x10;
inline constexpr unsigned long kFitClip_IgnoreInPoint = 0x20;
inline constexpr unsigned long kFitClip_IgnoreOutPoint = 0x40;
inline constexpr unsigned long kFitClip_ClipLonger = 0x80;
inline constexpr unsigned long kFitClip_ClipShorter = 0x100;

// The string ID of the message for inOptions, 0 to keep the layout's own text. When both
// message bits are set, the clip-shorter message wins.
unsigned int FitClipMessage(unsigned long inOptions);
// Whether inOptions offers the choice inChoice.
bool IsFitClipChoiceOffered(unsigned long inOptions, unsigned long inChoice);
// The choice made by the radio buttons checked in inChecked (choice bits): taken in the order
// change speed, trim head, trim tail, ignore out point, ignore in point, the last one checked
// wins. With none checked, changing the speed.
unsigned long FitClipChoice(unsigned long inChecked);

// Asks how a clip should fit, offering the choices whose bits inOptions holds (change speed is
// checked at start even when not offered). outChoice receives the choice's bit when the user
// confirms, and 0 when they do not; returns whether they confirmed.
DLG_API bool DoFitClipDialog(unsigned long inOptions, unsigned long& outChoice);

} // namespace DLG
