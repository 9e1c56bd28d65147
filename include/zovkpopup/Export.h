#pragma once

// Marks the symbols that the shared library exports; all others are hidden.
#if defined(__GNUC__)
#define ZOVKPOPUP_API __attribute__((visibility("default")))
#else
#define ZOVKPOPUP_API
#endif
