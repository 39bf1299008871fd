#include "MeshOutput.h"

#include <charconv>
#include <cstring>

MeshOutput::MeshOutput(CheckedOutputStream& target) : stream(target) {
  buffer.reserve(kBlockSize + 64);
}

void MeshOutput::Put(std::string_view bytes) {
  while (!bytes.empty()) {
    std::string_view const part = bytes.substr(0, kBlockSize);
    buffer.append(part);
    bytes.remove_prefix(part.size());
    if (buffer.size() >= kBlockSize) Flush();
  }
}

void MeshOutput::PutNumber(std::uint32_t number, int bytes) {
  char octets[4];
  for (int i = 0; i < bytes; ++i) octets[i] = static_cast<char>(number >> (8U * static_cast<unsigned>(i)) & 0xFFU);
  Put(std::string_view(octets, static_cast<std::size_t>(bytes)));
}

void MeshOutput::PutFloat(float number) {
  static_assert(sizeof(float) == 4, "IEEE 754 single precision");
  std::uint32_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  PutUint32(bits);
}

void MeshOutput::PutDecimal(double number) {
  char digits[32];
  // Adding 0 drops the sign of a negative zero.
  auto const end = std::to_chars(digits, digits + sizeof digits, number + 0.0, std::chars_format::general, 9).ptr;
  Put(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void MeshOutput::Flush() {
  if (!buffer.empty()) stream.write(buffer.data(), static_cast<int>(buffer.size()));
  buffer.clear();
  stream.Check();
}
