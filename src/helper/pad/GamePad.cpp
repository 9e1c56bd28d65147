#include "helper/pad/GamePad.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "helper/GObjectPtr.h"
#include "helper/pad/PadPage.h"
#include "helper/page/PageScripts.h"
#include "helper/window/EscapeKey.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

constexpr const char* kMarked = "zovk-pad";
// A page that hides the ring around what has the focus would leave the player lost.
constexpr const char* kRing =
    ":focus { outline: 3px solid #f6c344 !important; outline-offset: 2px !important }";

using Result = std::function<void(JSCValue* value)>;

void onResult(GObject* page, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Result> next(static_cast<Result*>(data));
  const auto value = GObjectPtr<JSCValue>::adopt(
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(page), result, nullptr));
  (*next)(value.get());
}

/// `next` gets null when the page is gone or has no answer.
void askPage(WebKitWebView* page, const std::string& script, Result next) {
  webkit_web_view_evaluate_javascript(page, script.c_str(), -1, kGuardWorld, nullptr, nullptr,
                                      onResult,
                                      std::make_unique<Result>(std::move(next)).release());
}

template <class T>
std::shared_ptr<GObjectPtr<T>> keep(T* object) {
  return std::make_shared<GObjectPtr<T>>(GObjectPtr<T>::retain(object));
}

void markFocus(WebKitWebView* page) {
  if (g_object_get_data(G_OBJECT(page), kMarked) != nullptr) return;
  g_object_set_data(G_OBJECT(page), kMarked, page);
  WebKitUserStyleSheet* sheet = webkit_user_style_sheet_new(
      kRing, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
  webkit_user_content_manager_add_style_sheet(webkit_web_view_get_user_content_manager(page),
                                              sheet);
  webkit_user_style_sheet_unref(sheet);
}

std::optional<PadPlace> placeOf(GtkWidget* widget, GtkWindow* window) {
  graphene_rect_t box;
  if (!gtk_widget_compute_bounds(widget, GTK_WIDGET(window), &box)) return std::nullopt;
  return PadPlace{box.origin.x, box.origin.y, box.size.width, box.size.height};
}

void findButtons(GtkWidget* container, std::vector<GtkWidget*>& found) {
  GtkWidget* child = gtk_widget_get_first_child(container);
  for (; child != nullptr; child = gtk_widget_get_next_sibling(child)) {
    const bool shown = gtk_widget_get_mapped(child) && gtk_widget_is_sensitive(child);
    if (!shown) continue;
    if (GTK_IS_BUTTON(child)) {
      found.push_back(child);
    } else {
      findButtons(child, found);
    }
  }
}

GtkWidget* focusedButton(GtkWindow* window) {
  GtkWidget* focus = gtk_window_get_focus(window);
  return GTK_IS_BUTTON(focus) ? focus : nullptr;
}

/// All that the focus can stand on: first the page's places, then the buttons.
struct Field {
  GtkWindow* window;
  WebKitWebView* page;
  PadPage found;
  std::vector<GtkWidget*> buttons;
  std::vector<PadPlace> places;

  Field(GtkWindow* shown, WebKitWebView* shownPage, PadPage pageFound)
      : window(shown), page(shownPage), found(std::move(pageFound)) {
    const auto corner = page == nullptr ? std::nullopt : placeOf(GTK_WIDGET(page), window);
    if (!corner) found.places.clear();
    for (PadPlace place : found.places) {
      place.x += corner->x;
      place.y += corner->y;
      places.push_back(place);
    }
    findButtons(GTK_WIDGET(window), buttons);
    for (GtkWidget* button : buttons)
      places.push_back(placeOf(button, window).value_or(PadPlace{}));
  }

  std::optional<std::size_t> focused() const {
    GtkWidget* const button = focusedButton(window);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      if (buttons[i] == button) return found.places.size() + i;
    }
    return button == nullptr && found.focused < found.places.size() ? found.focused : std::nullopt;
  }

  void focus(std::size_t number, const PadQueue::Done& done) const {
    gtk_window_set_focus_visible(window, TRUE);
    if (number >= found.places.size()) {
      gtk_widget_grab_focus(buttons[number - found.places.size()]);
      return done();
    }
    gtk_widget_grab_focus(GTK_WIDGET(page));
    askPage(page, padScript("focus", static_cast<int>(number)), [done](JSCValue*) { done(); });
  }

  /// Returns whether the page continues in that direction.
  bool mayScroll(PadDirection direction) const {
    const bool up = direction == PadDirection::kUp && found.above;
    const bool down = direction == PadDirection::kDown && found.below;
    return page != nullptr && (up || down) && focusedButton(window) == nullptr;
  }

  void scroll(PadDirection direction, const PadQueue::Done& done) const {
    const int pages = direction == PadDirection::kUp ? -1 : 1;
    askPage(page, padScript("scroll", pages), [done](JSCValue*) { done(); });
  }

  void move(PadDirection direction, const PadQueue::Done& done) const {
    const auto now = focused();
    auto next = now ? nextPlace(places[*now], places, direction) : std::nullopt;
    if (!now && !places.empty()) next = 0;
    // The rest of the page comes before the buttons around it.
    const bool isInPage = next && *next < found.places.size();
    if (!isInPage && mayScroll(direction)) return scroll(direction, done);
    if (!next) return done();
    focus(*next, done);
  }
};

}  // namespace

std::optional<PadDirection> padDirection(std::string_view name) {
  if (name == word::kUp) return PadDirection::kUp;
  if (name == word::kDown) return PadDirection::kDown;
  if (name == word::kLeft) return PadDirection::kLeft;
  if (name == word::kRight) return PadDirection::kRight;
  return std::nullopt;
}

void movePad(GtkWindow* window, WebKitWebView* page, PadDirection direction,
             const PadQueue::Done& done) {
  if (page == nullptr) return Field(window, nullptr, {}).move(direction, done);
  markFocus(page);
  // The page may be taken out of its window before it answers.
  const auto kept = keep(window);
  const auto keptPage = keep(page);
  askPage(page, padScript("list"), [kept, keptPage, direction, done](JSCValue* value) {
    GtkWidget* const widget = GTK_WIDGET(keptPage->get());
    const bool inside = gtk_widget_is_ancestor(widget, GTK_WIDGET(kept->get())) == TRUE;
    if (!inside || !gtk_widget_get_mapped(widget)) return done();
    const GText text(value == nullptr ? nullptr : jsc_value_to_string(value));
    const PadPage found = readPadPage(text ? text.get() : "");
    Field(kept->get(), keptPage->get(), found).move(direction, done);
  });
}

void pressPad(GtkWindow* window, WebKitWebView* page, const PadQueue::Done& done) {
  GtkWidget* const button = focusedButton(window);
  if (button == nullptr && page != nullptr) {
    return askPage(page, padScript("press"), [done](JSCValue*) { done(); });
  }
  if (button != nullptr) g_signal_emit_by_name(button, "clicked");
  done();
}

void leavePad(GtkWindow* window, WebKitWebView* page, const PadQueue::Done& done) {
  if (page == nullptr) {
    pressCornerButton(window);
    return done();
  }
  askPage(page, padScript("leave"), [kept = keep(window), done](JSCValue* value) {
    const bool used =
        value != nullptr && jsc_value_is_boolean(value) && jsc_value_to_boolean(value);
    const bool shown = gtk_widget_get_mapped(GTK_WIDGET(kept->get())) == TRUE;
    if (!used && shown) pressCornerButton(kept->get());
    done();
  });
}

}  // namespace zovk::helper
