#include "WindowName.h"

#include <cstring>

#include <SDL.h>
#include <SDL_syswm.h>
#include <wayland-client.h>
#include <xdg-foreign-unstable-v1.h>
#include <xdg-foreign-unstable-v2.h>

namespace sdl {

/// A window that other programs may stand theirs before, on compositors that know the newer version
/// of the protocol, the older, or neither.
struct WindowName::Exported {
  explicit Exported(wl_display* display, wl_surface* surface);
  ~Exported();
  Exported(const Exported&) = delete;
  Exported& operator=(const Exported&) = delete;

  static void onGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                       std::uint32_t);
  static void onRemoved(void*, wl_registry*, std::uint32_t) {}
  static void onHandle1(void* self, zxdg_exported_v1*, const char* given) {
    static_cast<Exported*>(self)->handle = given;
  }
  static void onHandle2(void* self, zxdg_exported_v2*, const char* given) {
    static_cast<Exported*>(self)->handle = given;
  }
  static constexpr wl_registry_listener kGlobals{onGlobal, onRemoved};
  static constexpr zxdg_exported_v1_listener kHandle1{onHandle1};
  static constexpr zxdg_exported_v2_listener kHandle2{onHandle2};

  // A queue of its own, so that waiting for the answers does not run SDL's events.
  wl_event_queue* queue;
  zxdg_exporter_v1* exporter1 = nullptr;
  zxdg_exporter_v2* exporter2 = nullptr;
  zxdg_exported_v1* exported1 = nullptr;
  zxdg_exported_v2* exported2 = nullptr;
  std::string handle;
};

WindowName::Exported::Exported(wl_display* display, wl_surface* surface)
    : queue(wl_display_create_queue(display)) {
  auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue);
  wl_registry* registry = wl_display_get_registry(wrapper);
  wl_proxy_wrapper_destroy(wrapper);
  wl_registry_add_listener(registry, &kGlobals, this);
  wl_display_roundtrip_queue(display, queue);
  wl_registry_destroy(registry);
  if (exporter2 != nullptr) {
    exported2 = zxdg_exporter_v2_export_toplevel(exporter2, surface);
    zxdg_exported_v2_add_listener(exported2, &kHandle2, this);
  } else if (exporter1 != nullptr) {
    exported1 = zxdg_exporter_v1_export(exporter1, surface);
    zxdg_exported_v1_add_listener(exported1, &kHandle1, this);
  }
  wl_display_roundtrip_queue(display, queue);
}

WindowName::Exported::~Exported() {
  if (exported1 != nullptr) zxdg_exported_v1_destroy(exported1);
  if (exported2 != nullptr) zxdg_exported_v2_destroy(exported2);
  if (exporter1 != nullptr) zxdg_exporter_v1_destroy(exporter1);
  if (exporter2 != nullptr) zxdg_exporter_v2_destroy(exporter2);
  wl_event_queue_destroy(queue);
}

void WindowName::Exported::onGlobal(void* self, wl_registry* registry, std::uint32_t name,
                                    const char* interface, std::uint32_t) {
  auto* exported = static_cast<Exported*>(self);
  if (std::strcmp(interface, zxdg_exporter_v1_interface.name) == 0) {
    exported->exporter1 = static_cast<zxdg_exporter_v1*>(
        wl_registry_bind(registry, name, &zxdg_exporter_v1_interface, 1));
  } else if (std::strcmp(interface, zxdg_exporter_v2_interface.name) == 0) {
    exported->exporter2 = static_cast<zxdg_exporter_v2*>(
        wl_registry_bind(registry, name, &zxdg_exporter_v2_interface, 1));
  }
}

WindowName::WindowName(SDL_Window* window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  if (SDL_GetWindowWMInfo(window, &info) == SDL_FALSE) return;
  if (info.subsystem == SDL_SYSWM_X11) {
    text_ = "x11:" + std::to_string(info.info.x11.window);
  } else if (info.subsystem == SDL_SYSWM_WAYLAND) {
    exported_ = std::make_unique<Exported>(info.info.wl.display, info.info.wl.surface);
    if (!exported_->handle.empty()) text_ = "wayland:" + exported_->handle;
  }
}

WindowName::~WindowName() = default;

}  // namespace sdl
