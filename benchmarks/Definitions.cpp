#include "Definitions.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "engine/LoggerSetUp.h"
#include "engine/ZOVKPopupManager.h"
#include "storage/ZOVKPopupFileManager.h"
#include "text/Md5.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {

std::string documentOf(int count, const std::string& scenePrefix) {
  boost::json::array popups;
  for (int i = 0; i < count; ++i) {
    const std::string uri = "https://popups.example/pages/" + scenePrefix + std::to_string(i);
    popups.push_back({{"pop_id", i},
                      {"scene", scenePrefix + std::to_string(i)},
                      {"scene_type", i % 16},
                      {"valid_platform", "1,2,3"},
                      {"pop_type", 1},
                      {"content_type", 3},
                      {"uri", uri},
                      {"sig", md5Hex(uri)},
                      {"pop_freq", 2},
                      {"priority", i % 10},
                      {"publish_time", 1'700'000'000 + i},
                      {"check_url", ""},
                      {"report_url", "https://popups.example/report"},
                      {"valid_time", 0},
                      {"expire_time", 0}});
  }
  return boost::json::serialize(boost::json::object{
      {"code", 0}, {"message", "ok"}, {"server_time", 1'700'000'000}, {"popups", popups}});
}

PopupList popupsWithScenes(int count, int first) {
  PopupList popups;
  for (int i = 0; i < count; ++i) {
    auto popup = std::make_shared<ZOVKPopupModel>();
    popup->scene = "scene " + std::to_string(first + i);
    popup->publish_time = i;
    popups.push_back(std::move(popup));
  }
  return popups;
}

BenchmarkPlatform::BenchmarkPlatform() {
  setUpLogger(memory_->shared(), memory_->sharedLog());
  setCurrentPlatform(memory_->shared());
}

BenchmarkPlatform::~BenchmarkPlatform() {
  ZOVKPopupManager::purgeSharedInstance();
  ZOVKPopupFileManager::purgeSharedInstance();
  setCurrentPlatform(nullptr);
}

}  // namespace zovk
