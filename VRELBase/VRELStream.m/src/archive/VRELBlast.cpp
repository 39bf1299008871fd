// Decoder for the implode format: a bit stream of literals and copies (LZ77) with fixed canonical Huffman codes.
//
// Tables. All codes are fixed, so the tables are built at compile time. `kItems` is indexed by the next 12 bits and
// describes what they begin with: a copy (its length symbol with the extra bits), one literal, two literals that fit
// into the index together, or a literal whose code is longer than the index, which continues in the table `rest`.
// `kDistances` is indexed by 8 bits, the longest distance code. An entry is a word of packed fields (see namespace
// entry), so that the main loop does one load for each item.
//
// Two loops. DecodeBuffered runs while the input block has bytes for two refills of the 64-bit bit buffer, and does not
// check for the end of input. DecodeOne decodes one item bit by bit at the end of a block, and requests the next block
// only if a bit is missing, so that no input is read after the end code.
//
// Window. The output window of 4096 bytes is kept twice, the last block before the current one, so that a copy never
// wraps around. A copy can write up to 16 bytes too many after the end of the block; they are overwritten or moved to
// the next block by Flush.
#include "VRELBlast.h"

#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

constexpr int kMaxBits = 13;          // longest code
constexpr unsigned kWindow = 4096;    // the largest dictionary, and the unit of output
constexpr unsigned kEndLength = 519;  // the length that ends the data
constexpr unsigned kMaxLength = kEndLength - 1;

// Canonical code: the number of codes of each length, and the symbols in code order.
template <std::size_t Symbols>
struct Code {
  std::array<short, kMaxBits + 1> count{};
  std::array<short, Symbols> symbol{};
  int left = 0;  // unused codes of the longest length
};

// Builds a code from run-length encoded code lengths: the low four bits of a byte are a length, the high four bits plus
// one the number of consecutive symbols with this length.
template <std::size_t Symbols, std::size_t Runs>
constexpr Code<Symbols> Construct(unsigned char const (&runs)[Runs]) {
  std::array<int, Symbols> lengths{};
  std::size_t symbol = 0;
  for (unsigned char const run : runs) {
    for (int i = 0; i <= run >> 4; ++i) lengths[symbol++] = run & 15;
  }
  Code<Symbols> code;
  for (int const length : lengths) ++code.count[static_cast<std::size_t>(length)];
  code.left = 1;
  for (std::size_t length = 1; length <= kMaxBits; ++length) code.left = code.left * 2 - code.count[length];
  std::size_t next = 0;
  for (int length = 1; length <= kMaxBits; ++length) {
    for (std::size_t i = 0; i < Symbols; ++i) {
      if (lengths[i] == length) code.symbol[next++] = static_cast<short>(i);
    }
  }
  return code;
}

constexpr unsigned char kLiteralRuns[] = {
    11, 124, 8,  7,  28, 7,  188, 13,  76,  4,   10,  8,   12, 10, 12, 10, 8,  23, 8,  9,  7,  6,  7,  8,  7,
    6,  55,  8,  23, 24, 12, 11,  7,   9,   11,  12,  6,   7,  22, 5,  7,  24, 6,  11, 9,  6,  7,  22, 7,  11,
    38, 7,   9,  8,  25, 11, 8,   11,  9,   12,  8,   12,  5,  38, 5,  38, 5,  11, 7,  5,  6,  21, 6,  10, 53,
    8,  7,   24, 10, 27, 44, 253, 253, 253, 252, 252, 252, 13, 12, 45, 12, 45, 12, 61, 12, 45, 44, 173};
constexpr unsigned char kLengthRuns[] = {2, 35, 36, 53, 38, 23};
constexpr unsigned char kDistanceRuns[] = {2, 20, 53, 230, 247, 151, 248};

constexpr auto kLiteralCode = Construct<256>(kLiteralRuns);
constexpr auto kLengthCode = Construct<16>(kLengthRuns);
constexpr auto kDistanceCode = Construct<64>(kDistanceRuns);
static_assert(kLiteralCode.left == 0 && kLengthCode.left == 0 && kDistanceCode.left == 0, "the codes are complete");

constexpr std::array<unsigned short, 16> kBaseLength = {3, 2, 4, 5, 6, 7, 8, 9, 10, 12, 16, 24, 40, 72, 136, 264};
constexpr std::array<unsigned char, 16> kExtraBits = {0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8};

// Calls visit(symbol, bits, length) for each code. `bits` are as in the bit stream, first bit lowest: codes are stored
// with their highest bit first and every bit inverted.
template <std::size_t Symbols, class Visit>
constexpr void ForEachCode(Code<Symbols> const& code, Visit const& visit) {
  unsigned value = 0;
  std::size_t next = 0;
  for (int length = 1; length <= kMaxBits; ++length, value <<= 1) {
    for (int i = 0; i < code.count[static_cast<std::size_t>(length)]; ++i, ++value) {
      unsigned bits = 0;
      for (int bit = 0; bit < length; ++bit) bits |= (~value >> bit & 1U) << (length - 1 - bit);
      visit(static_cast<unsigned>(code.symbol[next++]), bits, static_cast<unsigned>(length));
    }
  }
}

// Entry of a decoding table, indexed by the next bits. Bits 0 to 5 are the number of bits it consumes, bits 6 and 7 its
// kind; the other bits depend on the kind.
namespace entry {
constexpr unsigned copy =
    0U << 6;  // bits 8 to 11: number of extra bits, included in the bits consumed; 16 to 31: base length
constexpr unsigned literals = 1U << 6;  // bits 8 to 9: number of bytes, 1 or 2; 16 to 23 and 24 to 31: the bytes
constexpr unsigned longer = 2U << 6;    // a literal with a longer code; bits 16 to 31: its index in the second table
constexpr unsigned kinds = 3U << 6;

constexpr unsigned Taken(std::uint32_t e) {
  return e & 63;
}
constexpr unsigned Kind(std::uint32_t e) {
  return e & kinds;
}
constexpr unsigned Detail(std::uint32_t e) {
  return e >> 8 & 15;
}
constexpr unsigned Value(std::uint32_t e) {
  return e >> 16;
}
constexpr std::uint32_t Make(unsigned kind, unsigned taken, unsigned detail, unsigned value) {
  return value << 16 | detail << 8 | kind | taken;
}
}  // namespace entry

constexpr unsigned kItemBits = 12;                        // index of the item table
constexpr unsigned kRestBits = kMaxBits + 1 - kItemBits;  // index of each part of the second table
constexpr unsigned kDistanceBits = 8;                     // longest distance code

// Items: copies and literals, with the flag bit before them.
struct ItemTable {
  std::array<std::uint32_t, 1U << kItemBits> item{};
  std::array<std::uint32_t, 64U << kRestBits> rest{};  // for literals with codes longer than the index of `item`
  unsigned restSize = 0;
};

constexpr void AddItem(ItemTable& table, unsigned bits, unsigned length, std::uint32_t value) {
  for (std::size_t i = bits; i < table.item.size(); i += std::size_t{1} << length) table.item[i] = value;
}

constexpr void AddLongLiteral(ItemTable& table, unsigned bits, unsigned length, unsigned symbol) {
  std::uint32_t& first = table.item[bits & ((1U << kItemBits) - 1)];
  if (entry::Kind(first) != entry::longer) {
    first = entry::Make(entry::longer, kItemBits, 0, table.restSize);
    table.restSize += 1U << kRestBits;
  }
  unsigned const begin = entry::Value(first);
  for (unsigned i = bits >> kItemBits; i < 1U << kRestBits; i += 1U << (length - kItemBits)) {
    table.rest[begin + i] = entry::Make(entry::literals, length - kItemBits, 1, symbol);
  }
}

// Combines two literals that fit into one index.
constexpr void PairLiterals(ItemTable& table) {
  auto const single = table.item;
  for (std::size_t i = 0; i < single.size(); ++i) {
    if (entry::Kind(single[i]) != entry::literals) continue;
    unsigned const taken = entry::Taken(single[i]);
    std::uint32_t const next = single[i >> taken];
    if (entry::Kind(next) != entry::literals || taken + entry::Taken(next) > kItemBits) continue;
    table.item[i] =
        entry::Make(entry::literals, taken + entry::Taken(next), 2, entry::Value(single[i]) | entry::Value(next) << 8);
  }
}

constexpr ItemTable MakeItems() {
  ItemTable table;
  ForEachCode(kLengthCode, [&table](unsigned symbol, unsigned bits, unsigned length) {
    unsigned const extra = kExtraBits[symbol];
    AddItem(table, bits << 1 | 1, length + 1, entry::Make(entry::copy, length + 1 + extra, extra, kBaseLength[symbol]));
  });
  ForEachCode(kLiteralCode, [&table](unsigned symbol, unsigned bits, unsigned length) {
    if (length + 1 > kItemBits) {
      AddLongLiteral(table, bits << 1, length + 1, symbol);
    } else {
      AddItem(table, bits << 1, length + 1, entry::Make(entry::literals, length + 1, 1, symbol));
    }
  });
  PairLiterals(table);
  return table;
}

struct DistanceEntry {
  unsigned char taken = 0;
  unsigned char symbol = 0;
};

constexpr std::array<DistanceEntry, 1U << kDistanceBits> MakeDistances() {
  std::array<DistanceEntry, 1U << kDistanceBits> table{};
  ForEachCode(kDistanceCode, [&table](unsigned symbol, unsigned bits, unsigned length) {
    for (std::size_t i = bits; i < table.size(); i += std::size_t{1} << length) {
      table[i].taken = static_cast<unsigned char>(length);
      table[i].symbol = static_cast<unsigned char>(symbol);
    }
  });
  return table;
}

constexpr ItemTable kItems = MakeItems();
constexpr auto kDistances = MakeDistances();

enum Outcome {
  kFinished = 0,
  kOutputFailed = 1,
  kInputEnded = 2,
  kBadFlag = -1,
  kBadDictionary = -2,
  kTooFar = -3,
  kContinues = 3
};

constexpr unsigned kWordSize = 8;

// Bytes that can be written after the end of a block before it is flushed: literals, a copy, and the excess of copying
// in units of 16 bytes.
constexpr std::size_t kOverrun = 16 + kMaxLength + 16;

class Decoder {
 public:
  Decoder(blast_in infun, void* inhow, blast_out outfun, void* outhow)
      : input(infun), inputHow(inhow), output(outfun), outputHow(outhow) {}

  // Decodes everything but the last block. The longjmp at the end of input returns here.
  int Run() {
    if (setjmp(env) != 0) return kInputEnded;
    return Decode();
  }

  // Writes the last, incomplete block.
  bool FlushRest() { return next == 0 || output(outputHow, Block(), next) == 0; }

 private:
  unsigned char* Block() { return bytes + kWindow; }

  int Decode();
  template <bool IsCoded>
  int DecodeItems();
  template <bool IsCoded>
  int DecodeBuffered();
  template <bool IsCoded>
  int DecodeOne();
  bool Flush();

  unsigned Bits(unsigned need);
  template <std::size_t Symbols>
  unsigned Symbol(Code<Symbols> const& code);

  blast_in input;
  void* inputHow;
  unsigned char* in = nullptr;
  unsigned left = 0;
  std::uint64_t bitBuffer = 0;  // zero above the valid bits
  unsigned bitCount = 0;
  std::jmp_buf env;
  blast_out output;
  void* outputHow;
  unsigned next = 0;     // next free byte of the block
  bool isFirst = true;   // no block was flushed
  unsigned lowBits = 0;  // low bits of a distance, unless the length is 2
  // The previous block and the current one, so that a copy never wraps around.
  unsigned char bytes[2 * kWindow + kOverrun];
};

// Reads bits, first bit lowest. Requests input only if bits are missing.
unsigned Decoder::Bits(unsigned need) {
  while (bitCount < need) {
    if (left == 0) {
      left = input(inputHow, &in);
      if (left == 0 || in == nullptr) std::longjmp(env, 1);
    }
    bitBuffer |= static_cast<std::uint64_t>(*in++) << bitCount;
    --left;
    bitCount += 8;
  }
  auto const value = static_cast<unsigned>(bitBuffer & ((std::uint64_t{1} << need) - 1));
  bitBuffer >>= need;
  bitCount -= need;
  return value;
}

// Decodes a symbol bit by bit, so that no byte is requested that the code does not need.
template <std::size_t Symbols>
unsigned Decoder::Symbol(Code<Symbols> const& code) {
  int value = 0;
  int first = 0;
  int index = 0;
  for (std::size_t length = 1;; ++length) {
    value |= static_cast<int>(Bits(1) ^ 1);
    int const count = code.count[length];
    if (value < first + count)
      return static_cast<unsigned>(code.symbol[static_cast<std::size_t>(index + value - first)]);
    index += count;
    first = (first + count) * 2;
    value *= 2;
  }
}

// Copies `length` bytes from `distance` bytes before the target, and can write 15 bytes more. An overlapping copy
// repeats the bytes before the target.
void Copy(unsigned char* target, unsigned distance, unsigned length) {
  unsigned char const* source = target - distance;
  unsigned char const* const end = target + length;
  if (distance >= 16) {
    do {
      std::memcpy(target, source, 16);
      target += 16;
      source += 16;
    } while (target < end);
    return;
  }
  for (int i = 0; i < 16; ++i) target[i] = source[i];
  // Now a whole number of repetitions, at least 8 bytes, is before the target.
  unsigned const repeats = 16 - 16 % distance;
  for (target += 16; target < end; target += 8) std::memcpy(target, target - repeats, 8);
}

// Writes the block, and begins the next one with the bytes after its end.
bool Decoder::Flush() {
  if (output(outputHow, Block(), kWindow) != 0) {
    next = 0;
    return false;
  }
  isFirst = false;
  next -= kWindow;
  std::memcpy(bytes, Block(), kWindow);
  std::memcpy(Block(), Block() + kWindow, next);
  return true;
}

// Reads bits in words of eight bytes.
// Requires: the bytes are available.
class WordReader {
 public:
  WordReader(unsigned char const* from, std::uint64_t bits, unsigned count) : at(from), buffer(bits), bitCount(count) {}

  // Refills to at least 56 bits. The buffer can have bits above the valid ones; these bytes are read again.
  void Refill() {
    std::uint64_t word = 0;
    for (unsigned i = 0; i < kWordSize; ++i) word |= static_cast<std::uint64_t>(at[i]) << (8 * i);
    buffer |= word << bitCount;
    at += (63 - bitCount) / 8;
    bitCount |= 56;
  }

  std::uint64_t Bits() const { return buffer; }
  unsigned Peek(unsigned count) const { return static_cast<unsigned>(buffer & ((std::uint64_t{1} << count) - 1)); }
  void Drop(unsigned count) {
    buffer >>= count;
    bitCount -= count;
  }
  unsigned Take(unsigned count) {
    unsigned const value = Peek(count);
    Drop(count);
    return value;
  }

  unsigned char const* At() const { return at; }
  unsigned Count() const { return bitCount; }

 private:
  unsigned char const* at;
  std::uint64_t buffer;
  unsigned bitCount;
};

// Decodes coded literals after a refill, and returns the entry after them; refills again if that is a copy.
std::uint32_t TakeCodedLiterals(WordReader& reader, unsigned char*& to) {
  std::uint32_t item = kItems.item[reader.Peek(kItemBits)];
  // Each entry consumes at most 14 bits, so that three fit before the next look-up.
  for (int round = 0; round < 3 && entry::Kind(item) != entry::copy; ++round) {
    reader.Drop(entry::Taken(item));
    if (entry::Kind(item) == entry::longer) {
      item = kItems.rest[entry::Value(item) + reader.Peek(kRestBits)];
      reader.Drop(entry::Taken(item));
    }
    to[0] = static_cast<unsigned char>(entry::Value(item));
    to[1] = static_cast<unsigned char>(entry::Value(item) >> 8);
    to += entry::Detail(item);
    item = kItems.item[reader.Peek(kItemBits)];
  }
  if (entry::Kind(item) == entry::copy) reader.Refill();
  return item;
}

// Decodes plain literals: a flag bit 0 and 8 bits each. Six fit into the buffer; all before the first copy are written
// at once.
std::uint32_t TakePlainLiterals(WordReader& reader, unsigned char*& to) {
  constexpr unsigned most = 6;
  constexpr unsigned size = 9;
  constexpr std::uint64_t flags = 0x0000201008040201;  // every ninth bit
  constexpr std::uint64_t endFlag = std::uint64_t{1} << size * most;
  auto const taken = static_cast<unsigned>(__builtin_ctzll((reader.Bits() & flags) | endFlag));
  for (unsigned i = 0; i < most; ++i) to[i] = static_cast<unsigned char>(reader.Bits() >> (size * i + 1));
  to += taken / size;
  reader.Drop(taken);
  if (taken == size * most) return entry::literals;
  reader.Refill();
  return kItems.item[reader.Peek(kItemBits)];
}

// Executes a copy, which consumes at most 30 bits.
int TakeCopy(WordReader& reader, std::uint32_t item, unsigned lowBits, unsigned char*& to,
             unsigned char const* lowest) {
  unsigned const extra = reader.Take(entry::Taken(item)) >> (entry::Taken(item) - entry::Detail(item));
  unsigned const length = entry::Value(item) + extra;
  if (length == kEndLength) return kFinished;
  DistanceEntry const high = kDistances[reader.Peek(kDistanceBits)];
  reader.Drop(high.taken);
  unsigned const low = length == 2 ? 2 : lowBits;
  unsigned const distance = (static_cast<unsigned>(high.symbol) << low) + reader.Take(low) + 1;
  if (to - lowest < static_cast<std::ptrdiff_t>(distance)) return kTooFar;
  Copy(to, distance, length);
  to += length;
  return kContinues;
}

// Decodes items while the input block has enough bytes for any of them.
template <bool IsCoded>
int Decoder::DecodeBuffered() {
  constexpr std::ptrdiff_t mostRead = 2 * kWordSize;  // two refills
  WordReader reader(in, bitBuffer, bitCount);
  unsigned char* const inEnd = in + left;
  unsigned char* const begin = Block();
  unsigned char* const end = begin + kWindow;
  unsigned char* to = begin + next;
  unsigned char const* lowest = isFirst ? begin : bytes;
  int outcome = kContinues;
  while (outcome == kContinues && inEnd - reader.At() >= mostRead) {
    reader.Refill();
    std::uint32_t const item = IsCoded ? TakeCodedLiterals(reader, to) : TakePlainLiterals(reader, to);
    if (entry::Kind(item) == entry::copy) outcome = TakeCopy(reader, item, lowBits, to, lowest);
    if (to >= end) {
      next = static_cast<unsigned>(to - begin);
      if (!Flush()) return kOutputFailed;
      to = begin + next;
      lowest = bytes;
    }
  }
  next = static_cast<unsigned>(to - begin);
  left = static_cast<unsigned>(inEnd - reader.At());
  in = inEnd - left;
  bitCount = reader.Count();
  bitBuffer = reader.Bits() & ((std::uint64_t{1} << bitCount) - 1);
  return outcome;
}

template <bool IsCoded>
int Decoder::DecodeOne() {
  if (Bits(1) == 0) {
    Block()[next++] = static_cast<unsigned char>(IsCoded ? Symbol(kLiteralCode) : Bits(8));
  } else {
    unsigned const symbol = Symbol(kLengthCode);
    unsigned const length = kBaseLength[symbol] + Bits(kExtraBits[symbol]);
    if (length == kEndLength) return kFinished;
    unsigned const low = length == 2 ? 2 : lowBits;
    unsigned const high = Symbol(kDistanceCode) << low;
    unsigned const distance = high + Bits(low) + 1;
    if (isFirst && distance > next) return kTooFar;
    Copy(Block() + next, distance, length);
    next += length;
  }
  return next < kWindow || Flush() ? kContinues : kOutputFailed;
}

template <bool IsCoded>
int Decoder::DecodeItems() {
  int outcome = kContinues;
  while (outcome == kContinues) {
    outcome = DecodeBuffered<IsCoded>();
    if (outcome == kContinues) outcome = DecodeOne<IsCoded>();
  }
  return outcome;
}

int Decoder::Decode() {
  unsigned const isCoded = Bits(8);
  if (isCoded > 1) return kBadFlag;
  lowBits = Bits(8);
  if (lowBits < 4 || lowBits > 6) return kBadDictionary;
  return isCoded == 1 ? DecodeItems<true>() : DecodeItems<false>();
}

}  // namespace

int blast(blast_in infun, void* inhow, blast_out outfun, void* outhow) {
  Decoder decoder(infun, inhow, outfun, outhow);
  int const outcome = decoder.Run();
  if (outcome == kOutputFailed || decoder.FlushRest()) return outcome;
  return outcome == kFinished ? kOutputFailed : outcome;
}
