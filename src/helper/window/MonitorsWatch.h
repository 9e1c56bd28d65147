#pragma once

#include <functional>
#include <vector>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Reports that a monitor came, went, moved or changed its size.
class MonitorsWatch {
 public:
  explicit MonitorsWatch(std::function<void()> changed);
  ~MonitorsWatch();
  MonitorsWatch(const MonitorsWatch&) = delete;
  MonitorsWatch& operator=(const MonitorsWatch&) = delete;

 private:
  static void onListChanged(GListModel* monitors, guint position, guint removed, guint added,
                            gpointer self);
  static void onGeometryChanged(GObject* monitor, GParamSpec* property, gpointer self);
  void follow();
  void unfollow();

  std::function<void()> changed_;
  GListModel* monitors_;
  std::vector<GObjectPtr<GdkMonitor>> followed_;
};

}  // namespace zovk::helper
