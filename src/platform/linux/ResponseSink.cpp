#include "platform/linux/ResponseSink.h"

#include <cerrno>
#include <utility>

#include <unistd.h>

#include "platform/linux/WriteAll.h"

namespace zovk {

std::optional<std::string> DataSink::begin(TemporaryDirectory& /*directory*/) {
  return std::nullopt;
}

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

std::optional<std::string> DownloadSink::begin(TemporaryDirectory& directory) {
  file_ = directory.makeFile(path_);
  if (file_) return std::nullopt;
  path_.clear();
  return "temporary file: " + std::generic_category().message(errno);
}

std::optional<std::string> DownloadSink::write(std::string_view piece) {
  const std::error_code error = writeAll(file_.get(), piece);
  return error ? std::optional("temporary file: " + error.message()) : std::nullopt;
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
  if (!path_.empty()) ::unlink(path_.c_str());
  path_.clear();
}

}  // namespace zovk
