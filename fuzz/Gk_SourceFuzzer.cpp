// Feeds Gk_Source generated input (after three lines), from memory or through packets. The first line has the
// delimiters, the second a pattern, the third the operations, a byte each. Compares the results with a model on a
// string and a position.
#include "Gk_Source.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "Gk_PacketInputStream.h"
#include "Gk_StringParser.h"
#include "MemoryStream.h"
#include "Require.h"
#include "VRELStringInputStream.h"

namespace {

struct Model {
  bool IsDelimiter(std::size_t place) const { return delimiters.find(text[place]) != std::string::npos; }

  std::string Collect() {
    std::size_t const begin = at;
    while (at < text.size() && !IsDelimiter(at)) ++at;
    return text.substr(begin, at - begin);
  }

  void Skip() {
    while (at < text.size() && IsDelimiter(at)) ++at;
  }

  std::string Next() {
    Skip();
    return Collect();
  }

  std::string NextString() {
    if (!single) return Next();
    if (at < text.size() && IsDelimiter(at)) ++at;
    return Collect();
  }

  std::string NextLine() {
    if (at == text.size()) return {};
    char const first = text[at++];
    return first + Collect();
  }

  std::string Peek() {
    std::size_t const place = at;
    std::string const token = Next();
    at = place;
    return token;
  }

  std::string const& text;
  std::string delimiters;
  bool single;
  std::size_t at = 0;
};

Gk_String TextOf(std::string const& bytes) {
  return Gk_String(bytes.c_str(), static_cast<int>(bytes.size() + 1));
}

void RequireToken(Gk_String const& token, std::string const& expected) {
  if (expected.empty()) return Require(token.len() == 0, "an empty token has no elements");
  Require(token.len() == static_cast<int>(expected.size()) + 1, "a token has its bytes and a terminator");
  Require(std::memcmp(token.begin(), expected.c_str(), expected.size() + 1) == 0, "a token has the bytes of the text");
}

template <class Number>
Number NumberFrom(Gk_Source& source) {
  Number number{};
  source >> number;
  return number;
}

void ReadNumber(Gk_Source& source, std::string const& token, int kind) {
  Gk_StringParser parser(token.empty() ? Gk_String("") : TextOf(token));
  bool same = false;
  switch (kind) {
    case 0:
      same = NumberFrom<int>(source) == parser.intValue();
      break;
    case 1:
      same = NumberFrom<unsigned long>(source) == parser.uIntValue();
      break;
    default: {
      double const number = NumberFrom<double>(source);
      double const expected = parser.realValue();
      same = number == expected || (number != number && expected != expected);
      break;
    }
  }
  Require(same, "a number is that of Gk_StringParser");
}

void ReadPattern(Gk_Source& source, Model& model, std::string const& pattern) {
  Gk_ROString const view(pattern.c_str(), static_cast<int>(pattern.size() + 1));
  std::string expected = model.Next();
  while (!expected.empty() &&
         !Gk_ROString(expected.c_str(), static_cast<int>(expected.size() + 1)).matchPathPattern(view)) {
    expected = model.Next();
  }
  Gk_ROString const found = source.matchPattern(view);
  Require(found.len() == static_cast<int>(expected.empty() ? 0 : expected.size() + 1), "matchPattern finds the token");
  Require(std::memcmp(found, expected.c_str(), expected.size()) == 0, "the match has its bytes");
}

void ReadChars(Gk_Source& source, Model& model) {
  std::vector<char> buffer(model.text.size() + 1, '?');
  char* target = buffer.data();
  source >> target;
  std::string const expected = model.NextString();
  if (expected.empty()) return Require(buffer[0] == '?', "an empty token leaves the buffer unchanged");
  Require(std::strcmp(buffer.data(), expected.c_str()) == 0, "a token is copied");
}

void Read(Gk_Source& source, Model& model, std::string const& pattern, unsigned char operation) {
  switch (operation % 12) {
    case 0:
      return RequireToken(source.nextString(), model.NextString());
    case 1:
      return RequireToken(source.next(), model.Next());
    case 2:
      return RequireToken(source.nextLine(), model.NextLine());
    case 3:
      return RequireToken(source.peek(), model.Peek());
    case 4:
      source.skipWhite();
      return model.Skip();
    case 5:
      model.Skip();
      return Require(source.isEmpty() == (model.at == model.text.size()), "the end of input is reported");
    case 6:
      return ReadPattern(source, model, pattern);
    case 7:
      return ReadChars(source, model);
    case 8: {
      char c = '?';
      source >> c;
      return Require(c == model.Next().c_str()[0], "operator>>(char&) reads the first byte of a token");
    }
    default:
      return ReadNumber(source, model.Next(), operation % 12 - 9);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  int const mode = input.Number(4);
  std::string const delimiters = input.Line().c_str();
  std::string const pattern = input.Line();
  std::string const operations = input.Line();
  std::string const text = input.Rest();

  VRELStringInputStream memory(TextOf(text));
  MemoryStream slow(text, 3);
  Gk_PacketInputStream packets(&slow, 4);
  VRELInputStream* const streams[] = {&memory, &packets};
  bool const single = mode / 2 != 0;
  Gk_Source source(streams[mode % 2], single);
  source.setWhiteSpace(delimiters.c_str());
  Model model{text, delimiters, single};
  for (char const operation : operations) Read(source, model, pattern, static_cast<unsigned char>(operation));
  return 0;
}
