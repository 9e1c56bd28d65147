// What stands for a page until the engine has composed its picture.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "HelperUnderTest.h"
#include "ToolkitFixture.h"
#include "helper/CairoPtr.h"
#include "helper/page/PageDrawing.h"
#include "helper/page/PageView.h"
#include "helper/page/Poster.h"
#include "helper/page/ToolkitWebView.h"
#include "helper/window/X11Window.h"

namespace zovk::helper {
namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 200;
constexpr GdkRGBA kRed{1, 0, 0, 1};
constexpr GdkRGBA kNothing{0, 0, 0, 0};

struct NodeUnref {
  void operator()(GskRenderNode* node) const { gsk_render_node_unref(node); }
};
using NodePtr = std::unique_ptr<GskRenderNode, NodeUnref>;

NodePtr surface(const GdkRGBA& color, float width, float height) {
  graphene_rect_t box;
  graphene_rect_init(&box, 0, 0, width, height);
  return NodePtr(gsk_color_node_new(&color, &box));
}

/// The first row is clear, the others are white.
GObjectPtr<GdkTexture> picture(std::size_t width, std::size_t height) {
  std::vector<guint32> pixels(width * height, 0xFFFFFFFF);
  std::fill_n(pixels.begin(), width, 0);
  GBytes* bytes = g_bytes_new(pixels.data(), pixels.size() * 4);
  auto texture = GObjectPtr<GdkTexture>::adopt(gdk_memory_texture_new(
      static_cast<int>(width), static_cast<int>(height), GDK_MEMORY_DEFAULT, bytes, width * 4));
  g_bytes_unref(bytes);
  return texture;
}

/// What is painted on a view, with `scale` pixels to each of its own.
std::vector<guint32> pixelsOf(const NodePtr& painted, int scale = 1) {
  const CairoSurface surface(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth * scale, kHeight * scale));
  const CairoContext context(cairo_create(surface.get()));
  cairo_scale(context.get(), scale, scale);
  gsk_render_node_draw(painted.get(), context.get());
  cairo_surface_flush(surface.get());
  const auto* first = reinterpret_cast<guint32*>(cairo_image_surface_get_data(surface.get()));
  return {first, first + std::ptrdiff_t{kWidth} * scale * kHeight * scale};
}

class Posters : public ToolkitFixture {
 protected:
  Posters() : window_(GTK_WINDOW(gtk_window_new())) {
    gtk_window_set_default_size(window_, kWidth, kHeight);
    gtk_window_set_decorated(window_, FALSE);
  }
  ~Posters() override { gtk_window_destroy(window_); }
  void show(GtkWidget* widget) {
    gtk_window_set_child(window_, widget);
    gtk_window_present(window_);
    EXPECT_TRUE(runUntil([&] { return gtk_widget_get_width(widget) == kWidth; }));
  }
  /// Waits until the page has answered all that it was asked before.
  void waitForAnswers(WebKitWebView* view) {
    bool later = false;
    webkit_web_view_get_snapshot(
        view, WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr,
        [](GObject*, GAsyncResult*, gpointer flag) { *static_cast<bool*>(flag) = true; }, &later);
    EXPECT_TRUE(runUntil([&] { return later; }));
  }
  /// Paints the poster, or what the engine has; returns what was painted of the poster.
  static NodePtr paint(Poster& poster, const NodePtr& own) {
    GtkSnapshot* target = gtk_snapshot_new();
    const bool painted = poster.paint(own.get(), target);
    NodePtr node(gtk_snapshot_free_to_node(target));
    EXPECT_EQ(painted, node != nullptr);
    return node;
  }

  GtkWindow* window_;
};

class HungPoster : public Posters {
 protected:
  HungPoster() {
    show(view_);
    poster_.hang(picture(kWidth, kHeight).get());
  }

  GtkWidget* view_ = gtk_drawing_area_new();
  Poster poster_{view_};
};

TEST_F(HungPoster, IsPaintedAsLongAsTheEngineShowsNothing) {
  for (const auto& nothing : {NodePtr(), surface(kNothing, kWidth, kHeight)}) {
    const NodePtr painted = paint(poster_, nothing);
    ASSERT_NE(painted, nullptr);
    graphene_rect_t bounds;
    gsk_render_node_get_bounds(painted.get(), &bounds);
    EXPECT_EQ(bounds.size.width, kWidth);
    EXPECT_EQ(bounds.size.height, kHeight);
    EXPECT_TRUE(poster_.hangs());
  }
}

TEST_F(HungPoster, IsPaintedAtOnceRatherThanWithTheNextFrame) {
  bool painted = false;
  gtk_drawing_area_set_draw_func(
      GTK_DRAWING_AREA(view_),
      [](GtkDrawingArea*, cairo_t*, int, int, gpointer flag) { *static_cast<bool*>(flag) = true; },
      &painted, nullptr);
  poster_.hang(picture(kWidth, kHeight).get());
  EXPECT_EQ(painted, x11Display() != nullptr);
  gtk_drawing_area_set_draw_func(GTK_DRAWING_AREA(view_), nullptr, nullptr, nullptr);
}

TEST_F(HungPoster, IsPaintedInTheLayoutOfThatMoment) {
  gtk_widget_set_margin_top(view_, 10);
  poster_.hang(picture(kWidth, kHeight).get());
  EXPECT_EQ(gtk_widget_get_height(view_), x11Display() != nullptr ? kHeight - 10 : kHeight);
}

TEST_F(HungPoster, HasAsManyPixelsAsTheScreen) {
  poster_.hang(picture(2 * kWidth, 2 * kHeight).get());
  const auto pixels = pixelsOf(paint(poster_, NodePtr()), 2);
  EXPECT_EQ(pixels[2 * kWidth - 1], 0U);
  EXPECT_EQ(pixels[2 * kWidth], 0xFFFFFFFF);
  EXPECT_EQ(pixels.back(), 0xFFFFFFFF);
}

TEST_F(HungPoster, IsLeftOutWhereItIsTooLargeToPaint) {
  poster_.hang(picture(32768, 1).get());
  EXPECT_FALSE(poster_.hangs());
  poster_.hang(picture(32767, 1).get());
  EXPECT_TRUE(poster_.hangs());
}

TEST_F(HungPoster, ComesDownForGoodWithTheEnginesPicture) {
  EXPECT_EQ(paint(poster_, surface(kRed, 20, 20)), nullptr);
  EXPECT_FALSE(poster_.hangs());
  EXPECT_EQ(paint(poster_, NodePtr()), nullptr);
}

TEST_F(HungPoster, ComesDownHoweverLittleIsInTheEnginesPicture) {
  for (const auto& [x, y] :
       {std::pair(0, 0), std::pair(kWidth - 1, kHeight / 2), std::pair(kWidth - 1, kHeight - 1)}) {
    poster_.hang(picture(kWidth, kHeight).get());
    graphene_rect_t box;
    graphene_rect_init(&box, static_cast<float>(x), static_cast<float>(y), 1, 1);
    EXPECT_EQ(paint(poster_, NodePtr(gsk_color_node_new(&kRed, &box))), nullptr);
    EXPECT_FALSE(poster_.hangs()) << x << ", " << y;
  }
}

TEST_F(HungPoster, ComesDownWithAPictureOfOneColour) {
  EXPECT_EQ(paint(poster_, surface({1, 1, 1, 1}, kWidth, kHeight)), nullptr);
  EXPECT_FALSE(poster_.hangs());
}

TEST_F(Posters, AreOfTheRightSizeEvenIfTheViewHasNoneYet) {
  GtkWidget* view = gtk_drawing_area_new();
  g_object_ref_sink(view);
  {
    Poster poster(view);
    poster.hang(picture(kWidth, kHeight).get());
    ASSERT_TRUE(poster.hangs());
    show(view);
    EXPECT_NE(paint(poster, NodePtr()), nullptr);
  }
  g_object_unref(view);
}

TEST_F(HungPoster, ComesDownOnceTheViewHasAnotherSize) {
  gtk_window_set_default_size(window_, kWidth + 40, kHeight);
  EXPECT_TRUE(runUntil([&] { return gtk_widget_get_width(view_) == kWidth + 40; }));
  EXPECT_EQ(paint(poster_, NodePtr()), nullptr);
  EXPECT_FALSE(poster_.hangs());
}

TEST_F(HungPoster, ComesDownByItselfAfterHalfASecond) {
  const gint64 start = g_get_monotonic_time();
  EXPECT_TRUE(runUntil([&] { return !poster_.hangs(); }));
  EXPECT_GE(g_get_monotonic_time() - start, 400 * G_TIME_SPAN_MILLISECOND);
}

class AskedPoster : public Posters {
 protected:
  AskedPoster() { webkit_web_view_set_background_color(WEBKIT_WEB_VIEW(view_), &kNothing); }
  void load(const char* html) {
    show(view_);
    webkit_web_view_load_html(WEBKIT_WEB_VIEW(view_), html, nullptr);
    EXPECT_TRUE(
        runUntil([&] { return webkit_web_view_is_loading(WEBKIT_WEB_VIEW(view_)) == FALSE; }));
  }

  /// Waits for the poster; returns what is painted of it, or nothing if it does not come.
  std::vector<guint32> pixelsOnceHung() {
    EXPECT_TRUE(runUntil([&] { return poster_.hangs(); }));
    const NodePtr painted = paint(poster_, NodePtr());
    return painted ? pixelsOf(painted) : std::vector<guint32>();
  }

  /// Returns whether the poster is hung once all that was asked for before has been answered.
  bool hangsAtLast() {
    waitForAnswers(WEBKIT_WEB_VIEW(view_));
    return poster_.hangs();
  }

  GtkWidget* view_ = webkit_web_view_new();
  Poster poster_{view_};
};

TEST_F(AskedPoster, ShowsThePageAndIsClearWhereThePageIs) {
  load(
      "<body style='margin:0'><div style='width:50px;height:50px;background:#f00'></div>"
      "<div style='width:50px;height:50px;background:#f008'></div>");
  poster_.ask();
  const std::vector<guint32> pixels = pixelsOnceHung();
  ASSERT_FALSE(pixels.empty());
  EXPECT_EQ(pixels[10 * kWidth + 10], 0xFFFF0000);
  EXPECT_EQ(pixels[60 * kWidth + 10], 0x88880000);
  EXPECT_EQ(pixels[10 * kWidth + 100], 0U);
}

TEST_F(AskedPoster, IsNotHungOnceItWasDroppedHoweverOftenItWasAskedFor) {
  load("<p>page");
  poster_.ask();
  poster_.ask();
  poster_.drop();
  EXPECT_FALSE(hangsAtLast());
}

/// A page that waits for an answer before it has loaded.
class PosterOfSlowPage : public AskedPoster {
 protected:
  /// A context knows a scheme for good.
  static void SetUpTestSuite() {
    ToolkitFixture::SetUpTestSuite();
    webkit_web_context_register_uri_scheme(
        webkit_web_context_get_default(), "slow",
        [](WebKitURISchemeRequest* request, gpointer) {
          asked_ = GObjectPtr<WebKitURISchemeRequest>::retain(request);
        },
        nullptr, nullptr);
  }
  PosterOfSlowPage() {
    show(view_);
    webkit_web_view_load_html(WEBKIT_WEB_VIEW(view_), "<p>page<img src='slow:image'>", nullptr);
    EXPECT_TRUE(runUntil([] { return static_cast<bool>(asked_); }));
  }
  ~PosterOfSlowPage() override { asked_ = {}; }

 private:
  static inline GObjectPtr<WebKitURISchemeRequest> asked_;
};

TEST_F(PosterOfSlowPage, IsNotHungEarly) {
  poster_.askEarly();
  EXPECT_FALSE(hangsAtLast());
}

TEST_F(PosterOfSlowPage, IsHungOnceThePageHasLoadedThoughItWasAskedTooEarly) {
  poster_.askEarly();
  EXPECT_FALSE(hangsAtLast());
  poster_.ask();
  EXPECT_TRUE(hangsAtLast());
}

TEST_F(PosterOfSlowPage, IsAskedAgainIfThePageHasLoadedMeanwhile) {
  poster_.askEarly();
  poster_.ask();
  EXPECT_TRUE(runUntil([&] { return poster_.hangs(); }));
}

TEST_F(AskedPoster, IsHungEarlyForAPageThatHasLoadedCompletely) {
  load("<p>page");
  poster_.askEarly();
  EXPECT_TRUE(runUntil([&] { return poster_.hangs(); }));
}

TEST_F(AskedPoster, OfAnotherSizeIsAskedForAgainRatherThanStretched) {
  load("<body style='margin:0'><div style='width:50px;height:50px;background:#f00'></div>");
  poster_.askEarly();
  poster_.ask();
  gtk_widget_allocate(view_, kWidth + 40, kHeight, -1, nullptr);
  const std::vector<guint32> pixels = pixelsOnceHung();
  ASSERT_FALSE(pixels.empty());
  EXPECT_EQ(pixels[10 * kWidth + 48], 0xFFFF0000);
  EXPECT_EQ(pixels[10 * kWidth + 53], 0U);
}

TEST_F(AskedPoster, MayBeAskedForAgainOnceItWasDropped) {
  load("<p>page");
  poster_.askEarly();
  poster_.drop();
  poster_.ask();
  EXPECT_TRUE(runUntil([&] { return poster_.hangs(); }));
}

/// What decides how a view's pages are drawn, with a page that has loaded.
class DrawnPage : public Posters {
 protected:
  DrawnPage() {
    view_ = WEBKIT_WEB_VIEW(g_object_new(pageViewType(), nullptr));
    show(GTK_WIDGET(view_));
    webkit_web_view_load_html(view_, "<p>page", nullptr);
    EXPECT_TRUE(runUntil([&] { return webkit_web_view_is_loading(view_) == FALSE; }));
  }

  WebKitWebView* view_ = nullptr;
};

TEST_F(DrawnPage, HasAPosterAsSoonAsItComes) {
  PageDrawing drawing(view_, Drawing::kSoftware);
  drawing.pageCame();
  EXPECT_TRUE(runUntil([&] { return showsPoster(view_); }));
}

TEST_F(DrawnPage, HasAPosterWhenItHasLoaded) {
  PageDrawing drawing(view_, Drawing::kSoftware);
  drawing.pageLoaded();
  EXPECT_TRUE(runUntil([&] { return showsPoster(view_); }));
}

/// Before its first picture. Where GL draws, the engine's first one is empty.
class PageWithoutPicture : public DrawnPage {
 protected:
  PageWithoutPicture() {
    preparePages(webkit_web_view_get_settings(view_), Drawing::kSoftware, false);
    webkit_web_view_set_background_color(view_, &kNothing);
    EXPECT_TRUE(runUntil([this] { return engineHasPicture(); }));
    expectPicture(view_);
  }
  /// Returns what is painted of it at this moment; null for nothing.
  NodePtr painted() { return paintedBy(GTK_WIDGET_GET_CLASS(view_)); }

 private:
  bool engineHasPicture() {
    return paintedBy(GTK_WIDGET_CLASS(g_type_class_peek(WEBKIT_TYPE_WEB_VIEW))) != nullptr;
  }
  NodePtr paintedBy(GtkWidgetClass* type) {
    GtkSnapshot* const target = gtk_snapshot_new();
    type->snapshot(GTK_WIDGET(view_), target);
    return NodePtr(gtk_snapshot_free_to_node(target));
  }
};

TEST_F(PageWithoutPicture, IsNotPaintedUntilItsPosterHasCome) {
  showPosterEarly(view_);
  EXPECT_EQ(painted(), nullptr);
  EXPECT_TRUE(runUntil([&] { return painted() != nullptr; }));
}

TEST_F(PageWithoutPicture, IsPaintedAsTheEngineHasItWithoutAPoster) {
  EXPECT_NE(painted(), nullptr);
  showPoster(view_);
  EXPECT_NE(painted(), nullptr) << "what was shown stays";
}

TEST_F(PageWithoutPicture, IsPaintedAsTheEngineHasItOnceThePosterTurnsOutUnfit) {
  showPosterEarly(view_);
  gtk_widget_allocate(GTK_WIDGET(view_), kWidth + 40, kHeight, -1, nullptr);
  waitForAnswers(view_);
  EXPECT_FALSE(showsPoster(view_));
  EXPECT_NE(painted(), nullptr);
}

TEST_F(PageWithoutPicture, IsPaintedAsTheEngineHasItIfThePosterIsLate) {
  webkit_web_view_evaluate_javascript(view_,
                                      "for (const end = Date.now() + 3000; Date.now() < end;);", -1,
                                      nullptr, nullptr, nullptr, nullptr, nullptr);
  showPosterEarly(view_);
  const gint64 start = g_get_monotonic_time();
  EXPECT_TRUE(runUntil([&] { return !waitsForPicture(view_); }));
  EXPECT_LT(g_get_monotonic_time() - start, 2 * G_TIME_SPAN_SECOND);
}

/// A popup's page, drawn in one of the ways.
class PosterOfPage : public Posters {
 protected:
  ~PosterOfPage() override { g_cancellable_cancel(lateAsk_.get()); }
  void open(Drawing drawing, bool opaque) {
    const auto settings = GObjectPtr<WebKitSettings>::adopt(webkit_settings_new());
    preparePages(settings.get(), drawing, opaque);
    auto view = GObjectPtr<WebKitWebView>::sink(
        WEBKIT_WEB_VIEW(g_object_new(pageViewType(), "settings", settings.get(), nullptr)));
    view_ = view.get();
    page_ = std::make_unique<ToolkitWebView>(
        1, std::move(view), std::vector<std::string>(),
        [this](const HelperMessage& event) { finished_ += event.at("type") == "web.finished"; },
        [](GtkWidget*, double) {}, "", drawing);
    page_->setBackground(opaque ? GdkRGBA{1, 1, 1, 1} : kNothing);
    show(GTK_WIDGET(view_));
  }
  /// Returns whether a poster was hung, or whether the page came without one.
  bool hangsOne(int page, const char* body = "<h1>Page</h1>") {
    std::ofstream(file_) << "<!doctype html>" << body;
    page_->load("file://" + file_.string(), true);
    bool hung = false;
    asked_ = false;
    late_ = false;
    g_cancellable_cancel(lateAsk_.get());
    lateAsk_ = GObjectPtr<GCancellable>::adopt(g_cancellable_new());
    EXPECT_TRUE(runUntil([&] {
      hung = hung || showsPoster(view_);
      return hung || (finished_ == page && isLate());
    }));
    return hung;
  }

  ScratchDirectory directory_;
  std::filesystem::path file_ = directory_.path() / "page.html";
  WebKitWebView* view_ = nullptr;
  std::unique_ptr<ToolkitWebView> page_;

 private:
  /// A picture that was asked for after the page's poster has come, so no poster will.
  bool isLate() {
    if (!std::exchange(asked_, true)) {
      webkit_web_view_get_snapshot(
          view_, WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_NONE, lateAsk_.get(),
          [](GObject* view, GAsyncResult* result, gpointer self) {
            const auto picture = GObjectPtr<GdkTexture>::adopt(
                webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
            if (picture) static_cast<PosterOfPage*>(self)->late_ = true;
          },
          this);
    }
    return late_;
  }

  GObjectPtr<GCancellable> lateAsk_;
  int finished_ = 0;
  bool asked_ = false;
  bool late_ = false;
};

TEST_F(PosterOfPage, IsHungForTheFirstSeeThroughPageWhereGlIsSoftware) {
  open(Drawing::kSoftware, false);
  EXPECT_TRUE(hangsOne(1));
  EXPECT_TRUE(waitsForPicture(view_));
  EXPECT_TRUE(runUntil([&] { return !showsPoster(view_); }));
  EXPECT_FALSE(hangsOne(2)) << "the first page is still to be seen";
}

TEST_F(PosterOfPage, ComesDownWhenAnotherPageComes) {
  open(Drawing::kSoftware, false);
  EXPECT_TRUE(hangsOne(1));
  expectPicture(view_);
  EXPECT_FALSE(showsPoster(view_));
}

TEST_F(PosterOfPage, IsWaitedForAfterTheEngineHasPaintedAnEmptyPicture) {
  open(Drawing::kSoftware, false);
  EXPECT_TRUE(hangsOne(1, ""));
  EXPECT_TRUE(runUntil([&] { return !waitsForPicture(view_); }));
  showPoster(view_);
  EXPECT_TRUE(runUntil([&] { return showsPoster(view_); }));
  EXPECT_TRUE(waitsForPicture(view_));
}

/// It is not needed there.
class PosterInOtherWays : public PosterOfPage, public testing::WithParamInterface<Drawing> {};

TEST_P(PosterInOtherWays, OfDrawingIsNotHung) {
  open(GetParam(), false);
  EXPECT_FALSE(hangsOne(1));
}

INSTANTIATE_TEST_SUITE_P(, PosterInOtherWays, testing::Values(Drawing::kPlain, Drawing::kHardware),
                         [](const auto& test) {
                           return test.param == Drawing::kPlain ? "Plain" : "Hardware";
                         });

TEST_F(PosterOfPage, IsNotNeededForPagesThatCoverWhatIsBehindThem) {
  open(Drawing::kSoftware, true);
  EXPECT_FALSE(hangsOne(1));
}

}  // namespace
}  // namespace zovk::helper
