#include "platform/linux/helper/HelperView.h"

#include <utility>

namespace zovk {
namespace {

/// 0 for a view of another making, which the helper does not know.
HelperId idOf(const View& view) {
  const auto* identity = dynamic_cast<const HelperViewIdentity*>(&view);
  return identity == nullptr ? 0 : identity->id();
}

}  // namespace

boost::json::array helperColor(const Color& color) {
  return {color.red, color.green, color.blue, color.alpha};
}

template <class Interface>
HelperViewOf<Interface>::HelperViewOf(std::shared_ptr<HelperClient> session, HelperId id)
    : HelperViewIdentity(id), session_(std::move(session)) {}

template <class Interface>
void HelperViewOf<Interface>::command(HelperAspect aspect, const HelperMessage& message) {
  session_->command(id(), aspect, message);
}

template <class Interface>
void HelperViewOf<Interface>::addSubview(const View& child) {
  const HelperId other = idOf(child);
  if (other == 0) return;
  // In front of the other children, so no longer behind them.
  session_->journal().forget(other, HelperAspect::kDepth);
  session_->command(other, HelperAspect::kPlace,
                    {{"type", "view.add"}, {"view", id()}, {"child", other}});
}

template <class Interface>
void HelperViewOf<Interface>::sendSubviewToBack(const View& child) {
  const HelperId other = idOf(child);
  if (other == 0) return;
  session_->command(other, HelperAspect::kDepth,
                    {{"type", "view.back"}, {"view", id()}, {"child", other}});
}

template <class Interface>
void HelperViewOf<Interface>::removeFromSuperview() {
  using enum HelperAspect;
  for (const HelperAspect tied : {kDepth, kEdges, kTop, kBottom}) {
    session_->journal().forget(id(), tied);
  }
  command(kPlace, {{"type", "view.remove"}, {"view", id()}});
}

template <class Interface>
void HelperViewOf<Interface>::setHidden(bool hidden) {
  command(HelperAspect::kHidden, {{"type", "view.hidden"}, {"view", id()}, {"hidden", hidden}});
}

template <class Interface>
void HelperViewOf<Interface>::setAlpha(double alpha) {
  command(HelperAspect::kAlpha, {{"type", "view.alpha"}, {"view", id()}, {"alpha", alpha}});
}

template <class Interface>
void HelperViewOf<Interface>::setBackgroundColor(const Color& color) {
  command(HelperAspect::kBackground,
          {{"type", "view.background"}, {"view", id()}, {"color", helperColor(color)}});
}

template <class Interface>
void HelperViewOf<Interface>::setClipsToBounds(bool clips) {
  command(HelperAspect::kClip, {{"type", "view.clip"}, {"view", id()}, {"clips", clips}});
}

template <class Interface>
void HelperViewOf<Interface>::setImage(const std::string& path) {
  command(HelperAspect::kImage, {{"type", "view.image"}, {"view", id()}, {"path", path}});
}

template <class Interface>
void HelperViewOf<Interface>::pinEdgesTo(const View& container) {
  const HelperId other = idOf(container);
  if (other == 0) return;
  command(HelperAspect::kEdges, {{"type", "view.pinEdges"}, {"view", id()}, {"to", other}});
}

template <class Interface>
void HelperViewOf<Interface>::pinTopTo(const View& view, bool safeArea, double offset) {
  const HelperId other = idOf(view);
  if (other == 0) return;
  command(HelperAspect::kTop, {{"type", "view.pinTop"},
                               {"view", id()},
                               {"to", other},
                               {"safeArea", safeArea},
                               {"offset", offset}});
}

template <class Interface>
void HelperViewOf<Interface>::pinBottomToTopOfFirst(std::initializer_list<const View*> candidates) {
  boost::json::array others;
  for (const View* candidate : candidates) {
    const HelperId other = candidate == nullptr ? 0 : idOf(*candidate);
    if (other != 0) others.emplace_back(other);
  }
  command(HelperAspect::kBottom,
          {{"type", "view.pinBottom"}, {"view", id()}, {"candidates", std::move(others)}});
}

template class HelperViewOf<View>;
template class HelperViewOf<WebView>;

HelperView::~HelperView() {
  session().forget(id());
  session().objects().outlets.erase(id());
  session().send({{"type", "view.release"}, {"view", id()}});
}

}  // namespace zovk
