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

/// What an answer says about the version of the file that it carries.
struct AnswerVersion {
  Validators validators;
  bool mayBeKept = false;
  bool redirected = false;
};

/// Where the body of an answer goes, and who hears of its end. Session thread only, once the
/// transfer has started.
class ResponseSink {
 public:
  virtual ~ResponseSink() = default;
  /// Gets ready for the body, which opens nothing yet.
  virtual void begin(SessionFiles& files) = 0;
  /// How many descriptors it holds.
  virtual std::size_t descriptors() const { return 0; }
  /// The version that is at hand already, so that the server need not send it again.
  virtual Validators known() const { return {}; }
  /// An error ends the transfer.
  virtual std::optional<std::string> write(std::string_view piece) = 0;
  /// Sees the end of the transfer before the completion does. False asks for the request to be
  /// made once more, because the answer builds on a version that is not at hand after all.
  virtual bool settle(UrlResult& /*result*/, const AnswerVersion& /*version*/) { return true; }
  /// Calls the completion, with what was written unless there is an error.
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

/// Writes the body to a temporary file, which is made with its first byte and goes away with the
/// sink or after the completion. A server that still has the version of last time sends no body; it
/// comes from the cache then.
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
