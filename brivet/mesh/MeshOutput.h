// Buffered output of a mesh writer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "CheckedOutputStream.h"

// Collects bytes and passes them on in blocks. Numbers are written with the least significant byte first.
//
// Errors: CheckedOutputStream::Failure if the stream does not accept them.
class MeshOutput {
 public:
  // Ownership: `target` is not owned.
  explicit MeshOutput(CheckedOutputStream& target);

  void Put(std::string_view bytes);
  void PutUint16(std::uint16_t number) { PutNumber(number, 2); }
  void PutUint32(std::uint32_t number) { PutNumber(number, 4); }
  void PutFloat(float number);
  // Appends the shortest decimal form with at most 9 digits, in every locale.
  void PutDecimal(double number);
  // Call it at the end.
  void Flush();

 private:
  void PutNumber(std::uint32_t number, int bytes);

  static constexpr std::size_t kBlockSize = 65536;
  CheckedOutputStream& stream;
  std::string buffer;
};
