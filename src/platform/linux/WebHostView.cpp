#include "platform/linux/WebHostView.h"

#include <utility>

namespace zovk {
namespace {

/// 0 for a view of another making, which the helper does not know.
WebHostId idOf(const View& view) {
  const auto* identity = dynamic_cast<const WebHostViewIdentity*>(&view);
  return identity == nullptr ? 0 : identity->id();
}

}  // namespace

boost::json::array webHostColor(const Color& color) {
  return {color.red, color.green, color.blue, color.alpha};
}

template <class Interface>
WebHostViewOf<Interface>::WebHostViewOf(std::shared_ptr<WebHostSession> session, WebHostId id)
    : WebHostViewIdentity(id), session_(std::move(session)) {}

template <class Interface>
void WebHostViewOf<Interface>::command(WebHostAspect aspect, const WebHostMessage& message) {
  session_->command(id(), aspect, message);
}

template <class Interface>
void WebHostViewOf<Interface>::addSubview(const View& child) {
  const WebHostId other = idOf(child);
  if (other == 0) return;
  // In front of the other children, so no longer behind them.
  session_->journal().forget(other, WebHostAspect::kDepth);
  session_->command(other, WebHostAspect::kPlace,
                    {{"type", "view.add"}, {"view", id()}, {"child", other}});
}

template <class Interface>
void WebHostViewOf<Interface>::sendSubviewToBack(const View& child) {
  const WebHostId other = idOf(child);
  if (other == 0) return;
  session_->command(other, WebHostAspect::kDepth,
                    {{"type", "view.back"}, {"view", id()}, {"child", other}});
}

template <class Interface>
void WebHostViewOf<Interface>::removeFromSuperview() {
  using enum WebHostAspect;
  for (const WebHostAspect tied : {kDepth, kEdges, kTop, kBottom}) {
    session_->journal().forget(id(), tied);
  }
  command(kPlace, {{"type", "view.remove"}, {"view", id()}});
}

template <class Interface>
void WebHostViewOf<Interface>::setHidden(bool hidden) {
  command(WebHostAspect::kHidden, {{"type", "view.hidden"}, {"view", id()}, {"hidden", hidden}});
}

template <class Interface>
void WebHostViewOf<Interface>::setAlpha(double alpha) {
  command(WebHostAspect::kAlpha, {{"type", "view.alpha"}, {"view", id()}, {"alpha", alpha}});
}

template <class Interface>
void WebHostViewOf<Interface>::setBackgroundColor(const Color& color) {
  command(WebHostAspect::kBackground,
          {{"type", "view.background"}, {"view", id()}, {"color", webHostColor(color)}});
}

template <class Interface>
void WebHostViewOf<Interface>::setClipsToBounds(bool clips) {
  command(WebHostAspect::kClip, {{"type", "view.clip"}, {"view", id()}, {"clips", clips}});
}

template <class Interface>
void WebHostViewOf<Interface>::setImage(const std::string& path) {
  command(WebHostAspect::kImage, {{"type", "view.image"}, {"view", id()}, {"path", path}});
}

template <class Interface>
void WebHostViewOf<Interface>::pinEdgesTo(const View& container) {
  const WebHostId other = idOf(container);
  if (other == 0) return;
  command(WebHostAspect::kEdges, {{"type", "view.pinEdges"}, {"view", id()}, {"to", other}});
}

template <class Interface>
void WebHostViewOf<Interface>::pinTopTo(const View& view, bool safeArea, double offset) {
  const WebHostId other = idOf(view);
  if (other == 0) return;
  command(WebHostAspect::kTop, {{"type", "view.pinTop"},
                                {"view", id()},
                                {"to", other},
                                {"safeArea", safeArea},
                                {"offset", offset}});
}

template <class Interface>
void WebHostViewOf<Interface>::pinBottomToTopOfFirst(
    std::initializer_list<const View*> candidates) {
  boost::json::array others;
  for (const View* candidate : candidates) {
    const WebHostId other = candidate == nullptr ? 0 : idOf(*candidate);
    if (other != 0) others.emplace_back(other);
  }
  command(WebHostAspect::kBottom,
          {{"type", "view.pinBottom"}, {"view", id()}, {"candidates", std::move(others)}});
}

template class WebHostViewOf<View>;
template class WebHostViewOf<WebView>;

WebHostView::~WebHostView() {
  session().forget(id());
  session().objects().outlets.erase(id());
  session().send({{"type", "view.release"}, {"view", id()}});
}

}  // namespace zovk
