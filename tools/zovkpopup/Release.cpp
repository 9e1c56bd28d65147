#include "zovkpopup/Release.h"

#include <algorithm>
#include <system_error>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/url/encode.hpp>
#include <boost/url/parse.hpp>
#include <boost/url/rfc/pchars.hpp>
#include <boost/url/url.hpp>
#include <fcntl.h>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include "text/Md5.h"
#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/Gzip.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

// Servers make validators of the time of a change. A page under its digest has always the same, so
// that all servers, and all publications, have the same validator for it.
constexpr std::time_t kPageTime = 946684800;  // 2000-01-01

/// Writes the files of a release.
class Writer {
 public:
  explicit Writer(fs::path root) : root_(std::move(root)) {}

  void add(const std::string& key, std::string_view bytes, std::time_t changed) const {
    write(root_ / key, bytes, changed);
    write(root_ / (key + ".gz"), gzip(bytes), changed);
  }

 private:
  static void write(const fs::path& path, std::string_view bytes, std::time_t changed) {
    fs::create_directories(path.parent_path());
    writeFile(path, bytes);
    const timespec times[2] = {{changed, 0}, {changed, 0}};
    if (::utimensat(AT_FDCWD, path.c_str(), times, 0) != 0) {
      throw ToolError(path.string() + ": its time cannot be set", kInputOutput);
    }
  }

  fs::path root_;
};

// Returns the address of a page under its digest: below `base`, or else where it was meant to be.
std::string pageAddress(const std::string& base, const std::string& uri, const std::string& key) {
  if (!base.empty()) return base + "/" + key;
  boost::urls::url address(boost::urls::parse_uri(uri).value());
  address.set_encoded_path("/" + key).remove_query().remove_fragment();
  return std::string(address.buffer());
}

/// Publishes the page files of a document, and leads the document to them.
class PageAddresses {
 public:
  PageAddresses(const OpenDocument& opened, const std::string& base, const Writer& writer)
      : opened_(opened), base_(base), writer_(writer) {}

  void apply(boost::json::object& entry, const ZOVKPopupModel& popup) {
    if (!popup.isPageFile()) return;
    const auto file = opened_.pages.find(popup);
    if (!file) throw ToolError(missingPageText(opened_.pages, popup), kNoInput);
    const std::string bytes = readFile(*file);
    const std::string name = file->filename().string();
    const std::string folder = "pages/" + md5Hex(bytes) + "/";
    writer_.add(folder + name, bytes, kPageTime);
    pages_.push_back(folder + name);
    entry["uri"] =
        pageAddress(base_, popup.uri, folder + boost::urls::encode(name, boost::urls::pchars));
  }
  std::vector<std::string> take() { return std::move(pages_); }

 private:
  const OpenDocument& opened_;
  const std::string& base_;
  const Writer& writer_;
  std::vector<std::string> pages_;
};

// The records belong to the entries that the engine does not pass over.
std::string leadToPages(const OpenDocument& opened, PageAddresses& addresses) {
  DocumentEngine engine(opened.now);
  if (const auto rejection = engine.load(opened.text, opened.configType, opened.pages)) {
    throw ToolError("the document is rejected by the engine: " + *rejection, kBadData);
  }
  boost::json::value document = parseJson(opened.text).value;
  std::size_t record = 0;
  for (boost::json::value& value : document.at("popups").as_array()) {
    auto* const entry = value.if_object();
    if (entry == nullptr || entry->empty()) continue;
    addresses.apply(*entry, *engine.popups()[record++]);
  }
  return boost::json::serialize(document);
}

void addLasting(const std::string& folder, const std::string& key, std::time_t time,
                const Writer& writer) {
  if (folder.empty()) return;
  if (!fs::is_directory(folder))
    throw ToolError("--lasting " + folder + ": is no folder", kNoInput);
  for (const auto& file : fs::recursive_directory_iterator(folder)) {
    if (!file.is_regular_file()) continue;
    const fs::path name = fs::relative(file.path(), folder);
    writer.add(key + "/pages/" + name.generic_string(), readFile(file.path()), time);
  }
}

Release written(const OpenDocument& opened, const PublishOptions& options, std::time_t time,
                const fs::path& folder) {
  Release release;
  release.time = time;
  release.id =
      fmt::format("{:%Y%m%dT%H%M%S}-{}", fmt::gmtime(time), md5Hex(opened.text).substr(0, 8));
  release.folder = folder / release.id;
  const Writer writer(release.folder);
  const std::string key = "releases/" + release.id;
  PageAddresses addresses(opened, options.base, writer);
  const std::string document = leadToPages(opened, addresses);
  release.pages = addresses.take();
  addLasting(options.lasting, key, time, writer);
  writer.add(key + "/popup/get_info", document, time);
  return release;
}

}  // namespace

std::vector<std::string> filesOf(const Release& release, const std::string& below) {
  std::vector<std::string> keys;
  if (!fs::is_directory(release.folder / below)) return keys;
  for (const auto& file : fs::recursive_directory_iterator(release.folder / below)) {
    if (!file.is_regular_file()) continue;
    keys.push_back(fs::relative(file.path(), release.folder).generic_string());
  }
  std::sort(keys.begin(), keys.end());
  return keys;
}

Release makeRelease(const OpenDocument& opened, const PublishOptions& options, std::time_t time,
                    const fs::path& folder) {
  try {
    return written(opened, options, time, folder);
  } catch (const fs::filesystem_error& error) {
    throw ToolError(error.what(), kInputOutput);
  } catch (const boost::system::system_error& error) {
    throw ToolError(std::string("a page's address cannot be read: ") + error.what(), kBadData);
  }
}

}  // namespace zovk::tool
