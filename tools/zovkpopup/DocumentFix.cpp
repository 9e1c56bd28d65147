#include "zovkpopup/DocumentFix.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "platform/linux/system/AtomicWrite.h"
#include "text/LowerCase.h"
#include "text/Md5.h"
#include "text/ZOVKPopupCommonTool.h"
#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/Problems.h"
#include "zovkpopup/SigPlaces.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFiles = 1000;           // of a folder that are looked through
constexpr std::uintmax_t kLargestPage = 64 << 20;  // bytes; no game takes more

/// What belongs to one entry of "popups".
struct Fix {
  std::size_t index = 0;
  ZOVKPopupModel popup;
  std::string digest;  ///< What "sig" has to be; empty where that is not known.
  std::optional<fs::path> file;
};

std::string nameOf(ZOVKPopupModel popup, const std::string& sig) {
  popup.sig = sig;
  return popup.getPopupFileName();
}

bool isEngineName(const fs::path& file) {
  return file.filename().string().starts_with("ZOVKPopup_");
}

/// The page files of a folder, for popups whose own is not where it is looked for.
class LostPages {
 public:
  LostPages(const fs::path& folder, const std::vector<Fix>& fixes) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder.empty() ? "." : folder, error)) {
      const bool taken = std::any_of(fixes.begin(), fixes.end(), [&entry](const Fix& fix) {
        return fix.file && fix.file->filename() == entry.path().filename();
      });
      if (files_.size() == kMostFiles) break;
      if (!taken && isPage(entry)) files_[folder / entry.path().filename()] = "";
    }
  }

  /// Returns a file with the digest that the popup gives, or else the only one with the name of
  /// such a popup's page.
  std::optional<fs::path> find(const ZOVKPopupModel& popup) {
    const std::string sig = lowerCase(popup.sig);
    std::vector<fs::path> alike;
    for (auto& [file, digest] : files_) {
      if (digest.empty()) digest = md5Hex(readFile(file));
      if (digest == sig) return file;
      const std::string begin = nameOf(popup, "");
      if (file.filename().string().starts_with(begin.substr(0, begin.rfind('_') + 1))) {
        alike.push_back(file);
      }
    }
    return alike.size() == 1 ? std::optional(alike.front()) : std::nullopt;
  }

 private:
  static bool isPage(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_regular_file(error) && entry.path().extension() == ".html" &&
           entry.file_size(error) <= kLargestPage;
  }

  std::map<fs::path, std::string> files_;
};

std::vector<Fix> fixesOf(const DocumentEngine& engine, const boost::json::value& document,
                         const OpenDocument& opened) {
  std::vector<Fix> fixes;
  const boost::json::array& entries = document.at("popups").as_array();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto* const entry = entries[i].if_object();
    if (entry == nullptr || entry->empty()) continue;
    const ZOVKPopupModel& popup = *engine.popups()[fixes.size()];
    fixes.push_back({i, popup, "", popup.isPageFile() ? opened.pages.find(popup) : std::nullopt});
  }
  return fixes;
}

void judge(std::vector<Fix>& fixes, const PageFolder& pages) {
  LostPages lost(pages.folder(), fixes);
  for (Fix& fix : fixes) {
    if (!fix.popup.isPageFile()) {
      if (!fix.popup.uri.empty()) fix.digest = ZOVKPopupCommonTool::getTextMD5(fix.popup.uri);
      continue;
    }
    if (!fix.file) fix.file = lost.find(fix.popup);
    if (fix.file) fix.digest = md5Hex(readFile(*fix.file));
  }
}

// Works from the last to the first, so that the places before them stay right.
std::string withDigests(std::string text, const std::vector<Fix>& fixes,
                        std::vector<std::string>& said) {
  const std::vector<SigPlace> places = sigPlaces(text);
  for (auto fix = fixes.rbegin(); fix != fixes.rend(); ++fix) {
    if (fix->digest.empty() || fix->digest == fix->popup.sig || fix->index >= places.size())
      continue;
    const SigPlace& place = places[fix->index];
    const std::string value = "\"" + fix->digest + "\"";
    if (place.begin != 0) {
      text.replace(place.begin, place.end - place.begin, value);
    } else if (place.isObject && !place.hasSig) {
      const std::string blanks =
          text.substr(place.inside, text.find('"', place.inside) - place.inside);
      text.insert(place.inside, blanks + "\"sig\": " + value + (blanks.empty() ? ", " : ","));
    } else {
      continue;  // a number, or the like: its author meant something else
    }
    said.push_back(fmt::format("{}: was \"{}\", is \"{}\"", entryPath(fix->index, "sig"),
                               fix->popup.sig, fix->digest));
  }
  std::reverse(said.begin(), said.end());
  return text;
}

// A game looks for its bundle's pages, and for those it keeps, by this name alone.
bool hasWrongName(const Fix& fix) {
  if (!fix.file || fix.file->filename() == nameOf(fix.popup, fix.digest)) return false;
  return isEngineName(*fix.file) || fix.popup.config_type == kConfigLocal;
}

// The pages get their new names before the document names them, and lose the old ones after that,
// so that a crash between leaves a document and its pages.
std::vector<fs::path> addNames(const std::vector<Fix>& fixes, std::vector<std::string>& said) {
  std::vector<fs::path> old;
  for (const Fix& fix : fixes) {
    if (!hasWrongName(fix)) continue;
    const fs::path wanted = fix.file->parent_path() / nameOf(fix.popup, fix.digest);
    if (!fs::exists(wanted) || md5Hex(readFile(wanted)) != fix.digest) {
      if (const auto error = replaceFile(wanted.string(), readFile(*fix.file))) {
        throw ToolError(wanted.string() + ": cannot be written: " + error.message(), kCannotCreate);
      }
      fs::permissions(wanted, fs::status(*fix.file).permissions());
    }
    said.push_back(fmt::format("{} is called {}", fix.file->string(), wanted.filename().string()));
    old.push_back(*fix.file);
  }
  return old;
}

bool isUsed(const fs::path& file, const std::vector<Fix>& fixes) {
  return std::any_of(fixes.begin(), fixes.end(), [&file](const Fix& fix) {
    if (!fix.file) return false;
    return hasWrongName(fix) ? file.filename() == nameOf(fix.popup, fix.digest) : *fix.file == file;
  });
}

void write(const std::string& name, const std::string& text) {
  const fs::path file = fs::canonical(name);
  const fs::perms mode = fs::status(file).permissions();
  if (const auto error = replaceFile(file.string(), text)) {
    throw ToolError(name + ": cannot be written: " + error.message(), kCannotCreate);
  }
  fs::permissions(file, mode);
}

}  // namespace

std::vector<std::string> fixDocument(const DocumentOptions& options) {
  const OpenDocument opened = openDocument(options);
  DocumentEngine engine(opened.now);
  if (engine.load(opened.text, opened.configType, opened.pages)) return {};
  std::vector<Fix> fixes = fixesOf(engine, parseJson(opened.text).value, opened);
  std::vector<std::string> said;
  try {
    judge(fixes, opened.pages);
    const std::string before = readFile(options.file);
    const std::string after = withDigests(before, fixes, said);
    const std::vector<fs::path> old = addNames(fixes, said);
    if (after != before) write(options.file, after);
    for (const fs::path& file : old) {
      if (!isUsed(file, fixes)) fs::remove(file);
    }
  } catch (const fs::filesystem_error& error) {
    throw ToolError(error.what(), kInputOutput);
  }
  return said;
}

}  // namespace zovk::tool
