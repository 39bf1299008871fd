// JSON text in memory.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Appends JSON values to a string, with commas where they belong. Strings are shown as pages show them: controls are
// escaped as "<U+000A>", invalid UTF-8 is replaced, and what is longer than kLongestString ends in an ellipsis.
//
//   JsonText json;
//   json.BeginList().Number(1.5).String("a").Null().EndList();
//   json.text;  // [1.5,"a",null]
class JsonText {
 public:
  static constexpr std::size_t kLongestString = 2000;  // bytes

  JsonText& BeginList() { return Open('['); }
  JsonText& EndList() { return Close(']'); }
  JsonText& BeginObject() { return Open('{'); }
  JsonText& EndObject() { return Close('}'); }
  // `key` needs no escapes.
  JsonText& Key(char const* key);
  JsonText& Number(double number);  // null if it is not finite
  JsonText& Integer(long number);
  JsonText& String(std::string_view utf8);
  // Null if it is unset.
  JsonText& String(std::optional<std::string> const& utf8);
  JsonText& String(char const* utf8) { return String(std::string_view(utf8)); }
  JsonText& String(std::string const& utf8) { return String(std::string_view(utf8)); }
  JsonText& Null();

  std::string text;

 private:
  JsonText& Open(char bracket);
  JsonText& Close(char bracket);
  void Separate();

  bool isFirst = true;
  std::string shown;  // a member so that its memory is reused
};

// Returns the longest beginning of at most `limit` bytes that does not cut a character.
std::string_view CutUtf8(std::string_view utf8, std::size_t limit);
