#pragma once

// Marks what the shared library offers; everything else in it is hidden.
#if defined(__GNUC__)
#define ZOVKPOPUP_API __attribute__((visibility("default")))
#else
#define ZOVKPOPUP_API
#endif
