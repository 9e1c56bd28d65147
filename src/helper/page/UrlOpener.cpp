#include "helper/page/UrlOpener.h"

#include <memory>
#include <set>
#include <string_view>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"
#include "helper/MemoryRank.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

constexpr std::string_view kSchemePrefix = "x-scheme-handler/";

struct Opening {
  Id request;
  EventSink events;
};

void onOpened(GObject*, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Opening> opening(static_cast<Opening*>(data));
  goFirstWhenMemoryRunsOut();
  ErrorOut error;
  const bool opened = g_app_info_launch_default_for_uri_finish(result, error) == TRUE;
  opening->events({{member::kType, event::kUrlOpened},
                   {member::kId, opening->request},
                   {member::kOpened, opened}});
}

void addSchemes(GAppInfo* program, std::set<std::string>& schemes) {
  const char** types = g_app_info_get_supported_types(program);
  for (; types != nullptr && *types != nullptr; ++types) {
    const std::string_view type(*types);
    if (type.starts_with(kSchemePrefix)) schemes.emplace(type.substr(kSchemePrefix.size()));
  }
}

bool hasHandler(const std::string& scheme) {
  const auto program =
      GObjectPtr<GAppInfo>::adopt(g_app_info_get_default_for_uri_scheme(scheme.c_str()));
  return static_cast<bool>(program);
}

void unrefPrograms(GList* programs) {
  g_list_free_full(programs, g_object_unref);
}

}  // namespace

std::vector<std::string> openableSchemes() {
  const std::unique_ptr<GList, decltype(&unrefPrograms)> programs(g_app_info_get_all(),
                                                                  &unrefPrograms);
  std::set<std::string> schemes;
  for (const GList* item = programs.get(); item != nullptr; item = item->next) {
    addSchemes(G_APP_INFO(item->data), schemes);
  }
  std::erase_if(schemes, [](const std::string& scheme) { return !hasHandler(scheme); });
  return {schemes.begin(), schemes.end()};
}

void openUrl(Id request, const std::string& url, const EventSink& events) {
  const auto context = GObjectPtr<GdkAppLaunchContext>::adopt(
      gdk_display_get_app_launch_context(gdk_display_get_default()));
  auto opening = std::make_unique<Opening>(Opening{request, events});
  countLikeAnyOther();  // the player's browser is started while the call is under way
  g_app_info_launch_default_for_uri_async(url.c_str(), G_APP_LAUNCH_CONTEXT(context.get()), nullptr,
                                          onOpened, opening.release());
}

}  // namespace zovk::helper
