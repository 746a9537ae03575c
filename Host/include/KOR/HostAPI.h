#pragma once

// Everything the host declares is exported from the host library and imported by the module,
// which is built with hidden visibility: the host's symbols must keep default visibility.
#define HOST_API __attribute__((visibility("default")))
