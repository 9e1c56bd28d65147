#include "support/Version.h"

#include <string_view>
#include <utility>

#include "zovkpopup.h"

namespace {

constexpr std::uint32_t numberOf(std::string_view version) {
  std::uint32_t number = 0;
  std::uint32_t part = 0;
  for (const char c : version) {
    if (c == '.')
      number = (number + std::exchange(part, 0U)) * 100;
    else
      part = part * 10 + static_cast<std::uint32_t>(c - '0');
  }
  return number + part;
}

static_assert(std::string_view(ZOVKPOPUP_VERSION) == zovk::kPopupVersion);
static_assert(numberOf(ZOVKPOPUP_VERSION) == ZOVKPOPUP_VERSION_NUMBER);

}  // namespace

const char* zovkpopup_version(void) {
  return zovk::kPopupVersion;
}

std::uint32_t zovkpopup_version_number(void) {
  return numberOf(zovk::kPopupVersion);
}

const char* zovkpopup_error_message(zovkpopup_status status) {
  switch (status) {
    case ZOVKPOPUP_OK:
      return "success";
    case ZOVKPOPUP_ERROR_ARGUMENT:
      return "an argument is NULL or makes no sense";
    case ZOVKPOPUP_ERROR_SIZE:
      return "the size of a struct is that of no version";
    case ZOVKPOPUP_ERROR_JSON:
      return "a text is no JSON";
    case ZOVKPOPUP_ERROR_STATE:
      return "this cannot be done now";
    case ZOVKPOPUP_ERROR_THREAD:
      return "this was called on another thread than the main thread";
    case ZOVKPOPUP_ERROR_MEMORY:
      return "there is not enough memory";
    case ZOVKPOPUP_ERROR_INTERNAL:
      return "something unforeseen failed";
    default:
      return "this is no status of the popups";
  }
}
