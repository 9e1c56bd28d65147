#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/UrlSession.h"
#include "platform/linux/TemporaryDirectory.h"
#include "platform/linux/UniqueFd.h"

namespace zovk {

/// Where the body of an answer goes, and who hears of its end. Session thread only, once the
/// transfer has started.
class ResponseSink {
 public:
  virtual ~ResponseSink() = default;
  /// Gets ready for the body. An error ends the transfer.
  virtual std::optional<std::string> begin(TemporaryDirectory& directory) = 0;
  /// An error ends the transfer.
  virtual std::optional<std::string> write(std::string_view piece) = 0;
  /// Calls the completion, with what was written unless there is an error.
  virtual void complete(const UrlResult& result) = 0;
};

/// Keeps the body in memory.
class DataSink : public ResponseSink {
 public:
  using Completion = std::function<void(const DataResult&)>;
  explicit DataSink(Completion completion) : completion_(std::move(completion)) {}

  std::optional<std::string> begin(TemporaryDirectory& directory) override;
  std::optional<std::string> write(std::string_view piece) override;
  void complete(const UrlResult& result) override;

 private:
  Completion completion_;
  std::string body_;
};

/// Writes the body to a temporary file, which goes away with the sink or after the completion.
class DownloadSink : public ResponseSink {
 public:
  using Completion = std::function<void(const DownloadResult&)>;
  explicit DownloadSink(Completion completion) : completion_(std::move(completion)) {}
  ~DownloadSink() override { removeFile(); }
  DownloadSink(const DownloadSink&) = delete;
  DownloadSink& operator=(const DownloadSink&) = delete;

  std::optional<std::string> begin(TemporaryDirectory& directory) override;
  std::optional<std::string> write(std::string_view piece) override;
  void complete(const UrlResult& result) override;

 private:
  void removeFile();

  Completion completion_;
  std::string path_;
  UniqueFd file_;
};

}  // namespace zovk
