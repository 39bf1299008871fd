// Reference decompressor of imploded data: slow, simple, and written from the format alone.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

// Canonical prefix code: symbols in the order of the lengths of their codes, and of their own numbers. Each byte of the
// list has the length of a code in its low four bits, and the number of consecutive symbols of that length, minus one,
// in its high four bits.
class PrefixCode {
 public:
  explicit PrefixCode(std::vector<int> const& list) {
    std::vector<int> lengths;
    for (int const byte : list) lengths.insert(lengths.end(), static_cast<std::size_t>(byte / 16 + 1), byte % 16);
    int code = 0;
    for (int length = 1; length <= 13; ++length, code *= 2) {
      for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] == length) symbols[{length, code++}] = static_cast<int>(symbol);
      }
    }
  }

  // Decodes one symbol from inverted bits, the highest bit of the code first.
  template <class NextBit>
  int Decode(NextBit const& next) const {
    std::pair<int, int> code{0, 0};
    while (true) {
      code = {code.first + 1, code.second * 2 + 1 - next()};
      auto const found = symbols.find(code);
      if (found != symbols.end()) return found->second;
    }
  }

 private:
  std::map<std::pair<int, int>, int> symbols;
};

// Decompresses `data`, appends the output to `text`, and returns the result that blast must return.
inline int Explode(std::string const& data, std::string& text) {
  static PrefixCode const literals(
      {11, 124, 8,  7,  28, 7,  188, 13,  76,  4,   10,  8,   12, 10, 12, 10, 8,  23, 8,  9,  7,  6,  7,  8,  7,
       6,  55,  8,  23, 24, 12, 11,  7,   9,   11,  12,  6,   7,  22, 5,  7,  24, 6,  11, 9,  6,  7,  22, 7,  11,
       38, 7,   9,  8,  25, 11, 8,   11,  9,   12,  8,   12,  5,  38, 5,  38, 5,  11, 7,  5,  6,  21, 6,  10, 53,
       8,  7,   24, 10, 27, 44, 253, 253, 253, 252, 252, 252, 13, 12, 45, 12, 45, 12, 61, 12, 45, 44, 173});
  static PrefixCode const lengths({2, 35, 36, 53, 38, 23});
  static PrefixCode const distances({2, 20, 53, 230, 247, 151, 248});
  static constexpr int base[] = {3, 2, 4, 5, 6, 7, 8, 9, 10, 12, 16, 24, 40, 72, 136, 264};
  static constexpr int extra[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8};
  struct EndOfInput {};

  std::size_t taken = 16;
  auto const bit = [&] {
    if (taken / 8 >= data.size()) throw EndOfInput();
    int const value = static_cast<unsigned char>(data[taken / 8]) >> taken % 8 & 1;
    ++taken;
    return value;
  };
  auto const number = [&](int width) {
    int value = 0;
    for (int i = 0; i < width; ++i) value |= bit() << i;
    return value;
  };

  if (data.empty()) return 2;
  if (static_cast<unsigned char>(data[0]) > 1) return -1;
  if (data.size() < 2) return 2;
  int const dictionary = static_cast<unsigned char>(data[1]);
  if (dictionary < 4 || dictionary > 6) return -2;
  try {
    while (true) {
      if (bit() == 0) {
        text += static_cast<char>(data[0] == 0 ? number(8) : literals.Decode(bit));
        continue;
      }
      std::size_t const symbol = static_cast<std::size_t>(lengths.Decode(bit));
      int const length = base[symbol] + number(extra[symbol]);
      if (length == 519) return 0;
      int const low = length == 2 ? 2 : dictionary;
      int const high = distances.Decode(bit) << low;
      std::size_t const distance = static_cast<std::size_t>(high + number(low) + 1);
      if (distance > text.size()) return -3;
      for (int i = 0; i < length; ++i) text += text[text.size() - distance];
    }
  } catch (EndOfInput const&) {
    return 2;
  }
}
