#include "platform/linux/helper/HelperLayout.h"

#include <utility>

#include "platform/linux/helper/HelperView.h"

namespace zovk {

HelperLayout::HelperLayout(std::shared_ptr<HelperClient> session, const std::string& bundlePath,
                           const std::string& name, std::weak_ptr<LayoutOwner> owner)
    : session_(std::move(session)), id_(session_->newId()) {
  const HelperId root = session_->newId();
  session_->objects().layoutOwners[id_] = std::move(owner);
  session_->command(id_, HelperAspect::kExistence,
                    {{"type", "layout.load"},
                     {"layout", id_},
                     {"view", root},
                     {"bundle", bundlePath},
                     {"name", name}});
  root_ = std::make_shared<HelperView>(session_, root);
}

HelperLayout::~HelperLayout() {
  session_->forget(id_);
  session_->objects().layoutOwners.erase(id_);
  session_->send({{"type", "layout.close"}, {"layout", id_}});
}

std::shared_ptr<View> HelperLayout::outlet(const std::string& name) const {
  std::shared_ptr<View>& view = outlets_[name];
  if (view) return view;
  const HelperId id = session_->newId();
  session_->objects().outlets[id].name = name;
  session_->command(id, HelperAspect::kExistence,
                    {{"type", "layout.outlet"}, {"layout", id_}, {"view", id}, {"name", name}});
  view = std::make_shared<HelperView>(session_, id);
  return view;
}

}  // namespace zovk
