#include "Decompression.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

std::string Gzip(std::string const& plain) {
  z_stream stream = {};
  EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string bytes(deflateBound(&stream, plain.size()) + 64, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(plain.data()));
  stream.avail_in = static_cast<uInt>(plain.size());
  stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
  stream.avail_out = static_cast<uInt>(bytes.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  bytes.resize(stream.total_out);
  deflateEnd(&stream);
  return bytes;
}

// Returns the damage and the decompressed bytes, for a source that delivers `step` bytes at a time.
std::pair<std::string, std::string> Decompress(std::string const& bytes, std::size_t step) {
  std::string plain;
  std::size_t at = 0;
  std::string const damage = DecompressGzip(
      [&](char* block, std::size_t size) {
        std::size_t const count = std::min({size, step, bytes.size() - at});
        bytes.copy(block, count, at);
        at += count;
        return count;
      },
      [&plain](std::string_view piece) { plain += piece; });
  return {damage, plain};
}

std::string Sample() {
  std::string text;
  for (int i = 0; i < 40000; ++i) text += std::to_string(i * i % 7919) + "\n";
  return text;
}

}  // namespace

TEST(DecompressionTest, DetectsSignatures) {
  EXPECT_EQ(DetectCompression("\x1F\x8B\x08\x01"), Compression::Gzip);
  EXPECT_EQ(DetectCompression("PK\x03\x04"), Compression::Zip);
  EXPECT_EQ(DetectCompression("PK\x05\x06"), Compression::Zip);
  for (char const* bytes : {"", "P", "\x1F\x8B", "\x1F\x8B\x09", "ISO-", "PKxx"}) {
    EXPECT_EQ(DetectCompression(bytes), Compression::None) << bytes;
  }
}

TEST(DecompressionTest, InflatesPiecesOfAnySize) {
  std::string const plain = Sample();
  std::string const bytes = Gzip(plain);
  for (std::size_t const step : {std::size_t{1}, std::size_t{7}, std::size_t{65536}, bytes.size()}) {
    auto const [damage, result] = Decompress(bytes, step);
    EXPECT_EQ(damage, "");
    EXPECT_TRUE(result == plain) << step;
  }
  EXPECT_EQ(Decompress(Gzip(""), 100), std::make_pair(std::string(), std::string()));
}

TEST(DecompressionTest, InflatesSeveralMembers) {
  std::string const bytes = Gzip("first ") + Gzip("") + Gzip("second") + std::string(3, '\0');
  for (std::size_t const step : {std::size_t{1}, bytes.size()}) {
    EXPECT_EQ(Decompress(bytes, step), std::make_pair(std::string(), std::string("first second")));
  }
}

TEST(DecompressionTest, ReportsDamageAfterIntactBytes) {
  std::string const plain = Sample();
  std::string const bytes = Gzip(plain);
  for (std::size_t const length : {std::size_t{3}, std::size_t{20}, bytes.size() / 2, bytes.size() - 1}) {
    auto const [damage, result] = Decompress(bytes.substr(0, length), 1000);
    EXPECT_EQ(damage, "the compressed data is truncated") << length;
    EXPECT_EQ(plain.compare(0, result.size(), result), 0);
  }
  EXPECT_GT(Decompress(bytes.substr(0, bytes.size() / 2), 1000).second.size(), plain.size() / 4);
  std::string broken = bytes;
  broken[broken.size() - 6] = static_cast<char>(broken[broken.size() - 6] ^ 1);
  EXPECT_EQ(Decompress(broken, 1000),
            std::make_pair(std::string("the compressed data is damaged: incorrect data check"), plain));
  std::string const end = "unexpected data after the end of the compressed data";
  EXPECT_EQ(Decompress(Gzip("x") + "garbage", 1000), std::make_pair(end, std::string("x")));
  EXPECT_EQ(Decompress(Gzip("x") + std::string(1, '\0') + Gzip("y"), 1000), std::make_pair(end, std::string("x")));
}
