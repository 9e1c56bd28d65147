#pragma once

#include <string>

namespace zovk {

/// A plain connection to a port on this machine, for bytes that no HTTP client would send or show.
class RawConnection {
 public:
  explicit RawConnection(int port);
  ~RawConnection();
  RawConnection(const RawConnection&) = delete;
  RawConnection& operator=(const RawConnection&) = delete;

  void send(const std::string& bytes) const;
  void finishSending() const;
  /// Waits for bytes, and returns them; empty if the peer has closed.
  std::string readSome() const;
  /// Returns everything that comes until the peer closes.
  std::string readAll() const;

 private:
  int socket_;
};

/// Sends a text and returns everything that comes back until the peer closes.
std::string exchange(int port, const std::string& request);
/// Sends a text and returns the status of the answer; 0 if there is none.
int statusOf(int port, const std::string& request);

}  // namespace zovk
