#include <cstdio>

#include <boost/json/object.hpp>

#include "text/Md5.h"
#include "text/ZOVKPopupCommonTool.h"
#include "zovkpopup/Commands.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {

int runSig(const SigOptions& options) {
  const bool address = isAddress(options.target);
  const std::string sig =
      address ? ZOVKPopupCommonTool::getTextMD5(options.target) : md5Hex(readFile(options.target));
  if (options.json) {
    std::fputs(prettyJson(boost::json::object{{"target", options.target},
                                              {"kind", address ? "address" : "file"},
                                              {"sig", sig}})
                   .c_str(),
               stdout);
  } else {
    std::puts(sig.c_str());
  }
  return kSuccess;
}

}  // namespace zovk::tool
