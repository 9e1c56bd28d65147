#include "presentation/PageAddress.h"

#include "text/UrlText.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {

std::string withoutQuery(const std::string& address) {
  return address.substr(0, address.find('?'));
}

std::string addressWithExtra(const std::string& uri, const boost::json::object& extraJsonDic) {
  if (uri.empty() || extraJsonDic.empty()) return uri;
  boost::json::object parameters = ZOVKPopupCommonTool::urlParamToDictionary(uri);
  for (const auto& [key, value] : extraJsonDic) parameters[key] = value;
  return withoutQuery(uri) + "?" + ZOVKPopupCommonTool::dictionaryToUrlParam(parameters, true);
}

std::string pageFileAddress(const ZOVKPopupModel& popup) {
  return "file://" + withPathEncoding(popup.getPopupFilePath());
}

std::string ownPagePrefix(const ZOVKPopupModel& popup) {
  return withoutQuery(popup.content_type == kContentTypeWebPage ? popup.uri
                                                                : pageFileAddress(popup));
}

}  // namespace zovk
