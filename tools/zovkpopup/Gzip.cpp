#include "zovkpopup/Gzip.h"

#include <zlib.h>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

// Of zlib: the largest window, and 16 more for gzip's own header.
constexpr int kGzipWindow = 15 + 16;
constexpr int kMemory = 8;

/// A compression that is under way.
class Deflater {
 public:
  Deflater() {
    if (deflateInit2(&stream_, Z_BEST_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemory,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
      throw ToolError("cannot compress: no memory", kFault);
    }
  }
  ~Deflater() { deflateEnd(&stream_); }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  std::string all(std::string bytes) {
    std::string packed(deflateBound(&stream_, bytes.size()), '\0');
    stream_.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream_.avail_in = static_cast<uInt>(bytes.size());
    stream_.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream_.avail_out = static_cast<uInt>(packed.size());
    if (deflate(&stream_, Z_FINISH) != Z_STREAM_END) throw ToolError("cannot compress", kFault);
    packed.resize(stream_.total_out);
    return packed;
  }

 private:
  z_stream stream_{};
};

}  // namespace

std::string gzip(std::string_view bytes) {
  return Deflater().all(std::string(bytes));
}

}  // namespace zovk::tool
