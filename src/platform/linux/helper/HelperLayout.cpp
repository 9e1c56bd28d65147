#include "platform/linux/helper/HelperLayout.h"

#include <utility>

#include "platform/linux/helper/HelperView.h"
#include "protocol/MessageNames.h"

namespace zovk {

HelperLayout::HelperLayout(std::shared_ptr<HelperClient> session, const std::string& bundlePath,
                           const std::string& name, std::weak_ptr<LayoutOwner> owner)
    : session_(std::move(session)), id_(session_->newId()) {
  const HelperId root = session_->newId();
  session_->objects().layoutOwners[id_] = std::move(owner);
  session_->command(id_, HelperAspect::kExistence,
                    {{member::kType, command::kLayoutLoad},
                     {member::kLayout, id_},
                     {member::kView, root},
                     {member::kBundle, bundlePath},
                     {member::kName, name}});
  root_ = std::make_shared<HelperView>(session_, root);
}

HelperLayout::~HelperLayout() {
  session_->forget(id_);
  session_->objects().layoutOwners.erase(id_);
  session_->send({{member::kType, command::kLayoutClose}, {member::kLayout, id_}});
}

std::shared_ptr<View> HelperLayout::outlet(const std::string& name) const {
  std::shared_ptr<View>& view = outlets_[name];
  if (view) return view;
  const HelperId id = session_->newId();
  session_->objects().outlets[id].name = name;
  session_->command(id, HelperAspect::kExistence,
                    {{member::kType, command::kLayoutOutlet},
                     {member::kLayout, id_},
                     {member::kView, id},
                     {member::kName, name}});
  view = std::make_shared<HelperView>(session_, id);
  return view;
}

}  // namespace zovk
