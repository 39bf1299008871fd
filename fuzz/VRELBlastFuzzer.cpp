// Feeds the decompressor of imploded data. The first byte tells the length of its blocks of input, the second how many
// blocks of output are taken. Asserts that result and output are those of a second decompressor, that blocks change
// nothing, that the output is no longer than the input can make it and goes out as promised; and that the same bytes,
// imploded, come back.
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

// Both ends of a decompression.
struct Ends {
  static unsigned Read(void* how, unsigned char** buffer) { return static_cast<Ends*>(how)->Read(buffer); }
  static int Write(void* how, unsigned char* buffer, unsigned length) {
    return static_cast<Ends*>(how)->Write(buffer, length);
  }

  unsigned Read(unsigned char** buffer) {
    Require(!failed, "nothing is read behind a failed write");
    std::size_t const length = std::min(blockLength, data.size() - read);
    // In memory of its own, so that nothing can be read behind it, nor after the next question.
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

// The result of a decompression, with its output.
int Blast(std::string const& data, std::size_t blockLength, int writesTaken, std::string& output) {
  Ends ends{data, blockLength, writesTaken};
  int const result = blast(Ends::Read, &ends, Ends::Write, &ends);
  Require(result >= -3 && result <= 2, "the result is one of those told");
  Require(!ends.failed || result != 0, "a failed write is no success");
  output = ends.output;
  return result;
}

void DecompressForeign(std::string const& data, std::size_t blockLength, int writesTaken) {
  std::string whole;
  int const result = Blast(data, data.size() + 1, allWrites, whole);
  // No item makes more of its bits than a copy of 518 bytes, which takes 22 of them.
  std::size_t const bits = data.size() < 2 ? 0 : 8 * (data.size() - 2);
  Require(whole.size() * 22 <= bits * 518, "the output is no longer than the input can make it");
  std::string exploded;
  Require(Explode(data, exploded) == result, "the result is that of the format");
  Require(exploded == whole, "the output is that of the format");

  std::string pieces;
  Require(Blast(data, blockLength, allWrites, pieces) == result, "blocks do not change the result");
  Require(pieces == whole, "blocks do not change the output");

  std::string some;
  int const shortened = Blast(data, blockLength, writesTaken, some);
  std::size_t const most = window * static_cast<std::size_t>(writesTaken + 1);
  Require(some == whole.substr(0, most), "blocks go out until one fails");
  Require(shortened == result || shortened == 1, "a failed write is told, or the error in front of it");
}

void ImplodeAndBack(std::string const& text, bool isCoded, int dictionary) {
  std::string back;
  Require(Blast(Implode(text, isCoded, dictionary), 61, allWrites, back) == 0, "imploded data is decompressed");
  Require(back == text, "imploded data comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  std::size_t const blockLength = static_cast<std::size_t>(1 + input.Number(64));
  int const writesTaken = input.Number(4);
  std::string const data = input.Rest().substr(0, 600);  // which may become 112 KB
  DecompressForeign(data, blockLength, writesTaken);
  // The encoder is slow, so that it sees few inputs.
  if (blockLength % 8 == 0) ImplodeAndBack(data, blockLength % 16 == 0, 4 + writesTaken % 3);
  return 0;
}
