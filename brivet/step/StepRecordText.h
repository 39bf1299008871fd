// Values of a record, decoded from the bytes of the file without storing them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "StepBytes.h"

// Reads the values of a record one after the other, as long as they are in the usual form of StepInstanceText and of
// the kind that is asked for. Otherwise a function returns false, and nothing more can be read: the caller takes the
// general way, which also reports errors.
//
// A NUL and kPadding bytes that can be read follow the bytes.
//
//   StepRecordText record(bytes, "VERTEX_POINT");  // of "VERTEX_POINT('',#12);"
//   std::int64_t point = 0;
//   if (record.Skip() && record.Reference(point)) Use(point);
class StepRecordText {
 public:
  StepRecordText() = default;
  // How many bytes are read at most after the NUL that ends the bytes.
  static constexpr std::size_t kPadding = 64;

  // Begins after the name of a type, which has fewer than kPadding bytes, and its parenthesis. A null pointer, or bytes
  // that do not begin with the name, make a record from which nothing can be read.
  StepRecordText(char const* bytes, std::string_view type) noexcept {
    if (bytes == nullptr || !BeginsWith(bytes, type)) return;
    at = bytes + type.size();
    SkipBlanks();
    if (*at == '(') {
      ++at;
    } else {
      Stop();
    }
  }

  // Skips a value.
  bool Skip() noexcept {
    // Most of them are '', * or $ without blanks.
    if (at[0] == '\'' && at[1] == '\'' && at[2] == ',') return at += 3, true;
    if ((at[0] == '*' || at[0] == '$') && at[1] == ',') return at += 2, true;
    return SkipAny();
  }
  // Reads "#12".
  bool Reference(std::int64_t& id) noexcept {
    SkipBlanks();
    return TakeReference(id) && EndValue();
  }
  // Reads an integer or a real number.
  bool Number(double& number) noexcept {
    SkipBlanks();
    return TakeNumber(number) && EndValue();
  }
  // Reads ".NAME.".
  bool Enumeration(std::string_view& name) noexcept {
    // Most of them are .T. or .F. without blanks.
    if (at[0] == '.' && IsLetter(at[1]) && at[2] == '.' && (at[3] == ',' || at[3] == ')')) {
      name = {at + 1, 1};
      at += 4;
      return true;
    }
    return TakeEnumeration(name);
  }
  // Returns whether the next value is "$".
  bool AtUnset() noexcept {
    SkipBlanks();
    return *at == '$';
  }
  // Reads a list of references; calls take(id) for each, and ends with false if that returns false.
  template <class Receiver>
  bool References(Receiver const& take) noexcept(noexcept(take(std::int64_t()))) {
    return List([&] {
      std::int64_t id = 0;
      return TakeReference(id) && take(id);
    });
  }
  // Reads a list of one to three numbers; missing ones are 0.
  bool Triple(double* numbers) noexcept;
  // Reads a list of numbers in the same way as References.
  template <class Receiver>
  bool Numbers(Receiver const& take) noexcept(noexcept(take(double()))) {
    return List([&] {
      double number = 0.0;
      return TakeNumber(number) && take(number);
    });
  }

 private:
  // Returns whether the bytes begin with the name of a type, compared in blocks that overlap.
  static bool BeginsWith(char const* bytes, std::string_view type) noexcept {
    constexpr std::size_t kBlock = sizeof(std::uint64_t);
    if (type.size() < kBlock) return std::memcmp(bytes, type.data(), type.size()) == 0;
    auto const isSameAt = [&](std::size_t place) {
      std::uint64_t found;
      std::uint64_t expected;
      std::memcpy(&found, bytes + place, kBlock);
      std::memcpy(&expected, type.data() + place, kBlock);
      return found == expected;
    };
    for (std::size_t place = 0; place + kBlock < type.size(); place += kBlock) {
      if (!isSameAt(place)) return false;
    }
    return isSameAt(type.size() - kBlock);
  }
  bool SkipAny() noexcept;
  bool SkipList() noexcept;
  void SkipBlanks() noexcept {
    if (static_cast<unsigned char>(*at) > ' ') return;
    while (IsBlank(static_cast<unsigned char>(*at))) ++at;
  }
  bool EndValue() noexcept {
    SkipBlanks();
    return *at == ',' || *at == ')' ? (++at, true) : Stop();
  }
  // From here on nothing can be read.
  bool Stop() noexcept {
    at = kNothing;
    return false;
  }
  bool TakeReference(std::int64_t& id) noexcept;
  bool TakeNumber(double& number) noexcept;
  bool TakeEnumeration(std::string_view& name) noexcept;
  template <class Take>
  bool List(Take const& take);

  static constexpr char kNothing[1 + kPadding] = {};

  char const* at = kNothing;
};

inline bool StepRecordText::TakeReference(std::int64_t& id) noexcept {
  constexpr std::size_t kSafeDigits = 18;
  if (*at != '#') return Stop();
  std::size_t const count = CountDigits(++at);
  if (count == 0 || count > kSafeDigits) return Stop();
  id = static_cast<std::int64_t>(NumberOfDigits(at, count));
  at += count;
  return true;
}

template <class Take>
bool StepRecordText::List(Take const& take) {
  SkipBlanks();
  if (*at != '(') return Stop();
  ++at;
  SkipBlanks();
  if (*at == ')') return ++at, EndValue();
  while (true) {
    if (!take()) return Stop();
    SkipBlanks();
    if (*at == ')') return ++at, EndValue();
    if (*at != ',') return Stop();
    ++at;
    SkipBlanks();
  }
}
