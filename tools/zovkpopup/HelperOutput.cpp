#include "zovkpopup/HelperOutput.h"

#include <array>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

constexpr std::size_t kLongestLine = 16384;
// What one call takes, so that a page that writes without end holds nothing else up.
constexpr int kReadsAtOnce = 16;

}  // namespace

HelperOutput::HelperOutput() {
  std::fflush(stderr);
  own_.reset(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  std::array<int, 2> ends{};
  if (!own_ || ::pipe2(ends.data(), O_CLOEXEC) != 0)
    throw ToolError("there are no files left", kUnavailable);
  pipe_.reset(ends[0]);
  const UniqueFd in(ends[1]);
  ::fcntl(pipe_.get(), F_SETFL, O_NONBLOCK);
  ::dup2(in.get(), STDERR_FILENO);
}

HelperOutput::~HelperOutput() {
  ::dup2(own_.get(), STDERR_FILENO);
}

void HelperOutput::read(const std::function<void(std::string_view line)>& take) {
  std::array<char, 4096> bytes{};
  for (int i = 0; i < kReadsAtOnce; ++i) {
    const ssize_t count = ::read(pipe_.get(), bytes.data(), bytes.size());
    if (count <= 0) return;
    for (const char c : std::string_view(bytes.data(), static_cast<std::size_t>(count))) {
      if (c == '\n') {
        take(begun_);
        begun_.clear();
      } else if (begun_.size() < kLongestLine) {
        begun_ += c;
      }
    }
  }
}

void HelperOutput::say(const std::string& line) const {
  const std::string text = line + "\n";
  std::size_t written = 0;
  while (written < text.size()) {
    const ssize_t count = ::write(own_.get(), text.data() + written, text.size() - written);
    if (count <= 0) return;
    written += static_cast<std::size_t>(count);
  }
}

}  // namespace zovk::tool
