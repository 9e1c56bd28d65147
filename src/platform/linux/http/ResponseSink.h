#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/http/DownloadCache.h"
#include "platform/linux/system/TemporaryDirectory.h"
#include "support/UniqueFd.h"
#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

/// The files of a session.
struct SessionFiles {
  TemporaryDirectory temporary;
  DownloadCache downloads;
};

/// What an answer says about the version of its file.
struct AnswerVersion {
  Validators validators;
  bool mayBeKept = false;
  bool redirected = false;
};

/// Receives the body of an answer, and calls the completion at its end. Session thread only, once
/// the transfer has started.
class ResponseSink {
 public:
  virtual ~ResponseSink() = default;
  /// Prepares for the body. Opens nothing yet.
  virtual void begin(SessionFiles& files) = 0;
  /// Returns the number of descriptors it holds.
  virtual std::size_t descriptors() const { return 0; }
  /// Returns the version that is already kept, so that the server need not send it again.
  virtual Validators known() const { return {}; }
  /// Takes a piece of the body. A returned error ends the transfer.
  virtual std::optional<std::string> write(std::string_view piece) = 0;
  /// Called at the end of the transfer, before the completion. Returns false if the request must be
  /// repeated, because the answer refers to a version that is missing after all.
  virtual bool settle(UrlResult& /*result*/, const AnswerVersion& /*version*/) { return true; }
  /// Calls the completion, with the written body unless there is an error.
  virtual void complete(const UrlResult& result) = 0;
};

/// Keeps the body in memory.
class DataSink : public ResponseSink {
 public:
  using Completion = std::function<void(const DataResult&)>;
  explicit DataSink(Completion completion) : completion_(std::move(completion)) {}

  void begin(SessionFiles& /*files*/) override {}
  std::optional<std::string> write(std::string_view piece) override;
  void complete(const UrlResult& result) override;

 private:
  Completion completion_;
  std::string body_;
};

/// Writes the body to a temporary file, which is made with its first byte and removed with the sink
/// or after the completion. If the server's version has not changed, it sends no body; the body
/// then comes from the cache.
class DownloadSink : public ResponseSink {
 public:
  using Completion = std::function<void(const DownloadResult&)>;
  DownloadSink(std::string url, Completion completion)
      : url_(std::move(url)), completion_(std::move(completion)) {}
  ~DownloadSink() override { removeFile(); }
  DownloadSink(const DownloadSink&) = delete;
  DownloadSink& operator=(const DownloadSink&) = delete;

  void begin(SessionFiles& files) override;
  std::size_t descriptors() const override { return file_ ? 1 : 0; }
  Validators known() const override { return known_; }
  std::optional<std::string> write(std::string_view piece) override;
  bool settle(UrlResult& result, const AnswerVersion& version) override;
  void complete(const UrlResult& result) override;

 private:
  std::optional<std::string> openFile();
  bool takeKept(UrlResult& result, bool redirected);
  void keep(const Validators& validators);
  void removeFile();

  const std::string url_;
  Completion completion_;
  SessionFiles* files_ = nullptr;  // set while the session works on it
  Validators known_;
  bool asksAgain_ = false;
  std::string path_;
  UniqueFd file_;
};

}  // namespace zovk
