#pragma once

// The module is built with hidden symbols; what the host calls is exported by name.
#define DLG_API __attribute__((visibility("default")))
