// Writes generated input through Gk_PacketOutputStream. The first byte is the size of a packet, the first line the
// lengths of the writes, and the rest is written. Checks that the underlying stream receives the bytes in order, at
// most one packet late, and all of them after a flush.
#include "Gk_PacketOutputStream.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzInput.h"
#include "Require.h"

namespace {

// Records the writes.
class Target : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    Require(count >= 0, "a write has no negative length");
    written.append(buffer, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override { ++flushes; }
  void close() override { Require(false, "the stream is not closed"); }

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
      Require(target.written.size() == at, "flush writes all pending bytes");
    } else if (asked == 1 && count == 1) {
      Require(stream.write(text[at]) == text[at], "write returns the byte");
    } else {
      Require(stream.write(text.data() + at, count) == count, "write returns the count");
    }
    if (asked != 39) at += static_cast<std::size_t>(count);
    Require(text.compare(0, target.written.size(), target.written) == 0, "bytes are written in order");
    Require(target.written.size() + static_cast<std::size_t>(std::max(packet, 0)) >= at,
            "at most one packet is pending");
    Require(target.flushes == flushes, "the underlying stream is flushed by flush");
  }
  stream.flush();
  Require(target.written == text.substr(0, at), "flush writes all pending bytes");
  return 0;
}
