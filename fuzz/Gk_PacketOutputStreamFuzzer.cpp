// Writes the input through Gk_PacketOutputStream. The first byte tells the size of a packet, the first line the lengths
// of the writes, the rest is written. Asserts that the stream beneath gets the bytes in their order, no later than
// promised, and all of them behind a flush.
#include "Gk_PacketOutputStream.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzInput.h"
#include "Require.h"

namespace {

// Keeps what is written, and which writes there were.
class Target : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    Require(count >= 0, "a write has a length");
    written.append(buffer, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override { ++flushes; }
  void close() override { Require(false, "nobody closes the stream"); }

  std::string written;
  int flushes = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  int const packet = input.Number(36) - 1;
  std::string const line = input.Line();
  FuzzInput lengths(reinterpret_cast<std::uint8_t const*>(line.data()), line.size());
  std::string const text = input.Rest();

  Target target;
  Gk_PacketOutputStream stream(&target, packet);
  std::size_t at = 0;
  int flushes = 0;
  while (!lengths.IsAtEnd()) {
    int const asked = lengths.Number(40);
    int const count = static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(asked), text.size() - at));
    if (asked == 39) {
      stream.flush();
      ++flushes;
      Require(target.written.size() == at, "a flush writes all");
    } else if (asked == 1 && count == 1) {
      Require(stream.write(text[at]) == text[at], "a byte is given back");
    } else {
      Require(stream.write(text.data() + at, count) == count, "all bytes are taken");
    }
    if (asked != 39) at += static_cast<std::size_t>(count);
    Require(text.compare(0, target.written.size(), target.written) == 0, "bytes keep their order");
    Require(target.written.size() + static_cast<std::size_t>(std::max(packet, 0)) >= at, "no more than a packet waits");
    Require(target.flushes == flushes, "the stream beneath is flushed when asked");
  }
  stream.flush();
  Require(target.written == text.substr(0, at), "a flush writes all");
  return 0;
}
