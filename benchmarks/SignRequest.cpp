#include <string>

#include <benchmark/benchmark.h>
#include <boost/json/serialize.hpp>

#include "network/ZOVKPopupNetwork.h"
#include "text/Md5.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

// Returns a report as the page controller sends it.
ZOVKPopupUrlParams report() {
  ZOVKPopupUrlParams params;
  params.urlStr = "https://popups.example/report/shop";
  params.gameID = "1001";
  params.gameKey = "s3cret-key";
  params.version = "1.0.0";
  params.installID = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";
  params.postInfo = boost::json::object{
      {"channel_id", 1},
      {"gopenid", "5551237881234567890"},
      {"token", std::string(64, 't')},
      {"jwt_token", std::string(300, 'j')},
      {"pop_id", 8},
      {"scene", "shop"},
      {"data", R"({"action":"commit","msg":"{\"item\":\"lantern\",\"count\":3}"})"}};
  return params;
}

std::string bodyOf(const ZOVKPopupUrlParams& params) {
  return ZOVKPopupCommonTool::dictionaryToJsonString(params.postInfo);
}

void SignAndBuildRequest(benchmark::State& state) {
  const ZOVKPopupUrlParams params = report();
  for (auto _ : state) {
    const std::string body = bodyOf(params);
    const std::string signature = ZOVKPopupCommonTool::getTextMD5(signatureSource(params, body));
    benchmark::DoNotOptimize(signedUrl(params, signature));
  }
}
BENCHMARK(SignAndBuildRequest);

void HashAndSerialize(benchmark::State& state) {
  const ZOVKPopupUrlParams params = report();
  const std::string source = signatureSource(params, bodyOf(params));
  for (auto _ : state) {
    benchmark::DoNotOptimize(boost::json::serialize(*params.postInfo));
    benchmark::DoNotOptimize(md5Hex(source));
  }
}
BENCHMARK(HashAndSerialize);

}  // namespace
}  // namespace zovk
