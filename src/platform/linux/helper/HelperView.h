#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "platform/linux/helper/HelperClient.h"
#include "zovkpopup/platform/View.h"
#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// The number of a view in the helper.
class HelperViewIdentity {
 public:
  explicit HelperViewIdentity(HelperId id) : id_(id) {}
  virtual ~HelperViewIdentity() = default;
  HelperId id() const { return id_; }

 private:
  const HelperId id_;
};

/// The commands of every view, for views and web views alike.
template <class Interface>
class HelperViewOf : public Interface, public HelperViewIdentity {
 public:
  HelperViewOf(std::shared_ptr<HelperClient> session, HelperId id);

  void addSubview(const View& child) override;
  void sendSubviewToBack(const View& child) override;
  void removeFromSuperview() override;
  void setHidden(bool hidden) override;
  void setAlpha(double alpha) override;
  void setBackgroundColor(const Color& color) override;
  void setClipsToBounds(bool clips) override;
  void setImage(const std::string& path) override;
  void pinEdgesTo(const View& container) override;
  void pinTopTo(const View& view, bool safeArea, double offset) override;
  void pinBottomToTopOfFirst(std::initializer_list<const View*> candidates) override;

 protected:
  HelperClient& session() const { return *session_; }
  void command(HelperAspect aspect, const HelperMessage& message);

 private:
  const std::shared_ptr<HelperClient> session_;
};

extern template class HelperViewOf<View>;
extern template class HelperViewOf<WebView>;

/// A view of a layout, or the root view of a window.
class HelperView final : public HelperViewOf<View> {
 public:
  using HelperViewOf::HelperViewOf;
  ~HelperView() override;
};

boost::json::array helperColor(const Color& color);

}  // namespace zovk
