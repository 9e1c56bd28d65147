#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/linux/WebHostSession.h"
#include "zovkpopup/platform/View.h"

namespace zovk {

/// A layout in the helper. Each of its views is asked for once and kept as long as the layout.
class WebHostLayout final : public Layout {
 public:
  WebHostLayout(std::shared_ptr<WebHostSession> session, const std::string& bundlePath,
                const std::string& name, std::weak_ptr<LayoutOwner> owner);
  ~WebHostLayout() override;

  std::shared_ptr<View> root() const override { return root_; }
  std::shared_ptr<View> outlet(const std::string& name) const override;

 private:
  const std::shared_ptr<WebHostSession> session_;
  const WebHostId id_;
  std::shared_ptr<View> root_;
  mutable std::map<std::string, std::shared_ptr<View>> outlets_;
};

}  // namespace zovk
