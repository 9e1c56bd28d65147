#include "platform/linux/WebHostLayout.h"

#include <utility>

#include "platform/linux/WebHostView.h"

namespace zovk {

WebHostLayout::WebHostLayout(std::shared_ptr<WebHostSession> session, const std::string& bundlePath,
                             const std::string& name, std::weak_ptr<LayoutOwner> owner)
    : session_(std::move(session)), id_(session_->newId()) {
  const WebHostId root = session_->newId();
  session_->objects().layoutOwners[id_] = std::move(owner);
  session_->command(id_, WebHostAspect::kExistence,
                    {{"type", "layout.load"},
                     {"layout", id_},
                     {"view", root},
                     {"bundle", bundlePath},
                     {"name", name}});
  root_ = std::make_shared<WebHostView>(session_, root);
}

WebHostLayout::~WebHostLayout() {
  session_->forget(id_);
  session_->objects().layoutOwners.erase(id_);
  session_->send({{"type", "layout.close"}, {"layout", id_}});
}

std::shared_ptr<View> WebHostLayout::outlet(const std::string& name) const {
  std::shared_ptr<View>& view = outlets_[name];
  if (view) return view;
  const WebHostId id = session_->newId();
  session_->objects().outlets[id].name = name;
  session_->command(id, WebHostAspect::kExistence,
                    {{"type", "layout.outlet"}, {"layout", id_}, {"view", id}, {"name", name}});
  view = std::make_shared<WebHostView>(session_, id);
  return view;
}

}  // namespace zovk
