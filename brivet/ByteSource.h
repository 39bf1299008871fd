// Bytes one after the other, with a look at the next one.
#pragma once

#include <array>
#include <cstddef>
#include <functional>

// Reads in blocks, so a pipe serves as well as a file and the memory does not depend on the number of bytes.
class ByteSource {
 public:
  static constexpr int END = -1;

  // Puts up to `size` bytes into the block and gives their number, 0 at the end. What it throws passes through.
  using Fill = std::function<std::size_t(char* block, std::size_t size)>;

  explicit ByteSource(Fill fill);

  // The next byte, 0 to 255, or END.
  int Peek() { return position < count || Refill() ? static_cast<unsigned char>(block[position]) : END; }
  // The same, and goes past it.
  int Take() {
    int const byte = Peek();
    if (byte != END) ++position;
    return byte;
  }

 private:
  bool Refill();

  Fill const fill;
  std::array<char, 65536> block;
  std::size_t position = 0;
  std::size_t count = 0;
  bool ended = false;
};
