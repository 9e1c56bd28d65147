// What anyone can send the development service: the target of a request and its body, the sections
// of an input, then two headers. "SIGN" in a target stands for the right signature, so that the
// search gets past it.
#include <filesystem>
#include <fstream>

#include <boost/json/serialize.hpp>
#include <unistd.h>

#include "fuzz/Fuzz.h"
#include "service/Checks.h"
#include "service/FaultBook.h"
#include "service/Folder.h"
#include "service/GameKeys.h"
#include "service/Pages.h"
#include "service/Reports.h"
#include "service/SignatureCheck.h"
#include "text/Md5.h"

namespace zovk::service {
namespace {

namespace fs = std::filesystem;

constexpr const char* kKey = "s3cret-key";
constexpr const char* kSecret = "beside the pages";

/// A served folder of this process's own.
class Served {
 public:
  Served() : path_(fs::temp_directory_path() / ("zovkpopup-fuzz-" + std::to_string(getpid()))) {
    fs::create_directories(path_ / "pages");
    std::ofstream(path_ / "pages" / "spring.html") << "<p>Spring";
    std::ofstream(path_ / "secret") << kSecret;
    std::ofstream(path_ / "checks.json") << R"({"vip":1,"more":{"need_popup":1,"extra":{"a":1}}})";
  }
  ~Served() { fs::remove_all(path_); }
  Served(const Served&) = delete;
  Served& operator=(const Served&) = delete;
  const fs::path& path() const { return path_; }

 private:
  const fs::path path_;
};

struct Service {
  Served served;
  Folder folder{served.path()};
  GameKeys keys{folder, {"1001=" + std::string(kKey)}};
  SignatureCheck signatures{keys, false};
  std::optional<Reports> reports{std::in_place, ":memory:"};
  std::size_t kept = 0;
};

std::string withSignature(std::string query, const std::string& path, const std::string& body) {
  const std::size_t place = query.rfind("SIGN");
  if (place == std::string::npos) return query;
  const std::string parameters(splitSignedQuery(query).parameters);
  return query.replace(place, 4, md5Hex(signedText(path, parameters, body, kKey)));
}

/// `said` is what an answer may repeat: the caller can write the key there by chance.
void expectNoKey(const Answer& answer, const std::string& said, std::string_view input) {
  const bool isRepeated =
      input.find(kKey) != std::string_view::npos || said.find(kKey) != std::string::npos;
  if (!isRepeated && answer.body.find(kKey) != std::string::npos) {
    fail("the game's key in an answer", input);
  }
}

bool isObject(const std::string& body) {
  try {
    objectOf(body, "the body");
    return true;
  } catch (const FolderError&) {
    return false;
  }
}

void ask(Service& service, const std::string& path, const std::string& query,
         const std::string& body, std::string_view input) {
  const auto checked = service.signatures.check(path, query, body);
  if (const auto* refusal = std::get_if<Answer>(&checked)) {
    const std::string said = signedText(path, splitSignedQuery(query).parameters, body, "");
    return expectNoKey(*refusal, said, input);
  }
  (void)answerCheck(service.folder, path.substr(path.rfind('/') + 1));
  if (!isObject(body)) return;
  service.reports->add(std::get<Caller>(checked), path, body);
  if (++service.kept % 64 != 0) return;
  (void)service.reports->list(0);
  service.reports.emplace(":memory:");
}

void setFault(const std::string& text) {
  FaultBook faults;
  try {
    faults.set(text);
    (void)faults.take(text.substr(0, text.find('=')));
  } catch (const std::invalid_argument&) {
  }
  if (!isObject(text)) return;
  try {
    faults.set(objectOf(text, "the fault"));
    (void)boost::json::serialize(faults.list());
  } catch (const std::invalid_argument&) {
  }
}

void fuzzService(std::string_view input) {
  static Service service;
  const auto sections = sectionsOf(input, 4);
  const std::string& target = sections[0];
  const std::string& body = sections[1];
  const std::string path = target.substr(0, target.find('?'));
  const std::string query = path.size() < target.size() ? target.substr(path.size() + 1) : "";
  ask(service, path, withSignature(query, path, body), body, input);
  setFault(body);
  const Answer page = answerPage(service.folder, path.substr(std::min<std::size_t>(path.size(), 7)),
                                 {sections[2], sections[3]});
  if (page.body.find(kSecret) != std::string::npos) fail("a file beside the pages", input);
}

}  // namespace
}  // namespace zovk::service

void zovk::fuzz(std::string_view input) {
  service::fuzzService(input);
}
