#include "GzipOutputStream.h"

#include <zlib.h>

#include <array>
#include <new>

namespace {

constexpr int kGzip = 16;  // added to the window size for the format gzip
constexpr int kMemoryLevel = 8;

}  // namespace

struct GzipOutputStream::State {
  z_stream stream = {};
  std::array<unsigned char, 65536> block;
};

GzipOutputStream::GzipOutputStream(VRELOutputStream& compressedTarget)
    : compressed(compressedTarget), state(std::make_unique<State>()) {
  int const result = deflateInit2(&state->stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, MAX_WBITS + kGzip, kMemoryLevel,
                                  Z_DEFAULT_STRATEGY);
  if (result != Z_OK) throw std::bad_alloc();
}

GzipOutputStream::~GzipOutputStream() {
  deflateEnd(&state->stream);
}

int GzipOutputStream::write(char const* bytes, int count) {
  return count >= 0 && Compress(bytes, count, Z_NO_FLUSH) ? count : -1;
}

bool GzipOutputStream::Finish() {
  return Compress("", 0, Z_FINISH);
}

bool GzipOutputStream::Compress(char const* bytes, int count, int flush) {
  z_stream& stream = state->stream;
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes));
  stream.avail_in = static_cast<uInt>(count);
  do {
    stream.next_out = state->block.data();
    stream.avail_out = static_cast<uInt>(state->block.size());
    deflate(&stream, flush);
    int const size = static_cast<int>(state->block.size() - stream.avail_out);
    hasFailed =
        hasFailed || (size != 0 && compressed.write(reinterpret_cast<char*>(state->block.data()), size) != size);
  } while (stream.avail_out == 0 && !hasFailed);
  return !hasFailed;
}
