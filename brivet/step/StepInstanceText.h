// Instances in the usual form, recognized in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "StepBytes.h"

// Fast path of the scanner and the parser for one instance in a window of bytes: "#12=TYPE(...);" as nearly all
// exporters write it. Everything else is refused, and left to StepScanner and StepParser, which also report errors:
// comments, bytes beyond ASCII, backslashes and line ends in strings, user-defined types, binaries, scopes, the names
// of edition 3, ids of more than 18 digits, lists more than 60 deep, syntax errors, and instances that do not end in
// the window. See the source for the algorithm.
//
//   StepInstanceText text(window);
//   StepInstanceText::Ignore sink;
//   if (text.ReadName() && text.ReadRecords(sink)) Skip(text.Size());
class StepInstanceText {
 public:
  // Begins at `bytes`, which a byte follows that no instance contains, such as NUL, and kBlockPadding more that can be
  // read.
  explicit StepInstanceText(char const* bytes) noexcept : begin(bytes), at(bytes) {}

  struct Number {
    std::string_view digits;  // without leading zeros
    std::int64_t value;
  };

  // Receives the content of the records. All views are valid as long as the bytes.
  struct Ignore {
    void BeginRecord(std::string_view /*type*/) {}
    void EndRecord() {}
    void Number(std::string_view /*number*/, bool /*isReal*/) {}
    // `isDoubled`: the string contains doubled apostrophes.
    void String(std::string_view /*text*/, bool /*isDoubled*/, long /*lines*/) {}
    void Enumeration(std::string_view /*name*/) {}
    void Reference(StepInstanceText::Number const& /*target*/) {}
    void Unset() {}
    void Derived() {}
    void BeginList() {}
    void EndList() {}
    void BeginTyped(std::string_view /*type*/) {}
    void EndTyped() {}
  };

  // Reads "#12=" and the blanks before and after. Returns false if that is not there.
  bool ReadName() noexcept;
  // Reads what follows "=" up to the semicolon. Returns false if it is not in the usual form; part of it was passed to
  // `sink` then.
  template <class Sink>
  bool ReadRecords(Sink& sink);

  // Returns whether the next byte begins several records.
  bool AtList() const noexcept { return *at == '('; }

  Number const& Name() const noexcept { return name; }
  // Returns whether several records in parentheses were read.
  bool IsComplex() const noexcept { return isComplex; }
  // Returns the number of bytes that were read.
  std::size_t Size() const noexcept { return static_cast<std::size_t>(at - begin); }
  // Returns the number of line ends in them.
  long Lines() const noexcept { return lines; }
  // Returns the position after the last line end, or 0 if there is none.
  std::size_t LineBegin() const noexcept { return lineBegin; }

 private:
  static constexpr unsigned kDepthLimit = 60;

  void SkipBlanks() noexcept {
    if (static_cast<unsigned char>(*at) <= ' ') SkipBlankBytes();
  }
  void SkipBlankBytes() noexcept;
  bool ReadNumber(Number& number) noexcept;
  std::string_view ReadWord() noexcept;
  std::string_view ReadReal(bool& isReal) noexcept;
  std::string_view ReadString(bool& isDoubled) noexcept;
  std::string_view ReadEnumeration() noexcept;
  template <class Sink>
  bool ReadRecord(Sink& sink);
  template <class Sink>
  bool ReadValue(Sink& sink);

  char const* const begin;
  char const* at;
  Number name = {{}, -1};
  bool isComplex = false;
  long lines = 0;
  std::size_t lineBegin = 0;
};

inline bool StepInstanceText::ReadNumber(Number& number) noexcept {
  constexpr std::size_t kSafeDigits = 18;
  std::size_t size = CountDigits(at);
  if (size == 0 || size > kSafeDigits) return false;
  number.value = static_cast<std::int64_t>(NumberOfDigits(at, size));
  char const* digits = at;
  at += size;
  for (; *digits == '0' && size > 1; --size) ++digits;
  number.digits = {digits, size};
  return true;
}

inline std::string_view StepInstanceText::ReadWord() noexcept {
  char const* const first = at;
  at += CountWordBytes(at);
  return {first, static_cast<std::size_t>(at - first)};
}

// Returns an empty view for what is not a number.
inline std::string_view StepInstanceText::ReadReal(bool& isReal) noexcept {
  char const* const first = at;
  if (*at == '+' || *at == '-') ++at;
  std::size_t digits = CountDigits(at);
  at += digits;
  isReal = *at == '.';
  if (isReal) {
    std::size_t const fraction = CountDigits(++at);
    at += fraction;
    digits += fraction;
  }
  if (digits == 0) return {};
  if (*at == 'E' || *at == 'e') {
    isReal = true;
    ++at;
    if (*at == '+' || *at == '-') ++at;
    std::size_t const exponent = CountDigits(at);
    if (exponent == 0) return {};
    at += exponent;
  }
  return {first, static_cast<std::size_t>(at - first)};
}

// Returns an empty view for what is not an enumeration.
inline std::string_view StepInstanceText::ReadEnumeration() noexcept {
  ++at;
  if (!IsLetter(*at)) return {};
  std::string_view const word = ReadWord();
  return *at++ == '.' ? word : std::string_view();
}

// Reads a value that is not a list. Returns false if there is none.
template <class Sink>
inline bool StepInstanceText::ReadValue(Sink& sink) {
  switch (*at) {
    case '\'': {
      bool isDoubled = false;
      std::string_view const text = ReadString(isDoubled);
      if (text.data() == nullptr) return false;
      sink.String(text, isDoubled, lines);
      return true;
    }
    case '#': {
      ++at;
      Number target = {{}, -1};
      if (!ReadNumber(target)) return false;
      sink.Reference(target);
      return true;
    }
    case '.':
      if (!IsDigit(at[1])) {
        std::string_view const word = ReadEnumeration();
        if (word.empty()) return false;
        sink.Enumeration(word);
        return true;
      }
      [[fallthrough]];
    case '0':
    case '1':
    case '2':
    case '3':
    case '4':
    case '5':
    case '6':
    case '7':
    case '8':
    case '9':
    case '+':
    case '-': {
      bool isReal = false;
      std::string_view const number = ReadReal(isReal);
      if (number.empty()) return false;
      sink.Number(number, isReal);
      return true;
    }
    case '$':
      ++at;
      sink.Unset();
      return true;
    case '*':
      ++at;
      sink.Derived();
      return true;
    default:
      return false;
  }
}

template <class Sink>
bool StepInstanceText::ReadRecord(Sink& sink) {
  if (!IsLetter(*at)) return false;
  sink.BeginRecord(ReadWord());
  SkipBlanks();
  if (*at != '(') return false;
  // A bit for each open list, the innermost lowest: whether it is a typed parameter. A one marks the record.
  std::uint64_t open = 1;
  unsigned depth = 0;
  bool mayClose = true;
  ++at;
  while (true) {
    SkipBlanks();
    if (*at == '(' || IsLetter(*at)) {
      bool const isTyped = *at != '(';
      if (isTyped) {
        sink.BeginTyped(ReadWord());
        SkipBlanks();
        if (*at != '(') return false;
      } else {
        sink.BeginList();
      }
      open = open << 1U | (isTyped ? 1U : 0U);
      ++at;
      if (++depth > kDepthLimit) return false;
      mayClose = true;
      continue;
    }
    if (*at != ')' || !mayClose) {
      if (!ReadValue(sink)) return false;
      SkipBlanks();
    }
    while (*at == ')') {
      ++at;
      if (depth == 0) {
        sink.EndRecord();
        return true;
      }
      (open & 1U) != 0 ? sink.EndTyped() : sink.EndList();
      open >>= 1U;
      --depth;
      SkipBlanks();
    }
    if (*at != ',') return false;
    ++at;
    mayClose = false;
  }
}

template <class Sink>
bool StepInstanceText::ReadRecords(Sink& sink) {
  isComplex = *at == '(';
  if (isComplex) {
    ++at;
    SkipBlanks();
    do {
      if (!ReadRecord(sink)) return false;
      SkipBlanks();
    } while (*at != ')');
    ++at;
  } else if (!ReadRecord(sink)) {
    return false;
  }
  SkipBlanks();
  return *at++ == ';';
}
