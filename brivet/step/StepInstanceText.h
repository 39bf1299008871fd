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
  // Begins at `bytes`, which a byte follows that no instance contains, such as NUL, and kPadding more that can be read.
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

  static constexpr std::size_t kPadding = kBlockPadding + 1;

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

  // The functions that read advance `position`, which is a local variable of their callers: in a register, and not in
  // memory that each token would have to wait for.
  void SkipBlanks(char const*& position) noexcept {
    if (static_cast<unsigned char>(*position) <= ' ') position = SkipBlankBytes(position);
  }
  // Returns the position after them.
  char const* SkipBlankBytes(char const* position) noexcept;
  static bool ReadNumber(char const*& position, Number& number) noexcept;
  static std::string_view ReadWord(char const*& position) noexcept;
  static std::string_view ReadReal(char const*& position, bool& isReal) noexcept;
  static std::string_view ReadString(char const*& position, bool& isDoubled) noexcept;
  static std::string_view ReadStringBytes(char const* first, bool& isDoubled) noexcept;
  static std::string_view ReadEnumeration(char const*& position) noexcept;
  template <class Sink>
  bool ReadRecord(char const*& start, Sink& sink);
  template <class Sink>
  bool ReadValue(char const*& position, Sink& sink);

  char const* const begin;
  char const* at;
  Number name = {{}, -1};
  bool isComplex = false;
  long lines = 0;
  std::size_t lineBegin = 0;
};

inline bool StepInstanceText::ReadName() noexcept {
  char const* position = at;
  if (position[0] == '\n' && position[1] == '#') {
    // Most instances begin a line.
    ++lines;
    lineBegin = static_cast<std::size_t>(++position - begin);
  } else {
    SkipBlanks(position);
    if (*position != '#') return false;
  }
  ++position;
  if (!ReadNumber(position, name)) return false;
  SkipBlanks(position);
  if (*position != '=') return false;
  ++position;
  SkipBlanks(position);
  at = position;
  return true;
}

inline bool StepInstanceText::ReadNumber(char const*& position, Number& number) noexcept {
  constexpr std::size_t kSafeDigits = 18;
  std::size_t size = CountDigits(position);
  if (size == 0 || size > kSafeDigits) return false;
  number.value = static_cast<std::int64_t>(NumberOfDigits(position, size));
  char const* digits = position;
  position += size;
  for (; *digits == '0' && size > 1; --size) ++digits;
  number.digits = {digits, size};
  return true;
}

inline std::string_view StepInstanceText::ReadWord(char const*& position) noexcept {
  char const* const first = position;
  position += CountWordBytes(position);
  return {first, static_cast<std::size_t>(position - first)};
}

// Returns an empty view for what is not a number.
inline std::string_view StepInstanceText::ReadReal(char const*& position, bool& isReal) noexcept {
  char const* const first = position;
  if (*position == '+' || *position == '-') ++position;
  auto const [whole, fraction] = CountDigitsAround(position);
  isReal = position[whole] == '.';
  std::size_t const digits = isReal ? whole + fraction : whole;
  position += isReal ? digits + 1 : digits;
  if (digits == 0) return {};
  if (*position == 'E' || *position == 'e') {
    isReal = true;
    ++position;
    if (*position == '+' || *position == '-') ++position;
    std::size_t const exponent = CountDigits(position);
    if (exponent == 0) return {};
    position += exponent;
  }
  return {first, static_cast<std::size_t>(position - first)};
}

// Returns the bytes between the apostrophes, or a view of null for what is not a plain string.
inline std::string_view StepInstanceText::ReadString(char const*& position, bool& isDoubled) noexcept {
  char const* const first = position + 1;
  // Most strings are empty.
  bool const isEmpty = first[0] == '\'' && first[1] != '\'';
  std::string_view const text = isEmpty ? std::string_view(first, 1).substr(0, 0) : ReadStringBytes(first, isDoubled);
  position = first + text.size() + 1;
  return text;
}

// Returns an empty view for what is not an enumeration.
inline std::string_view StepInstanceText::ReadEnumeration(char const*& position) noexcept {
  ++position;
  if (!IsLetter(*position)) return {};
  std::string_view const word = ReadWord(position);
  return *position++ == '.' ? word : std::string_view();
}

// Reads a value that is not a list. Returns false if there is none.
template <class Sink>
[[gnu::always_inline]] inline bool StepInstanceText::ReadValue(char const*& position, Sink& sink) {
  switch (*position) {
    case '\'': {
      bool isDoubled = false;
      std::string_view const text = ReadString(position, isDoubled);
      if (text.data() == nullptr) return false;
      sink.String(text, isDoubled, lines);
      return true;
    }
    case '#': {
      ++position;
      Number target = {{}, -1};
      if (!ReadNumber(position, target)) return false;
      sink.Reference(target);
      return true;
    }
    case '.':
      if (!IsDigit(position[1])) {
        std::string_view const word = ReadEnumeration(position);
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
      std::string_view const number = ReadReal(position, isReal);
      if (number.empty()) return false;
      sink.Number(number, isReal);
      return true;
    }
    case '$':
      ++position;
      sink.Unset();
      return true;
    case '*':
      ++position;
      sink.Derived();
      return true;
    default:
      return false;
  }
}

template <class Sink>
bool StepInstanceText::ReadRecord(char const*& start, Sink& sink) {
  char const* position = start;
  if (!IsLetter(*position)) return false;
  sink.BeginRecord(ReadWord(position));
  SkipBlanks(position);
  if (*position != '(') return false;
  // A bit for each open list, the innermost lowest: whether it is a typed parameter. A one marks the record.
  std::uint64_t open = 1;
  unsigned depth = 0;
  bool mayClose = true;
  ++position;
  // Most records begin with an empty name.
  if (position[0] == '\'' && position[1] == '\'' && position[2] == ',') {
    sink.String(std::string_view(position + 1, 1).substr(0, 0), false, lines);
    position += 3;
    mayClose = false;
  }
  while (true) {
    SkipBlanks(position);
    if (*position == '(' || IsLetter(*position)) {
      bool const isTyped = *position != '(';
      if (isTyped) {
        sink.BeginTyped(ReadWord(position));
        SkipBlanks(position);
        if (*position != '(') return false;
      } else {
        sink.BeginList();
      }
      open = open << 1U | (isTyped ? 1U : 0U);
      ++position;
      if (++depth > kDepthLimit) return false;
      mayClose = true;
      continue;
    }
    if (*position != ')' || !mayClose) {
      if (!ReadValue(position, sink)) return false;
      SkipBlanks(position);
    }
    while (*position == ')') {
      ++position;
      if (depth == 0) {
        sink.EndRecord();
        start = position;
        return true;
      }
      (open & 1U) != 0 ? sink.EndTyped() : sink.EndList();
      open >>= 1U;
      --depth;
      SkipBlanks(position);
    }
    if (*position != ',') return false;
    ++position;
    mayClose = false;
  }
}

template <class Sink>
bool StepInstanceText::ReadRecords(Sink& sink) {
  char const* position = at;
  isComplex = *position == '(';
  if (isComplex) {
    ++position;
    SkipBlanks(position);
    do {
      if (!ReadRecord(position, sink)) return false;
      SkipBlanks(position);
    } while (*position != ')');
    ++position;
  } else if (!ReadRecord(position, sink)) {
    return false;
  }
  SkipBlanks(position);
  if (*position != ';') return false;
  at = position + 1;
  return true;
}
