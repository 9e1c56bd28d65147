#include "helper/page/LoadHaste.h"

#include <string_view>

namespace zovk::helper {
namespace {

/// Longer than the load of a page that is at hand, and too short for a player to act meanwhile.
constexpr guint kMilliseconds = 250;
constexpr int kBeforeEvents = G_PRIORITY_DEFAULT - 1;
constexpr int kUsual = G_PRIORITY_HIGH_IDLE;

constexpr std::string_view kName = "[WebKit] RunLoop work";
/// The engine makes its source when its library starts, as one of the first.
constexpr guint kMostSources = 200;

/// Returns nullptr if the engine has none of that name.
GSource* sourceOfMessages() {
  for (guint id = 1; id <= kMostSources; ++id) {
    GSource* source = g_main_context_find_source_by_id(nullptr, id);
    const char* name = source == nullptr ? nullptr : g_source_get_name(source);
    if (name != nullptr && name == kName) return source;
  }
  return nullptr;
}

void takeMessagesAt(int priority) {
  static GSource* const messages = sourceOfMessages();
  if (messages != nullptr) g_source_set_priority(messages, priority);
}

}  // namespace

LoadHaste::~LoadHaste() {
  if (over_.active()) takeMessagesAt(kUsual);
}

void LoadHaste::begin() {
  takeMessagesAt(kBeforeEvents);
  // Before the messages, which may never stop.
  over_ = SourceGuard(g_timeout_add_full(kBeforeEvents - 1, kMilliseconds, onOver, this, nullptr));
}

gboolean LoadHaste::onOver(gpointer self) {
  static_cast<LoadHaste*>(self)->over_.forget();
  takeMessagesAt(kUsual);
  return G_SOURCE_REMOVE;
}

}  // namespace zovk::helper
