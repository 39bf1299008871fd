#include "Imploder.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

// Codeword as the characters 0 and 1, in the order of writing.
using Codewords = std::vector<std::string>;

// Groups of consecutive symbols with equal codeword length.
using Groups = std::vector<std::pair<int, int>>;

// Splits the bytes of the format: the low nibble is a length, the high nibble the number of symbols less one.
Groups Split(std::vector<int> const& packed) {
  Groups groups;
  for (int const byte : packed) groups.emplace_back(byte / 16 + 1, byte % 16);
  return groups;
}

// Assigns a canonical code: shorter codewords first, equal lengths in symbol order, each the successor of the previous
// one, padded with zeros. The bits are written inverted.
Codewords Assign(Groups const& groups) {
  std::map<int, std::vector<std::size_t>> byLength;
  std::size_t symbols = 0;
  for (auto const& [count, length] : groups) {
    for (int i = 0; i < count; ++i) byLength[length].push_back(symbols++);
  }
  Codewords words(symbols);
  std::string word;
  for (auto const& [length, symbolsOfLength] : byLength) {
    for (std::size_t const symbol : symbolsOfLength) {
      // The bits are inverted already: the successor changes trailing '0' to '1'.
      if (word.empty()) {
        word.assign(static_cast<std::size_t>(length), '1');
      } else {
        std::size_t const last = word.find_last_of('1');
        if (last == std::string::npos) throw std::logic_error("too many codewords");
        word[last] = '0';
        std::fill(word.begin() + static_cast<std::ptrdiff_t>(last) + 1, word.end(), '1');
        word.resize(static_cast<std::size_t>(length), '1');
      }
      words[symbol] = word;
    }
  }
  return words;
}

Codewords const& LiteralWords() {
  static Codewords const words = Assign(
      Split({11, 124, 8,  7,  28, 7,  188, 13,  76,  4,   10,  8,   12, 10, 12, 10, 8,  23, 8,  9,  7,  6,  7,  8,  7,
             6,  55,  8,  23, 24, 12, 11,  7,   9,   11,  12,  6,   7,  22, 5,  7,  24, 6,  11, 9,  6,  7,  22, 7,  11,
             38, 7,   9,  8,  25, 11, 8,   11,  9,   12,  8,   12,  5,  38, 5,  38, 5,  11, 7,  5,  6,  21, 6,  10, 53,
             8,  7,   24, 10, 27, 44, 253, 253, 253, 252, 252, 252, 13, 12, 45, 12, 45, 12, 61, 12, 45, 44, 173}));
  return words;
}

Codewords const& LengthWords() {
  static Codewords const words = Assign(Split({2, 35, 36, 53, 38, 23}));
  return words;
}

Codewords const& DistanceWords() {
  static Codewords const words = Assign(Split({2, 20, 53, 230, 247, 151, 248}));
  return words;
}

// Symbols of match lengths: the shortest length of each and the number of extra bits.
struct LengthSymbol {
  int base;
  int extra;
};
constexpr LengthSymbol lengthSymbols[] = {{3, 0},  {2, 0},  {4, 0},  {5, 0},  {6, 0},  {7, 0},  {8, 0},   {9, 0},
                                          {10, 1}, {12, 2}, {16, 3}, {24, 4}, {40, 5}, {72, 6}, {136, 7}, {264, 8}};

constexpr int endLength = 519;
constexpr int longestCopy = 518;

}  // namespace

ImplodedData::ImplodedData(bool isCoded, int dictionary) : isCodedLiterals(isCoded), lowBits(dictionary) {
  Bits(isCoded ? 1 : 0, 8);
  Bits(static_cast<unsigned>(dictionary), 8);
}

// Least significant bit first.
void ImplodedData::Bits(unsigned value, int count) {
  for (int i = 0; i < count; ++i, ++bitCount) {
    if (bitCount % 8 == 0) bytes.push_back('\0');
    bytes.back() = static_cast<char>(static_cast<unsigned char>(bytes.back()) | (value >> i & 1) << bitCount % 8);
  }
}

namespace {

// Returns a codeword as a number whose least significant bit is written first.
unsigned Value(std::string const& word) {
  unsigned value = 0;
  for (std::size_t i = 0; i < word.size(); ++i) value |= static_cast<unsigned>(word[i] - '0') << i;
  return value;
}

int Size(std::string const& word) {
  return static_cast<int>(word.size());
}

}  // namespace

ImplodedData& ImplodedData::Literal(unsigned char byte) {
  Bits(0, 1);
  if (isCodedLiterals) {
    std::string const& word = LiteralWords()[byte];
    Bits(Value(word), Size(word));
  } else {
    Bits(byte, 8);
  }
  return *this;
}

ImplodedData& ImplodedData::Literals(std::string_view plain) {
  for (char const byte : plain) Literal(static_cast<unsigned char>(byte));
  return *this;
}

void ImplodedData::Length(int length) {
  for (std::size_t symbol = 0; symbol < std::size(lengthSymbols); ++symbol) {
    auto const [base, extra] = lengthSymbols[symbol];
    if (length < base || length >= base + (1 << extra)) continue;
    std::string const& word = LengthWords()[symbol];
    Bits(1, 1);
    Bits(Value(word), Size(word));
    Bits(static_cast<unsigned>(length - base), extra);
    return;
  }
  throw std::invalid_argument("no such length");
}

ImplodedData& ImplodedData::Copy(int length, int distance) {
  int const low = length == 2 ? 2 : lowBits;
  if (length == endLength || distance < 1 || distance > 64 << low) throw std::invalid_argument("no such copy");
  Length(length);
  auto const value = static_cast<unsigned>(distance - 1);
  std::string const& word = DistanceWords()[value >> low];
  Bits(Value(word), Size(word));
  Bits(value & ((1U << low) - 1), low);
  return *this;
}

ImplodedData& ImplodedData::End() {
  Length(endLength);
  return *this;
}

namespace {

struct Match {
  int length = 0;
  int distance = 0;
};

// Finds earlier positions with the same three bytes by hash chains.
class Matcher {
 public:
  Matcher(std::string_view text, int reach) : plain(text), maxDistance(reach), newest(1U << hashBits, -1) {
    older.resize(text.size(), -1);
  }

  // Returns the longest match at `place`, the nearest of equal ones.
  // Requires: all earlier positions were added.
  Match Find(int place) const {
    Match best;
    int const limit = std::min<int>(longestCopy, static_cast<int>(plain.size()) - place);
    if (limit < 2) return best;
    for (int distance = 1; distance <= std::min(place, 16); ++distance) {
      if (At(place - distance) == At(place) && At(place - distance + 1) == At(place + 1)) {
        best = {2, distance};
        break;
      }
    }
    if (limit < 3) return best;
    int tries = 64;
    for (int other = newest[Hash(place)]; other >= 0 && place - other <= maxDistance && tries > 0; --tries) {
      int length = 0;
      while (length < limit && At(other + length) == At(place + length)) ++length;
      if (length > 2 && length > best.length) best = {length, place - other};
      if (length == limit) break;
      other = older[static_cast<std::size_t>(other)];
    }
    return best;
  }

  void Add(int place) {
    if (place + 2 >= static_cast<int>(plain.size())) return;
    int& head = newest[Hash(place)];
    older[static_cast<std::size_t>(place)] = head;
    head = place;
  }

 private:
  static constexpr int hashBits = 16;

  unsigned char At(int place) const { return static_cast<unsigned char>(plain[static_cast<std::size_t>(place)]); }
  std::size_t Hash(int place) const {
    unsigned const three =
        At(place) | static_cast<unsigned>(At(place + 1)) << 8 | static_cast<unsigned>(At(place + 2)) << 16;
    return (three * 2654435761U) >> (32 - hashBits);
  }

  std::string_view plain;
  int maxDistance;
  std::vector<int> newest;  // by hash
  std::vector<int> older;   // by position
};

}  // namespace

std::string Implode(std::string_view plain, bool isCoded, int dictionary) {
  ImplodedData data(isCoded, dictionary);
  Matcher matcher(plain, 64 << dictionary);
  int const size = static_cast<int>(plain.size());
  Match match = matcher.Find(0);
  for (int place = 0; place < size;) {
    matcher.Add(place);
    Match const next = place + 1 < size ? matcher.Find(place + 1) : Match();
    if (match.length < 2 || next.length > match.length) {
      data.Literal(static_cast<unsigned char>(plain[static_cast<std::size_t>(place)]));
      ++place;
      match = next;
      continue;
    }
    data.Copy(match.length, match.distance);
    for (int i = 1; i < match.length; ++i) matcher.Add(place + i);
    place += match.length;
    match = place < size ? matcher.Find(place) : Match();
  }
  return data.End().Bytes();
}
