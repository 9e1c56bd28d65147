#include "e2e/service/ServiceFixture.h"

#include <boost/json/serialize.hpp>

#include "network/ZOVKPopupNetwork.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {

ServiceFixture::ServiceFixture() {
  folder_.write("games.json", R"({"1001": "s3cret-key"})");
  folder_.write("pages/welcome.html", kPage);
  folder_.write("config.json", R"({"code": 0, "popups": [{"pop_id": 1, "page": "welcome.html"}]})");
}

void ServiceFixture::start(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {ZOVKPOPUP_SERVICE_PROGRAM, folder_.path()});
  process_ = std::make_unique<ChildProcess>(std::move(arguments), folder_.path("errors.log"));
  const std::string line = process_->nextLine().value_or("");
  const std::string expected = "listening on ";
  ASSERT_TRUE(line.starts_with(expected)) << line << errors();
  base_ = line.substr(expected.size());
  port_ = std::stoi(base_.substr(base_.rfind(':') + 1));
  client_ = std::make_unique<httplib::Client>(base_);
  client_->set_url_encode(false);
  client_->set_keep_alive(true);
  client_->set_read_timeout(30);
}

int ServiceFixture::startInVain(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {ZOVKPOPUP_SERVICE_PROGRAM, folder_.path()});
  ChildProcess process(std::move(arguments), folder_.path("errors.log"));
  return process.wait();
}

ZOVKPopupUrlParams ServiceFixture::paramsFor(const std::string& path) const {
  ZOVKPopupUrlParams params;
  params.urlStr = base_ + path;
  params.gameID = kGame;
  params.gameKey = kKey;
  params.installID = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";
  params.version = "1.0.0";
  return params;
}

std::string ServiceFixture::signedTarget(const ZOVKPopupUrlParams& params) const {
  const std::string body = ZOVKPopupCommonTool::dictionaryToJsonString(params.postInfo);
  const std::string signature = ZOVKPopupCommonTool::getTextMD5(signatureSource(params, body));
  return signedUrl(params, signature).substr(base_.size());
}

httplib::Result ServiceFixture::getSigned(const std::string& path) {
  return client_->Get(signedTarget(paramsFor(path)));
}

httplib::Result ServiceFixture::postSigned(const std::string& path,
                                           const boost::json::object& members) {
  ZOVKPopupUrlParams params = paramsFor(path);
  params.postInfo = members;
  return client_->Post(signedTarget(params),
                       ZOVKPopupCommonTool::dictionaryToJsonString(params.postInfo), "");
}

httplib::Result ServiceFixture::getConfig() {
  return getSigned(kConfigPath);
}

httplib::Result ServiceFixture::postControl(const boost::json::object& request) {
  return client_->Post("/_control/fault", boost::json::serialize(request), "application/json");
}

boost::json::value jsonOf(const httplib::Result& result) {
  boost::json::error_code error;
  boost::json::value value = result ? boost::json::parse(result->body, error) : nullptr;
  return error ? boost::json::value() : value;
}

}  // namespace zovk
