#pragma once

/// Marks the classes that a host may use.
#if defined(MORVANE_MODULE)
#define MORVANE_EXPORT __attribute__((visibility("default")))
#else
#define MORVANE_EXPORT
#endif
