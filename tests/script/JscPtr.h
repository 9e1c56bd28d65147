#pragma once

#include <memory>

#include <jsc/jsc.h>

namespace zovk {

struct GObjectUnref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
struct GBytesUnref {
  void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};
struct GFree {
  void operator()(gpointer memory) const { g_free(memory); }
};

/// An owned reference to one of the script engine's objects.
template <class Object>
using JscPtr = std::unique_ptr<Object, GObjectUnref>;
using GBytesPtr = std::unique_ptr<GBytes, GBytesUnref>;
using GText = std::unique_ptr<char, GFree>;

}  // namespace zovk
