#include <cctype>

#include "zovkpopup/platform/Bundles.h"

namespace zovk {
namespace {

bool boolValueOfText(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i])) != 0) ++i;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  while (i < text.size() && text[i] == '0') ++i;
  if (i == text.size()) return false;
  return std::string_view("YyTt123456789").find(text[i]) != std::string_view::npos;
}

}  // namespace

bool boolValue(const boost::json::object& dictionary, std::string_view key) {
  const boost::json::value* const value = dictionary.if_contains(key);
  if (value == nullptr) return false;
  if (const bool* flag = value->if_bool()) return *flag;
  if (const boost::json::string* text = value->if_string()) return boolValueOfText(*text);
  return value->is_number() && value->to_number<double>() != 0;
}

}  // namespace zovk
