#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "platform/linux/WebHostSession.h"
#include "zovkpopup/platform/View.h"
#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// The number under which the helper knows a view.
class WebHostViewIdentity {
 public:
  explicit WebHostViewIdentity(WebHostId id) : id_(id) {}
  virtual ~WebHostViewIdentity() = default;
  WebHostId id() const { return id_; }

 private:
  const WebHostId id_;
};

/// The commands of every view, for views and web views alike.
template <class Interface>
class WebHostViewOf : public Interface, public WebHostViewIdentity {
 public:
  WebHostViewOf(std::shared_ptr<WebHostSession> session, WebHostId id);

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
  WebHostSession& session() const { return *session_; }
  void command(WebHostAspect aspect, const WebHostMessage& message);

 private:
  const std::shared_ptr<WebHostSession> session_;
};

extern template class WebHostViewOf<View>;
extern template class WebHostViewOf<WebView>;

/// A view of a layout, or the root view of a window.
class WebHostView final : public WebHostViewOf<View> {
 public:
  using WebHostViewOf::WebHostViewOf;
  ~WebHostView() override;
};

boost::json::array webHostColor(const Color& color);

}  // namespace zovk
