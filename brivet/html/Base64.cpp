#include "Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The two digits of each group of 12 bits, so that three bytes take two look-ups.
struct Pairs {
  std::array<char, 2 * 4096> digits{};
  constexpr Pairs() {
    for (std::size_t i = 0; i < 4096; ++i) {
      digits[2 * i] = kDigits[i >> 6U];
      digits[2 * i + 1] = kDigits[i & 63U];
    }
  }
};
constexpr Pairs kPairs;

}  // namespace

void AppendBase64(std::string& target, std::string_view bytes) {
  std::size_t const begin = target.size();
  target.resize(begin + (bytes.size() + 2) / 3 * 4, '=');
  char* out = target.data() + begin;
  auto const byte = [&bytes](std::size_t i) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
  };
  std::size_t i = 0;
  for (; i + 3 <= bytes.size(); i += 3, out += 4) {
    std::uint32_t const group = byte(i) << 16U | byte(i + 1) << 8U | byte(i + 2);
    std::size_t const high = 2 * (group >> 12U);
    std::size_t const low = 2 * (group & 4095U);
    out[0] = kPairs.digits[high];
    out[1] = kPairs.digits[high + 1];
    out[2] = kPairs.digits[low];
    out[3] = kPairs.digits[low + 1];
  }
  if (i == bytes.size()) return;
  bool const isPair = i + 2 == bytes.size();
  std::uint32_t const group = byte(i) << 16U | (isPair ? byte(i + 1) << 8U : 0U);
  out[0] = kDigits[group >> 18U];
  out[1] = kDigits[group >> 12U & 63U];
  if (isPair) out[2] = kDigits[group >> 6U & 63U];
}
