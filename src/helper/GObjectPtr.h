#pragma once

#include <memory>
#include <utility>

#include <gio/gio.h>

namespace zovk::helper {

/// One reference to a GObject. `GObjectPtr<T>::sink` takes over a floating or new reference;
/// `retain` adds one.
template <class T>
class GObjectPtr {
 public:
  GObjectPtr() = default;
  GObjectPtr(GObjectPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  GObjectPtr& operator=(GObjectPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~GObjectPtr() { g_clear_object(&object_); }

  static GObjectPtr adopt(T* object) { return GObjectPtr(object); }
  static GObjectPtr retain(T* object) {
    return GObjectPtr(object == nullptr ? nullptr : static_cast<T*>(g_object_ref(object)));
  }
  static GObjectPtr sink(T* object) {
    return GObjectPtr(object == nullptr ? nullptr : static_cast<T*>(g_object_ref_sink(object)));
  }

  T* get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  explicit GObjectPtr(T* object) : object_(object) {}
  T* object_ = nullptr;
};

/// Returns an item of a list; null beyond its end.
template <class T>
GObjectPtr<T> itemOf(GListModel* list, guint position) {
  return GObjectPtr<T>::adopt(static_cast<T*>(g_list_model_get_item(list, position)));
}

struct GFree {
  void operator()(void* memory) const { g_free(memory); }
};
using GText = std::unique_ptr<char, GFree>;

/// For a call that reports failure through a `GError**`.
class ErrorOut {
 public:
  ErrorOut() = default;
  ErrorOut(const ErrorOut&) = delete;
  ErrorOut& operator=(const ErrorOut&) = delete;
  ~ErrorOut() { g_clear_error(&error_); }
  operator GError**() { return &error_; }
  const char* message() const { return error_ == nullptr ? "unknown error" : error_->message; }

 private:
  GError* error_ = nullptr;
};

/// A source of the main loop. It is removed with its holder.
class SourceGuard {
 public:
  SourceGuard() = default;
  explicit SourceGuard(guint id) : id_(id) {}
  SourceGuard(SourceGuard&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
  SourceGuard& operator=(SourceGuard other) noexcept {
    std::swap(id_, other.id_);
    return *this;
  }
  ~SourceGuard() {
    if (id_ != 0) g_source_remove(id_);
  }
  bool active() const { return id_ != 0; }
  /// Call it if the source has removed itself.
  void forget() { id_ = 0; }

 private:
  guint id_ = 0;
};

}  // namespace zovk::helper
