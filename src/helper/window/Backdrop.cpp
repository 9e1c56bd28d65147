#include "helper/window/Backdrop.h"

#include <utility>

#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

/// Windows that are pulled at their edge get many sizes, and each frame costs the game some time.
constexpr guint kRestMilliseconds = 100;

}  // namespace

Backdrop::Backdrop(EventSink events) : events_(std::move(events)) {}

void Backdrop::ask() {
  asked_ = true;
  events_({{member::kType, event::kBackdropWanted}});
}

void Backdrop::want() {
  if (!asked_) ask();
}

void Backdrop::wantAgain() {
  rest_ = SourceGuard(g_timeout_add(kRestMilliseconds, onRest, this));
}

gboolean Backdrop::onRest(gpointer self) {
  auto* backdrop = static_cast<Backdrop*>(self);
  backdrop->rest_.forget();
  backdrop->ask();
  return G_SOURCE_REMOVE;
}

void Backdrop::take(GObjectPtr<GdkTexture> picture) {
  picture_ = std::move(picture);
  asked_ = true;
}

GdkPaintable* Backdrop::picture() const {
  return picture_ ? GDK_PAINTABLE(picture_.get()) : nullptr;
}

void Backdrop::drop() {
  picture_ = {};
  asked_ = false;
  rest_ = {};
}

}  // namespace zovk::helper
