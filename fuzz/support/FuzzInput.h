// Splits the bytes from libFuzzer into readable pieces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Returns the input piece by piece. Pieces are text, so that a seed can be written by hand. At the end of the input
// every piece is empty and every byte 0.
class FuzzInput {
 public:
  FuzzInput(std::uint8_t const* bytes, std::size_t size) : left(reinterpret_cast<char const*>(bytes), size) {}

  bool IsAtEnd() const { return left.empty(); }

  unsigned char Byte() {
    if (left.empty()) return 0;
    unsigned char const byte = static_cast<unsigned char>(left.front());
    left.remove_prefix(1);
    return byte;
  }

  // Returns a number below `limit` from the next byte. Digits and lower-case letters are the numbers from 0 to 35.
  int Number(int limit) {
    int const byte = Byte();
    int const value = byte >= '0' && byte <= '9' ? byte - '0' : byte >= 'a' && byte <= 'z' ? byte - 'a' + 10 : byte;
    return value % limit;
  }

  // Returns the bytes up to the next line feed, and skips it.
  std::string Line() { return Piece('\n'); }

  // Returns the bytes up to the next separator, and skips it.
  std::string Piece(char separator) {
    std::size_t const end = left.find(separator);
    std::string const piece(left.substr(0, end));
    left.remove_prefix(end == std::string_view::npos ? left.size() : end + 1);
    return piece;
  }

  std::string Rest() {
    std::string const rest(left);
    left = {};
    return rest;
  }

 private:
  std::string_view left;
};
