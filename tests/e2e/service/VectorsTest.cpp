#include <fstream>
#include <iterator>
#include <vector>

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "network/ZOVKPopupNetwork.h"
#include "service/SignedQuery.h"
#include "text/Md5.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

// The blocks of the guide that hold a vector each.
std::vector<boost::json::object> vectors() {
  std::ifstream file(ZOVKPOPUP_SERVICE_GUIDE);
  const std::string guide{std::istreambuf_iterator<char>(file), {}};
  const std::string fence = "```json\n";
  std::vector<boost::json::object> found;
  std::size_t begin = guide.find(fence);
  while (begin != std::string::npos) {
    begin += fence.size();
    const std::string block = guide.substr(begin, guide.find("```", begin) - begin);
    found.push_back(boost::json::parse(block).as_object());
    begin = guide.find(fence, begin + block.size());
  }
  return found;
}

std::string textOf(const boost::json::object& vector, const char* name) {
  return std::string(vector.at(name).as_string());
}

ZOVKPopupUrlParams paramsOf(const boost::json::object& vector) {
  ZOVKPopupUrlParams params;
  params.urlStr = textOf(vector, "address");
  params.actionPath = textOf(vector, "action_path");
  params.gameID = textOf(vector, "game_id");
  params.gameKey = textOf(vector, "game_key");
  params.installID = textOf(vector, "install_id");
  params.os = vector.at("os").to_number<std::int32_t>();
  params.version = textOf(vector, "version");
  if (const auto* members = vector.if_contains("members")) params.postInfo = members->as_object();
  return params;
}

TEST(ServiceVectors, AreThereForEachKindOfRequest) {
  EXPECT_GE(vectors().size(), 4U);
}

TEST(ServiceVectors, AreWhatTheComponentSends) {
  for (const auto& vector : vectors()) {
    SCOPED_TRACE(textOf(vector, "vector"));
    const ZOVKPopupUrlParams params = paramsOf(vector);
    const std::string body = ZOVKPopupCommonTool::dictionaryToJsonString(params.postInfo);
    const std::string source = signatureSource(params, body);
    const std::string signature = ZOVKPopupCommonTool::getTextMD5(source);
    EXPECT_EQ(commonParameterText(params), textOf(vector, "parameters"));
    EXPECT_EQ(body, textOf(vector, "body"));
    EXPECT_EQ(source, textOf(vector, "signed_text"));
    EXPECT_EQ(signature, textOf(vector, "sig"));
    EXPECT_EQ(signedUrl(params, signature), textOf(vector, "url"));
  }
}

TEST(ServiceVectors, AreWhatTheServiceChecks) {
  for (const auto& vector : vectors()) {
    SCOPED_TRACE(textOf(vector, "vector"));
    const std::string url = textOf(vector, "url");
    const auto query = service::splitSignedQuery(std::string_view(url).substr(url.find('?') + 1));
    EXPECT_EQ(query.parameters, textOf(vector, "parameters"));
    EXPECT_EQ(query.signature, textOf(vector, "sig"));
    const std::string source = textOf(vector, "signed_text");
    const std::string path = source.substr(0, source.find('?'));
    const std::string text = service::signedText(path, query.parameters, textOf(vector, "body"),
                                                 textOf(vector, "game_key"));
    EXPECT_EQ(text, source);
    EXPECT_EQ(md5Hex(text), query.signature);
  }
}

}  // namespace
}  // namespace zovk
