#include "platform/linux/http/ResponseSink.h"

#include <cerrno>
#include <utility>

#include <unistd.h>

#include "platform/linux/system/WriteAll.h"

namespace zovk {
namespace {

constexpr int kOk = 200;
constexpr int kNotModified = 304;

}  // namespace

std::optional<std::string> DataSink::write(std::string_view piece) {
  body_ += piece;
  return std::nullopt;
}

void DataSink::complete(const UrlResult& result) {
  const auto completion = std::exchange(completion_, nullptr);
  if (!completion) return;
  DataResult data{result, std::nullopt};
  if (!result.error) data.body = std::move(body_);
  completion(data);
}

void DownloadSink::begin(SessionFiles& files) {
  removeFile();
  files_ = &files;
  known_ = asksAgain_ ? Validators() : files.downloads.validators(url_).value_or(Validators());
}

std::optional<std::string> DownloadSink::openFile() {
  if (file_) return std::nullopt;
  file_ = files_->temporary.makeFile(path_);
  if (file_) return std::nullopt;
  path_.clear();
  return "temporary file: " + std::generic_category().message(errno);
}

std::optional<std::string> DownloadSink::write(std::string_view piece) {
  if (auto error = openFile()) return error;
  const std::error_code error = writeAll(file_.get(), piece);
  return error ? std::optional("temporary file: " + error.message()) : std::nullopt;
}

bool DownloadSink::settle(UrlResult& result, const AnswerVersion& version) {
  if (result.error) return true;
  if (result.status == kNotModified && !known_.empty()) return takeKept(result, version.redirected);
  result.error = openFile();  // an answer without a body is an empty file
  if (result.error) return true;
  const bool worthIt = version.mayBeKept && !version.redirected && !version.validators.empty();
  if (result.status == kOk && worthIt) keep(version.validators);
  return true;
}

bool DownloadSink::takeKept(UrlResult& result, bool redirected) {
  // Validators say nothing about a file somewhere else.
  const auto body = redirected ? std::nullopt : files_->downloads.body(url_, known_);
  asksAgain_ = !body;
  if (!body) return false;
  result.status = kOk;
  result.error = write(*body);
  return true;
}

void DownloadSink::keep(const Validators& validators) {
  const off_t size = ::lseek(file_.get(), 0, SEEK_END);
  if (size < 0 || size > static_cast<off_t>(DownloadCache::kLargestBody)) return;
  std::string body(static_cast<std::size_t>(size), '\0');
  if (::pread(file_.get(), body.data(), body.size(), 0) != size) return;
  files_->downloads.keep(url_, validators, body);
}

void DownloadSink::complete(const UrlResult& result) {
  const auto completion = std::exchange(completion_, nullptr);
  file_.reset();
  if (result.error) removeFile();
  if (completion) {
    DownloadResult download{result, std::nullopt};
    if (!result.error) download.path = path_;
    completion(download);
  }
  removeFile();
}

void DownloadSink::removeFile() {
  file_.reset();
  if (!path_.empty()) ::unlink(path_.c_str());
  path_.clear();
}

}  // namespace zovk
