// Feeds Gk_PacketInputStream generated input (after the first line) through a stream with short reads, and counts lines
// with Gk_IndexedInputStream. The first bytes are the sizes, the rest of the first line the operations, a byte and a
// number each. Compares the results with a model on a string and a position.
#include "Gk_PacketInputStream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "Gk_IndexedInputStream.h"
#include "MemoryStream.h"
#include "Require.h"

namespace {

class Reader {
 public:
  Reader(std::string const& bytes, int most, int size)
      : text(bytes), underlying(bytes, most), packets(&underlying, size), stream(&packets) {}

  void Do(int operation, int number) {
    switch (operation) {
      case 0:
        ReadChar();
        break;
      case 1:
        Read(number);
        break;
      case 2:
        at += std::max(0L, RequireCount(stream.skip(number), number));
        break;
      case 3:
        Add(std::min<long>(number, at));
        break;
      case 4:
        at = std::min<long>(number * 5, Size());
        stream.setOffset(at);
        break;
      default:
        packets.fetchPacket();
        at = underlying.getCurrentOffset() - Held();
        break;
    }
    Require(stream.available() == Size() - at, "available() is the number of bytes left");
    Require(stream.getCurrentOffset() == at, "getCurrentOffset() is the position of the next byte");
    Require(stream.getLineNumber() == lines, "line feeds are counted");
  }

 private:
  long Size() const { return static_cast<long>(text.size()); }

  long Held() const { return packets.available() - underlying.available(); }

  void ReadChar() {
    int const c = stream.readChar();
    if (at == Size()) return Require(c == -1, "the end of input is reported");
    Require(c == static_cast<unsigned char>(text[static_cast<std::size_t>(at)]), "readChar returns the next byte");
    Count(1, 1);
    ++at;
  }

  void Read(int count) {
    std::vector<char> target(static_cast<std::size_t>(count));
    long const taken = RequireCount(stream.read(target.data(), count), count);
    if (taken < 1) return;
    Require(text.compare(static_cast<std::size_t>(at), static_cast<std::size_t>(taken), target.data(),
                         static_cast<std::size_t>(taken)) == 0,
            "bytes are those of the text");
    Count(taken, 1);
    at += taken;
  }

  void Add(long count) {
    at -= count;
    Count(count, -1);
    Require(stream.add(Gk_String(text.data() + at, static_cast<int>(count))), "add returns true");
  }

  // Counts the line feeds among the next bytes.
  void Count(long count, int sign) {
    auto const begin = text.begin() + at;
    lines += sign * static_cast<int>(std::count(begin, begin + count, '\n'));
  }

  long RequireCount(long taken, long count) const {
    Require(taken == (at == Size() ? -1 : std::min(count, Size() - at)), "a read is short only at the end of input");
    return taken;
  }

  std::string const& text;
  MemoryStream underlying;
  Gk_PacketInputStream packets;
  Gk_IndexedInputStream stream;
  long at = 0;
  int lines = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  int const most = 1 + input.Number(36);
  int const packet = 1 + input.Number(36);
  std::string const line = input.Line();
  FuzzInput operations(reinterpret_cast<std::uint8_t const*>(line.data()), line.size());
  std::string const text = input.Rest();
  Reader reader(text, most, packet);
  while (!operations.IsAtEnd()) {
    int const operation = operations.Number(6);
    reader.Do(operation, operations.Number(100));
  }
  return 0;
}
