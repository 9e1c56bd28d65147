// The answers of a service to the question whether a popup is wanted, and the page's address that
// results from them. The sections of an input are the answer and the popup's own address.

#include "fuzz/Engine.h"
#include "presentation/PageAddress.h"

namespace zovk {
namespace {}  // namespace

void fuzz(std::string_view input) {
  static Engine engine;
  const auto sections = sectionsOf(input, 2);
  const std::string& answer = sections[0];
  const std::string& uri = sections[1];

  boost::json::object extra;
  const bool wanted = engine->parseConditionPopupResp(answer, &extra);
  if (wanted != engine->parseConditionPopupResp(answer, nullptr)) fail("yes and no", input);
  if (!wanted && !extra.empty()) fail("extra parameters of a no", input);

  const std::string address = addressWithExtra(uri, extra);
  if (uri.empty() || extra.empty()) {
    if (address != uri) fail("changed by nothing", input);
    return;
  }
  if (!address.starts_with(uri.substr(0, uri.find('?')) + "?")) fail("another page", input);
}

}  // namespace zovk
