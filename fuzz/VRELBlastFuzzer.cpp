// Feeds the decompressor generated input. The first byte is the length of its input blocks, the second the number of
// output blocks that are accepted. Compares result and output with a reference decoder, with other block lengths, and
// with the documented limits; also checks that the input, imploded, is decompressed again.
#include "VRELBlast.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "Exploder.h"
#include "FuzzInput.h"
#include "Imploder.h"
#include "Require.h"

namespace {

constexpr std::size_t window = 4096;

// Input and output of a decompression.
struct Ends {
  static unsigned Read(void* how, unsigned char** buffer) { return static_cast<Ends*>(how)->Read(buffer); }
  static int Write(void* how, unsigned char* buffer, unsigned length) {
    return static_cast<Ends*>(how)->Write(buffer, length);
  }

  unsigned Read(unsigned char** buffer) {
    Require(!failed, "nothing is read after a failed write");
    std::size_t const length = std::min(blockLength, data.size() - read);
    // In separate memory, so that a sanitizer detects reads after its end and after the next request.
    block = std::make_unique<unsigned char[]>(std::max<std::size_t>(length, 1));
    std::memcpy(block.get(), data.data() + read, length);
    *buffer = block.get();
    read += length;
    return static_cast<unsigned>(length);
  }

  int Write(unsigned char const* buffer, unsigned length) {
    Require(!failed, "a failed write is the last");
    Require(!isPartial && length != 0 && length <= window, "only the last block is not full");
    isPartial = length < window;
    output.append(reinterpret_cast<char const*>(buffer), length);
    failed = writesTaken-- == 0;
    return failed ? 1 : 0;
  }

  std::string const& data;
  std::size_t blockLength;
  int writesTaken;
  std::size_t read = 0;
  std::string output{};
  std::unique_ptr<unsigned char[]> block{};
  bool isPartial = false;
  bool failed = false;
};

constexpr int allWrites = -1;

// Returns the result of a decompression, with its output.
int Blast(std::string const& data, std::size_t blockLength, int writesTaken, std::string& output) {
  Ends ends{data, blockLength, writesTaken};
  int const result = blast(Ends::Read, &ends, Ends::Write, &ends);
  Require(result >= -3 && result <= 2, "the result is a documented code");
  Require(!ends.failed || result != 0, "a failed write is not a success");
  output = ends.output;
  return result;
}

void DecompressForeign(std::string const& data, std::size_t blockLength, int writesTaken) {
  std::string whole;
  int const result = Blast(data, data.size() + 1, allWrites, whole);
  // The highest ratio is a copy of 518 bytes, which takes 22 bits.
  std::size_t const bits = data.size() < 2 ? 0 : 8 * (data.size() - 2);
  Require(whole.size() * 22 <= bits * 518, "the output is bounded by the input");
  std::string exploded;
  Require(Explode(data, exploded) == result, "the result agrees with the reference decoder");
  Require(exploded == whole, "the output agrees with the reference decoder");

  std::string pieces;
  Require(Blast(data, blockLength, allWrites, pieces) == result, "blocks do not change the result");
  Require(pieces == whole, "blocks do not change the output");

  std::string some;
  int const shortened = Blast(data, blockLength, writesTaken, some);
  std::size_t const most = window * static_cast<std::size_t>(writesTaken + 1);
  Require(some == whole.substr(0, most), "blocks are written until one fails");
  Require(shortened == result || shortened == 1, "a failed write or an earlier error is reported");
}

void RoundTrip(std::string const& text, bool isCoded, int dictionary) {
  std::string back;
  Require(Blast(Implode(text, isCoded, dictionary), 61, allWrites, back) == 0, "imploded data is decompressed");
  Require(back == text, "imploded data round-trips");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  std::size_t const blockLength = static_cast<std::size_t>(1 + input.Number(64));
  int const writesTaken = input.Number(4);
  std::string const data = input.Rest().substr(0, 600);  // up to 112 KB imploded
  DecompressForeign(data, blockLength, writesTaken);
  // The encoder is slow, and is used for few inputs.
  if (blockLength % 8 == 0) RoundTrip(data, blockLength % 16 == 0, 4 + writesTaken % 3);
  return 0;
}
