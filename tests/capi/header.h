#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The sizes of the structs for a C compiler.
typedef struct header_sizes {
  size_t settings, hooks, popup_event, explained_popup, web_window_settings;
} header_sizes;
header_sizes header_sizes_in_c(void);

/// Sets up twice. Returns the message of the second time's error.
const char* header_set_up_twice_in_c(const char* data_directory);

/// Returns how many functions a program in C can name.
size_t header_functions_in_c(void);

#ifdef __cplusplus
}
#endif
