#pragma once

#include "BE/Project.h"

namespace HostQt {

// The rate audio is conformed to when no project says otherwise.
inline constexpr int kDefaultConformSampleRate = 48000;

// The project the host has open now; null when none is. Conforming a sequence, a clip or a
// selection makes files at this project's audio rate: those objects do not tell which project
// they belong to. Safe to call from any thread.
void SetOpenProject(BE::ProjectRef inProject);
BE::ProjectRef GetOpenProject();

// inProject's audio rate rounded to whole hertz; kDefaultConformSampleRate when inProject is null
// or has no usable audio setting.
int ConformSampleRate(const BE::ProjectRef& inProject);

} // namespace HostQt
