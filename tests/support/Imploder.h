// Makes imploded data: the other direction of blast, for tests and benchmarks.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Writes imploded data item by item. Each function takes what the format can hold and looks at nothing else, so that
// wrong data can be made too: a copy that reaches too far, no end code.
class ImplodedData {
 public:
  // With plain or coded literals, and a dictionary of 1024, 2048 or 4096 bytes for 4, 5 and 6.
  ImplodedData(bool isCoded, int dictionary);

  ImplodedData& Literal(unsigned char byte);
  ImplodedData& Literals(std::string_view bytes);
  // A length of 2 to 518. A distance of 1 to the size of the dictionary, or to 256 for a length of 2.
  ImplodedData& Copy(int length, int distance);
  ImplodedData& End();

  // What was written so far, with zero bits up to the end of the last byte.
  std::string const& Bytes() const { return bytes; }
  // Bits in it that count.
  std::size_t BitCount() const { return bitCount; }

 private:
  void Bits(unsigned value, int count);
  void Length(int length);

  std::string bytes;
  std::size_t bitCount = 0;
  bool isCodedLiterals;
  int lowBits;
};

// Implodes a text, taking the longest copy at each place unless the next place has a longer one.
std::string Implode(std::string_view plain, bool isCoded, int dictionary);
