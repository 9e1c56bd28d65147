#include "helper/page/PageScripts.h"

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>

#include "helper/page/PageMessages.h"

namespace zovk::helper {
namespace {

/// Kind, number and blank in front of a message.
constexpr std::size_t kHeadOfMessage = 16;

std::string called(const std::string& function, const boost::json::array& arguments) {
  std::string list = boost::json::serialize(arguments);
  list.front() = '(';
  list.back() = ')';
  return function + list;
}

}  // namespace

std::string boundedJsonScript(std::size_t longest) {
  return called(BoundedJson_js(), {longest, kMaximumPageValues});
}

std::string pageMessagesScript(const std::vector<std::string>& handlers) {
  const boost::json::array names(handlers.begin(), handlers.end());
  return PageMessages_js() + "(" + boundedJsonScript(kMaximumPageText) + "," +
         boost::json::serialize(names) + ")";
}

std::string pageMessageGuardScript() {
  return called(PageMessageGuard_js(),
                {kMaximumPageText + kHeadOfMessage, kPageMessagesPerSecond, kPageTextPerSecond});
}

}  // namespace zovk::helper
