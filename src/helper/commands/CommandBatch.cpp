#include "helper/commands/CommandBatch.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

constexpr std::string_view kOfPages = "web.";
constexpr std::string_view kOfViews = "view.";
constexpr std::string_view kOfLayouts = "layout.";

std::string_view typeOf(const HelperMessage& command) {
  return command.at(member::kType).as_string();
}

/// Returns 0, which is no view, for a command about none.
HelperId viewOf(const HelperMessage& command) {
  const auto* view = command.if_contains(member::kView);
  return view != nullptr && view->is_int64() ? view->as_int64() : 0;
}

bool isLoad(std::string_view type) {
  return type == command::kWebLoad || type == command::kWebLoadFile;
}

}  // namespace

void CommandBatch::add(HelperMessage command) {
  const std::string_view type = typeOf(command);
  const HelperId view = viewOf(command);
  if (type == command::kWebCreate && !isMentioned(view)) {
    untouched_.insert(view);
    return addAhead(std::move(command));
  }
  const bool isOfPage = type.starts_with(kOfPages) || type == command::kViewRelease;
  const bool isUntouched = isOfPage && untouched_.erase(view) > 0;
  if (isUntouched && isLoad(type)) return addAhead(std::move(command));
  const bool isGreeting = type == command::kHello;
  addBehind(std::move(command));
  if (isGreeting) ahead_ = commands_.size();  // nothing can be done before it
}

bool CommandBatch::isMentioned(HelperId view) const {
  return std::any_of(commands_.begin(), commands_.end(),
                     [view](const HelperMessage& command) { return viewOf(command) == view; });
}

void CommandBatch::addAhead(HelperMessage command) {
  commands_.insert(commands_.begin() + static_cast<std::ptrdiff_t>(ahead_), std::move(command));
  ++ahead_;
}

void CommandBatch::addBehind(HelperMessage command) {
  const std::string_view type = typeOf(command);
  const bool isOfWindow = type.starts_with(kOfViews) || type.starts_with(kOfLayouts);
  const bool isShown = !commands_.empty() && typeOf(commands_.back()) == command::kWindowShow;
  commands_.insert(isOfWindow && isShown ? std::prev(commands_.end()) : commands_.end(),
                   std::move(command));
}

HelperMessage CommandBatch::take() {
  HelperMessage command = std::move(commands_.front());
  commands_.pop_front();
  if (ahead_ > 0) --ahead_;
  return command;
}

}  // namespace zovk::helper
