#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/linux/helper/HelperClient.h"
#include "zovkpopup/platform/View.h"

namespace zovk {

/// A layout in the helper. It asks for each of its views once, and keeps the view as long as it
/// lives.
class HelperLayout final : public Layout {
 public:
  HelperLayout(std::shared_ptr<HelperClient> session, const std::string& bundlePath,
               const std::string& name, std::weak_ptr<LayoutOwner> owner);
  ~HelperLayout() override;

  std::shared_ptr<View> root() const override { return root_; }
  std::shared_ptr<View> outlet(const std::string& name) const override;

 private:
  const std::shared_ptr<HelperClient> session_;
  const HelperId id_;
  std::shared_ptr<View> root_;
  mutable std::map<std::string, std::shared_ptr<View>> outlets_;
};

}  // namespace zovk
