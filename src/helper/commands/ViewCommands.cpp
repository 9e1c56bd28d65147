#include "helper/Program.h"
#include "helper/commands/Commands.h"
#include "helper/layout/ContainerView.h"
#include "helper/layout/ViewStyle.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

GtkWidget* viewOf(Program& program, const Arguments& arguments) {
  return program.views().find(arguments.id(member::kView));
}

/// Removes the view from its container, with its constraints. Returns whether it is in no container
/// now. A view in a widget that is not one of our containers keeps its place for good.
bool detach(Program& program, GtkWidget* view) {
  GtkWidget* parent = gtk_widget_get_parent(view);
  if (parent == nullptr) return true;
  if (!isContainerView(parent)) return false;
  program.constraints().remove(view);
  gtk_widget_unparent(view);
  return true;
}

struct Nesting {
  GtkWidget* parent;
  GtkWidget* child;
};

Nesting nestingOf(Program& program, const Arguments& arguments) {
  const Id parent = arguments.id(member::kView);
  const Id child = arguments.id(member::kChild);
  return {program.views().find(parent), program.views().find(child)};
}

bool isChild(const Nesting& nesting) {
  return nesting.parent != nullptr && nesting.child != nullptr &&
         gtk_widget_get_parent(nesting.child) == nesting.parent;
}

void addView(Program& program, const Arguments& arguments) {
  const Nesting nesting = nestingOf(program, arguments);
  const auto& [parent, child] = nesting;
  if (parent == nullptr || child == nullptr || !isContainerView(parent)) return;
  if (isChild(nesting)) return gtk_widget_insert_before(child, parent, nullptr);
  if (parent == child || gtk_widget_is_ancestor(parent, child)) return;
  const bool shown = gtk_widget_get_child_visible(child) == TRUE;
  if (!detach(program, child)) return;
  gtk_widget_insert_before(child, parent, nullptr);
  gtk_widget_set_child_visible(child, shown);
  if (WEBKIT_IS_WEB_VIEW(child)) gtk_widget_grab_focus(child);  // keys go to the page first
}

void sendBack(Program& program, const Arguments& arguments) {
  const Nesting nesting = nestingOf(program, arguments);
  if (isChild(nesting)) gtk_widget_insert_after(nesting.child, nesting.parent, nullptr);
}

void removeView(Program& program, const Arguments& arguments) {
  if (GtkWidget* view = viewOf(program, arguments)) detach(program, view);
  program.views().dropReleased();
}

void releaseView(Program& program, const Arguments& arguments) {
  program.views().release(arguments.id(member::kView));
}

bool isHiddenLike(GtkWidget* view, bool hidden, bool closesUp) {
  const bool visible = gtk_widget_get_visible(view) == TRUE;
  if (closesUp) return visible != hidden;
  const bool shown = gtk_widget_get_child_visible(view) == TRUE;
  return hidden ? !shown : shown && visible;
}

/// A hidden view keeps its place, so that others can be pinned to it; in a row of buttons the
/// others close the gap.
void setHidden(GtkWidget* view, bool hidden) {
  GtkWidget* parent = gtk_widget_get_parent(view);
  const bool closesUp = parent != nullptr && !isContainerView(parent);
  if (isHiddenLike(view, hidden, closesUp)) return;
  if (closesUp || !hidden) gtk_widget_set_visible(view, !hidden);
  if (!closesUp) gtk_widget_set_child_visible(view, !hidden);
  // Its place is kept, but screen readers must not come upon it.
  gtk_accessible_update_state(GTK_ACCESSIBLE(view), GTK_ACCESSIBLE_STATE_HIDDEN, hidden, -1);
  // The toolkit does not repaint for a view that comes back to its old place.
  if (parent != nullptr) gtk_widget_queue_draw(parent);
}

void hideView(Program& program, const Arguments& arguments) {
  const bool hidden = arguments.flag(member::kHidden);
  if (GtkWidget* view = viewOf(program, arguments)) setHidden(view, hidden);
}

void fadeView(Program& program, const Arguments& arguments) {
  const double alpha = arguments.number(member::kAlpha);
  if (GtkWidget* view = viewOf(program, arguments)) gtk_widget_set_opacity(view, alpha);
}

void colorView(Program& program, const Arguments& arguments) {
  const GdkRGBA color = arguments.color(member::kColor);
  if (ToolkitWebView* page = program.webView(arguments.id(member::kView)))
    return page->setBackground(color);
  if (GtkWidget* view = viewOf(program, arguments)) setBackground(view, color);
}

void clipView(Program& program, const Arguments& arguments) {
  const bool clips = arguments.flag(member::kClips);
  GtkWidget* view = viewOf(program, arguments);
  if (view != nullptr) {
    gtk_widget_set_overflow(view, clips ? GTK_OVERFLOW_HIDDEN : GTK_OVERFLOW_VISIBLE);
  }
}

void setImage(Program& program, const Arguments& arguments) {
  const std::string path = arguments.text(member::kPath);
  if (GtkWidget* view = viewOf(program, arguments)) setButtonImage(view, path);
}

void pinEdges(Program& program, const Arguments& arguments) {
  GtkWidget* to = program.views().find(arguments.id(member::kTo));
  GtkWidget* view = viewOf(program, arguments);
  if (view == nullptr || to == nullptr) return;
  for (const auto edge : {GTK_CONSTRAINT_ATTRIBUTE_LEFT, GTK_CONSTRAINT_ATTRIBUTE_TOP,
                          GTK_CONSTRAINT_ATTRIBUTE_RIGHT, GTK_CONSTRAINT_ATTRIBUTE_BOTTOM}) {
    program.constraints().pin({view, edge, to, edge, 0});
  }
}

void pinTop(Program& program, const Arguments& arguments) {
  GtkWidget* to = program.views().find(arguments.id(member::kTo));
  const double offset = arguments.number(member::kOffset);
  arguments.flag(member::kSafeArea);  // no part of a window is unsafe here
  GtkWidget* view = viewOf(program, arguments);
  if (view == nullptr || to == nullptr) return;
  program.constraints().pin(
      {view, GTK_CONSTRAINT_ATTRIBUTE_TOP, to, GTK_CONSTRAINT_ATTRIBUTE_TOP, offset});
}

void pinBottom(Program& program, const Arguments& arguments) {
  const std::vector<Id> candidates = arguments.ids(member::kCandidates);
  GtkWidget* view = viewOf(program, arguments);
  for (const Id candidate : candidates) {
    GtkWidget* to = program.views().find(candidate);
    if (view == nullptr || to == nullptr) continue;
    return program.constraints().pin(
        {view, GTK_CONSTRAINT_ATTRIBUTE_BOTTOM, to, GTK_CONSTRAINT_ATTRIBUTE_TOP, 0});
  }
}

}  // namespace

void addViewCommands(CommandTable& table) {
  table[command::kViewAdd] = addView;
  table[command::kViewBack] = sendBack;
  table[command::kViewRemove] = removeView;
  table[command::kViewRelease] = releaseView;
  table[command::kViewHidden] = hideView;
  table[command::kViewAlpha] = fadeView;
  table[command::kViewBackground] = colorView;
  table[command::kViewClip] = clipView;
  table[command::kViewImage] = setImage;
  table[command::kViewPinEdges] = pinEdges;
  table[command::kViewPinTop] = pinTop;
  table[command::kViewPinBottom] = pinBottom;
}

}  // namespace zovk::helper
