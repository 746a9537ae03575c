#include "KOR/Time.h"

static_assert(KOR::Time::kTicksPerSecond > 0);
