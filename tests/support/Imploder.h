// Compressor for imploded data, for tests and benchmarks of blast.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Writes imploded data item by item. Checks nothing, so that it can write malformed data: a distance beyond the start,
// no end code.
class ImplodedData {
 public:
  // Writes plain or coded literals, for a dictionary of 1024, 2048 or 4096 bytes (4, 5 or 6).
  ImplodedData(bool isCoded, int dictionary);

  ImplodedData& Literal(unsigned char byte);
  ImplodedData& Literals(std::string_view bytes);
  // Writes a back-reference.
  // Requires: a length of 2 to 518; a distance of 1 to the dictionary size, or 256 for length 2.
  ImplodedData& Copy(int length, int distance);
  ImplodedData& End();

  // Returns the data so far; the last byte is padded with zero bits.
  std::string const& Bytes() const { return bytes; }
  // Returns the number of bits written.
  std::size_t BitCount() const { return bitCount; }

 private:
  void Bits(unsigned value, int count);
  void Length(int length);

  std::string bytes;
  std::size_t bitCount = 0;
  bool isCodedLiterals;
  int lowBits;
};

// Compresses a string: the longest match at each position, unless the next position has a longer one.
std::string Implode(std::string_view plain, bool isCoded, int dictionary);
