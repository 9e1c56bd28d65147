#include "platform/linux/helper/HelperView.h"

#include <utility>

#include "protocol/MessageNames.h"

namespace zovk {
namespace {

/// Returns 0 for a view that was not made here, which the helper does not know.
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
  session_->command(
      other, HelperAspect::kPlace,
      {{member::kType, command::kViewAdd}, {member::kView, id()}, {member::kChild, other}});
}

template <class Interface>
void HelperViewOf<Interface>::sendSubviewToBack(const View& child) {
  const HelperId other = idOf(child);
  if (other == 0) return;
  session_->command(
      other, HelperAspect::kDepth,
      {{member::kType, command::kViewBack}, {member::kView, id()}, {member::kChild, other}});
}

template <class Interface>
void HelperViewOf<Interface>::removeFromSuperview() {
  using enum HelperAspect;
  for (const HelperAspect tied : {kDepth, kEdges, kTop, kBottom}) {
    session_->journal().forget(id(), tied);
  }
  command(kPlace, {{member::kType, command::kViewRemove}, {member::kView, id()}});
}

template <class Interface>
void HelperViewOf<Interface>::setHidden(bool hidden) {
  command(
      HelperAspect::kHidden,
      {{member::kType, command::kViewHidden}, {member::kView, id()}, {member::kHidden, hidden}});
}

template <class Interface>
void HelperViewOf<Interface>::setAlpha(double alpha) {
  command(HelperAspect::kAlpha,
          {{member::kType, command::kViewAlpha}, {member::kView, id()}, {member::kAlpha, alpha}});
}

template <class Interface>
void HelperViewOf<Interface>::setBackgroundColor(const Color& color) {
  command(HelperAspect::kBackground, {{member::kType, command::kViewBackground},
                                      {member::kView, id()},
                                      {member::kColor, helperColor(color)}});
}

template <class Interface>
void HelperViewOf<Interface>::setClipsToBounds(bool clips) {
  command(HelperAspect::kClip,
          {{member::kType, command::kViewClip}, {member::kView, id()}, {member::kClips, clips}});
}

template <class Interface>
void HelperViewOf<Interface>::setImage(const std::string& path) {
  command(HelperAspect::kImage,
          {{member::kType, command::kViewImage}, {member::kView, id()}, {member::kPath, path}});
}

template <class Interface>
void HelperViewOf<Interface>::pinEdgesTo(const View& container) {
  const HelperId other = idOf(container);
  if (other == 0) return;
  command(HelperAspect::kEdges,
          {{member::kType, command::kViewPinEdges}, {member::kView, id()}, {member::kTo, other}});
}

template <class Interface>
void HelperViewOf<Interface>::pinTopTo(const View& view, bool safeArea, double offset) {
  const HelperId other = idOf(view);
  if (other == 0) return;
  command(HelperAspect::kTop, {{member::kType, command::kViewPinTop},
                               {member::kView, id()},
                               {member::kTo, other},
                               {member::kSafeArea, safeArea},
                               {member::kOffset, offset}});
}

template <class Interface>
void HelperViewOf<Interface>::pinBottomToTopOfFirst(std::initializer_list<const View*> candidates) {
  boost::json::array others;
  for (const View* candidate : candidates) {
    const HelperId other = candidate == nullptr ? 0 : idOf(*candidate);
    if (other != 0) others.emplace_back(other);
  }
  command(HelperAspect::kBottom, {{member::kType, command::kViewPinBottom},
                                  {member::kView, id()},
                                  {member::kCandidates, std::move(others)}});
}

template class HelperViewOf<View>;
template class HelperViewOf<WebView>;

HelperView::~HelperView() {
  session().forget(id());
  session().objects().outlets.erase(id());
  session().send({{member::kType, command::kViewRelease}, {member::kView, id()}});
}

}  // namespace zovk
