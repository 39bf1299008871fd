#include "Gk_Source.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "Gk_ErrMgr.h"
#include "Raised.h"
#include "ScratchDirectory.h"
#include "VRELAbortException.h"
#include "VRELFileInputStream.h"
#include "VRELFilePath.h"
#include "VRELStringInputStream.h"

namespace {

using WhiteSpace = Gk_Source::WhiteSpace;

// Returns all elements of a string.
std::string Bytes(Gk_String const& string) {
  return std::string(string.begin(), string.end());
}

// Returns a token as a string, and checks its terminator.
std::string Text(Gk_String const& token) {
  std::string bytes = Bytes(token);
  if (bytes.empty()) return bytes;
  EXPECT_EQ(bytes.back(), '\0');
  EXPECT_GT(bytes.size(), 1u);
  bytes.pop_back();
  return bytes;
}

// Makes a string with a terminator from any bytes.
Gk_String Terminated(std::string const& text) {
  return Gk_String(text.c_str(), static_cast<int>(text.size()) + 1);
}

// Records its calls: bytes read, -1 at the end, and pushed back bytes in parentheses.
class RecordingStream : public VRELInputStream {
 public:
  explicit RecordingStream(std::string givenText) : text(std::move(givenText)) {}

  VRELInputStream* duplicate() override { return nullptr; }
  int readChar() override {
    if (position == text.size()) {
      calls += "-1";
      return -1;
    }
    calls += text[position];
    return static_cast<unsigned char>(text[position++]);
  }
  int read(char* /*buffer*/, int /*count*/) override {
    calls += "read";
    return -1;
  }
  long available() const override { return static_cast<long>(text.size() - position); }
  bool add(Gk_String const& pushed) override {
    calls += "(" + Bytes(pushed) + ")";
    kept.push_back(pushed);
    position -= static_cast<std::size_t>(pushed.len());
    return true;
  }

  std::string text;
  std::size_t position = 0;
  std::string calls;
  std::vector<Gk_String> kept;
};

// A source on a string in memory.
struct Scan {
  Scan(std::string const& text, char const* delimiters, bool singleDelimiter = false)
      : stream(Terminated(text)), source(&stream, singleDelimiter) {
    source.setWhiteSpace(delimiters);
  }

  VRELStringInputStream stream;
  Gk_Source source;
};

// Returns the results of an operation until `empties` of them were empty.
std::vector<std::string> All(Gk_Source& source, Gk_String (Gk_Source::*operation)(), int empties = 1) {
  std::vector<std::string> tokens;
  while (empties > 0) {
    tokens.push_back(Text((source.*operation)()));
    if (tokens.back().empty()) --empties;
  }
  return tokens;
}

using Tokens = std::vector<std::string>;

TEST(Gk_SourceWhiteSpaceTest, HasNoTerminator) {
  EXPECT_EQ(Bytes(WhiteSpace(" \t")), " \t");
  EXPECT_EQ(WhiteSpace(" \t").len(), 2);
  EXPECT_EQ(WhiteSpace("").len(), 0);
  EXPECT_EQ(WhiteSpace(nullptr).len(), 0);
  EXPECT_EQ(WhiteSpace().len(), 0);
}

TEST(Gk_SourceWhiteSpaceTest, IsSpaceFindsDelimiters) {
  for (char const* const characters : {"", " ", " \t\r\n", ",;", "\x80\xFF", "a", "\x01", "abcdefgh", "\x7F"}) {
    SCOPED_TRACE(characters);
    WhiteSpace const white(characters);
    std::string const model = characters;
    for (int i = 0; i < 256; ++i) {
      char const c = static_cast<char>(i);
      EXPECT_EQ(white.isSpace(c), model.find(c) != std::string::npos) << i;
    }
  }
  EXPECT_FALSE(WhiteSpace(nullptr).isSpace('\0'));
}

TEST(Gk_SourceWhiteSpaceTest, CopiesIncludeMask) {
  WhiteSpace const white(",;");
  WhiteSpace const copy(white);
  WhiteSpace assigned(" ");
  assigned = white;
  for (WhiteSpace const* const set : {&copy, static_cast<WhiteSpace const*>(&assigned)}) {
    EXPECT_TRUE(set->isSpace(','));
    EXPECT_TRUE(set->isSpace(';'));
    EXPECT_FALSE(set->isSpace(' '));
    EXPECT_EQ(Bytes(*set), ",;");
  }
}

TEST(Gk_SourceTest, IsNotPolymorphic) {
  EXPECT_FALSE(std::is_polymorphic_v<Gk_Source>);
  EXPECT_FALSE(std::is_polymorphic_v<WhiteSpace>);
}

TEST(Gk_SourceTest, NoDelimitersAtFirst) {
  VRELStringInputStream stream(Gk_String(" a b\r\n,c "));
  Gk_Source source(&stream, false);
  EXPECT_EQ(Bytes(source.setWhiteSpace(WhiteSpace())), "");
  EXPECT_EQ(All(source, &Gk_Source::next), (Tokens{" a b\r\n,c ", ""}));
}

TEST(Gk_SourceTest, SetWhiteSpaceReturnsPrevious) {
  Scan scan("a,b c", ",");
  EXPECT_EQ(Text(scan.source.next()), "a");
  WhiteSpace const before = scan.source.setWhiteSpace(" ");
  EXPECT_EQ(Bytes(before), ",");
  EXPECT_TRUE(before.isSpace(','));
  EXPECT_EQ(Text(scan.source.next()), ",b");
  EXPECT_EQ(Bytes(scan.source.setWhiteSpace(before)), " ");
  EXPECT_EQ(Text(scan.source.next()), " c");
  EXPECT_EQ(Bytes(scan.source.setWhiteSpace(nullptr)), ",");
  EXPECT_EQ(Bytes(scan.source.setWhiteSpace(" ")), "");
}

TEST(Gk_SourceTest, InstallReplacesStream) {
  VRELStringInputStream first(Gk_String("a b"));
  VRELStringInputStream second(Gk_String("c"));
  Gk_Source source(&first, false);
  source.setWhiteSpace(" ");
  EXPECT_EQ(source.top(), &first);
  EXPECT_EQ(Text(source.next()), "a");
  source.install(&second);
  EXPECT_EQ(source.top(), &second);
  EXPECT_EQ(All(source, &Gk_Source::next), (Tokens{"c", ""}));
  EXPECT_EQ(first.readChar(), ' ');
}

TEST(Gk_SourceTest, NullStreamIsEmpty) {
  Gk_Source source(nullptr, true);
  source.setWhiteSpace(" ");
  EXPECT_EQ(source.top(), nullptr);
  EXPECT_EQ(Text(source.next()), "");
  EXPECT_EQ(Text(source.nextString()), "");
  EXPECT_EQ(Text(source.nextLine()), "");
  EXPECT_EQ(Text(source.peek()), "");
  source.skipWhite();
  EXPECT_TRUE(source.isEmpty());
  EXPECT_EQ(source.matchPattern("*").len(), 0);
  int number = 5;
  source >> number;
  EXPECT_EQ(number, 0);
}

TEST(Gk_SourceTest, NextReadsTokens) {
  struct {
    char const* text;
    char const* delimiters;
    Tokens tokens;
  } const rows[] = {
      {"  ab  cd", " \t", {"ab", "cd", ""}},
      {"ab\t \tcd \t", " \t", {"ab", "cd", ""}},
      {"", " ", {""}},
      {"   ", " ", {""}},
      {"abc", " ", {"abc", ""}},
      {"abc", nullptr, {"abc", ""}},
      {"a,,b,", ",", {"a", "b", ""}},
      {"a", "a", {""}},
      {"\x80\xFFx\x80", "\x80", {"\xFFx", ""}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text);
    Scan scan(row.text, row.delimiters);
    EXPECT_EQ(All(scan.source, &Gk_Source::next), row.tokens);
    EXPECT_EQ(Text(scan.source.next()), "");
    // The flag makes no difference.
    Scan single(row.text, row.delimiters, true);
    EXPECT_EQ(All(single.source, &Gk_Source::next), row.tokens);
  }
}

TEST(Gk_SourceTest, EmptyTokenHasNoElements) {
  Scan scan(" ", " ");
  EXPECT_EQ(scan.source.next().len(), 0);
  EXPECT_EQ(scan.source.next().len(), 0);
}

TEST(Gk_SourceTest, TokensWithZeroBytes) {
  Scan scan(std::string("a\0b\0 c\0\0", 8), " ");
  EXPECT_EQ(Bytes(scan.source.next()), std::string("a\0b\0\0", 5));
  EXPECT_EQ(Bytes(scan.source.next()), std::string("c\0\0\0", 4));
}

TEST(Gk_SourceTest, LongTokens) {
  std::string const word(100000, 'w');
  Scan scan(word + " " + word + "x", " ");
  EXPECT_EQ(Text(scan.source.next()), word);
  EXPECT_EQ(Text(scan.source.next()), word + "x");
}

// A token that is kept or modified does not affect the source.
TEST(Gk_SourceTest, TokensAreNotOverwritten) {
  Scan scan("first second third fourth", " ");
  Gk_String const first = scan.source.next();
  Gk_String second = scan.source.next();
  second.append("!");
  second[0] = 'S';
  Gk_String const third = scan.source.next();
  scan.source.next();
  EXPECT_EQ(scan.source.next().len(), 0);
  EXPECT_STREQ(first, "first");
  EXPECT_STREQ(second, "Second!");
  EXPECT_STREQ(third, "third");
}

TEST(Gk_SourceTest, CopiesAreIndependent) {
  Scan scan("a b c d", " ");
  Gk_String const a = scan.source.next();
  Gk_Source copy(scan.source);
  EXPECT_EQ(Text(copy.next()), "b");
  EXPECT_EQ(Text(scan.source.next()), "c");
  EXPECT_EQ(Text(copy.next()), "d");
  EXPECT_STREQ(a, "a");
}

TEST(Gk_SourceTest, NextStringWithoutFlag) {
  Scan scan("a,,b", ",");
  EXPECT_EQ(All(scan.source, &Gk_Source::nextString), (Tokens{"a", "b", ""}));
}

TEST(Gk_SourceTest, NextStringWithFlag) {
  struct {
    char const* text;
    Tokens tokens;  // up to the third empty one
  } const rows[] = {
      {"a,,b", {"a", "", "b", "", ""}},
      {",a", {"a", "", "", ""}},
      {",,a", {"", "a", "", ""}},
      {"a,", {"a", "", "", ""}},
      {"a,,,b", {"a", "", "", "b", ""}},
      {"", {"", "", ""}},
      {",", {"", "", ""}},
      {",,", {"", "", ""}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text);
    Scan scan(row.text, ",", true);
    EXPECT_EQ(All(scan.source, &Gk_Source::nextString, 3), row.tokens);
  }
}

TEST(Gk_SourceTest, NextLineKeepsLeadingDelimiter) {
  struct {
    char const* text;
    Tokens tokens;
  } const rows[] = {
      {"ab\ncd", {"ab", "\ncd", ""}},
      {"ab\r\ncd\r\n", {"ab", "\r", "\ncd", "\r", "\n", ""}},
      {"\n\n", {"\n", "\n", ""}},
      {" a b \nc", {" a b ", "\nc", ""}},
      {"", {""}},
      {"x", {"x", ""}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text);
    Scan scan(row.text, "\r\n");
    EXPECT_EQ(All(scan.source, &Gk_Source::nextLine), row.tokens);
  }
}

TEST(Gk_SourceTest, NextLineWithIsEmpty) {
  Scan scan("first line\r\nsecond line\n\n\nthird\n", "\r\n");
  Tokens lines;
  while (!scan.source.isEmpty()) lines.push_back(Text(scan.source.nextLine()));
  EXPECT_EQ(lines, (Tokens{"first line", "second line", "third"}));
}

TEST(Gk_SourceTest, PeekRestoresPosition) {
  Scan scan("  ab  cd ", " ");
  EXPECT_EQ(Text(scan.source.peek()), "ab");
  EXPECT_EQ(Text(scan.source.peek()), "ab");
  EXPECT_EQ(Text(scan.source.next()), "ab");
  EXPECT_EQ(scan.stream.readChar(), ' ');
  EXPECT_EQ(Text(scan.source.peek()), "cd");
  EXPECT_EQ(scan.stream.readChar(), ' ');
  EXPECT_EQ(Text(scan.source.next()), "cd");
  EXPECT_EQ(Text(scan.source.peek()), "");
  EXPECT_EQ(scan.stream.readChar(), ' ');
  EXPECT_EQ(Text(scan.source.peek()), "");
}

TEST(Gk_SourceTest, PeekAtLastToken) {
  Scan scan("ab", " ");
  Gk_String const peeked = scan.source.peek();
  EXPECT_EQ(Text(scan.source.next()), "ab");
  EXPECT_EQ(Text(scan.source.next()), "");
  EXPECT_EQ(Text(peeked), "ab");
}

TEST(Gk_SourceTest, SkipWhiteStopsBeforeToken) {
  Scan scan(" \t x ", " \t");
  scan.source.skipWhite();
  EXPECT_EQ(scan.stream.readChar(), 'x');
  scan.source.skipWhite();
  EXPECT_EQ(scan.stream.readChar(), -1);
  scan.source.skipWhite();
  EXPECT_EQ(scan.stream.readChar(), -1);
}

TEST(Gk_SourceTest, IsEmptyConsumesDelimiters) {
  Scan scan("  a  ", " ");
  EXPECT_FALSE(scan.source.isEmpty());
  EXPECT_EQ(scan.stream.readChar(), 'a');
  EXPECT_TRUE(scan.source.isEmpty());
  EXPECT_EQ(scan.stream.readChar(), -1);
  EXPECT_TRUE(scan.source.isEmpty());
}

// Also below 0, as for standard input.
TEST(Gk_SourceTest, IsEmptyUsesAvailable) {
  struct Stream : RecordingStream {
    using RecordingStream::RecordingStream;
    long available() const override { return left; }
    long left = 0;
  };
  struct {
    long available;
    bool isEmpty;
  } const rows[] = {{0, true}, {1, false}, {2, false}, {-1, true}, {-5, true}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.available);
    Stream stream("ab");
    stream.left = row.available;
    Gk_Source source(&stream, false);
    EXPECT_EQ(source.isEmpty(), row.isEmpty);
    EXPECT_EQ(stream.calls, "a(a)");
  }
}

// The calls that a stream receives: readChar for each byte, and add without terminators.
TEST(Gk_SourceTest, ReadsSingleBytes) {
  struct {
    char const* text;
    bool singleDelimiter;
    Gk_String (Gk_Source::*operation)();
    char const* token;
    char const* calls;
  } const rows[] = {
      {"  ab cd", false, &Gk_Source::next, "ab", "  ab ( )"},
      {"ab", false, &Gk_Source::next, "ab", "ab-1"},
      {"  ", false, &Gk_Source::next, "", "  -1"},
      {"  ab cd", false, &Gk_Source::nextString, "ab", "  ab ( )"},
      {"  ab cd", true, &Gk_Source::nextString, "", "  ( )"},
      {" ab cd", true, &Gk_Source::nextString, "ab", " ab ( )"},
      {"ab cd", true, &Gk_Source::nextString, "ab", "ab ( )"},
      {" ", true, &Gk_Source::nextString, "", " -1"},
      {"", true, &Gk_Source::nextString, "", "-1"},
      {"ab cd", false, &Gk_Source::nextLine, "ab", "ab ( )"},
      {" ab cd", false, &Gk_Source::nextLine, " ab", " ab ( )"},
      {"  ", false, &Gk_Source::nextLine, " ", "  ( )"},
      {"", false, &Gk_Source::nextLine, "", "-1"},
      {"  ab cd", false, &Gk_Source::peek, "ab", "  ab ( )(  ab)"},
      {" ab", false, &Gk_Source::peek, "ab", " ab-1( ab)"},
      {"  ", false, &Gk_Source::peek, "", "  -1(  )"},
      {"", false, &Gk_Source::peek, "", "-1"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.calls));
    RecordingStream stream(row.text);
    Gk_Source source(&stream, row.singleDelimiter);
    source.setWhiteSpace(" ");
    EXPECT_EQ(Text((source.*row.operation)()), row.token);
    EXPECT_EQ(stream.calls, row.calls);
  }
}

TEST(Gk_SourceTest, SkipWhitePushesBack) {
  RecordingStream stream("  a");
  Gk_Source source(&stream, false);
  source.setWhiteSpace(" ");
  source.skipWhite();
  EXPECT_EQ(stream.calls, "  a(a)");
  stream.calls.clear();
  stream.position = 3;
  source.skipWhite();
  EXPECT_EQ(stream.calls, "-1");
}

// A stream that keeps the pushed back string finds it unchanged.
TEST(Gk_SourceTest, PushedBackBytesAreNotOverwritten) {
  RecordingStream stream("a,b;c,d e");
  Gk_Source source(&stream, false);
  source.setWhiteSpace(",; ");
  EXPECT_EQ(All(source, &Gk_Source::next), (Tokens{"a", "b", "c", "d", "e", ""}));
  ASSERT_EQ(stream.kept.size(), 4u);
  stream.kept[3].append('x');
  stream.position = 0;
  source.next();
  Tokens kept;
  for (Gk_String const& text : stream.kept) kept.push_back(Bytes(text));
  EXPECT_EQ(kept, (Tokens{",", ";", ",", " x", ","}));
}

TEST(Gk_SourceTest, StreamWithoutAddRaises) {
  struct MinimalStream : VRELInputStream {
    VRELInputStream* duplicate() override { return nullptr; }
    int read(char* buffer, int /*count*/) override {
      if (position == std::strlen(text)) return 0;
      *buffer = text[position++];
      return 1;
    }
    char const* text = "ab c";
    std::size_t position = 0;
  };
  MinimalStream stream;
  Gk_Source source(&stream, false);
  EXPECT_EQ(Raised([&] { source.skipWhite(); }), "Gk_IOException");
  source.setWhiteSpace(" ");
  EXPECT_EQ(Raised([&] { source.next(); }), "Gk_IOException");
  // Nothing is pushed back at the end, but available() raises.
  EXPECT_EQ(Text(source.next()), "c");
  EXPECT_EQ(Text(source.next()), "");
  EXPECT_EQ(Raised([&] { source.skipWhite(); }), "(none)");
  EXPECT_EQ(Raised([&] { source.peek(); }), "(none)");
  EXPECT_EQ(Raised([&] { source.isEmpty(); }), "Gk_IOException");
}

TEST(Gk_SourceTest, NegativeByteEndsToken) {
  struct Failing : RecordingStream {
    using RecordingStream::RecordingStream;
    int readChar() override {
      int const c = RecordingStream::readChar();
      return c == '#' ? -2 : c;
    }
  };
  Failing stream("ab#cd");
  Gk_Source source(&stream, false);
  EXPECT_EQ(Text(source.next()), "ab");
  EXPECT_EQ(Text(source.next()), "cd");
}

TEST(Gk_SourceTest, MatchPatternFindsToken) {
  Scan scan("one TWO.txt three.txt four", " ");
  Gk_ROString const two = scan.source.matchPattern("*.txt");
  EXPECT_STREQ(two, "TWO.txt");
  EXPECT_EQ(two.len(), 8);
  EXPECT_EQ(Text(scan.source.peek()), "three.txt");
  EXPECT_STREQ(scan.source.matchPattern("f?ur"), "four");
  EXPECT_EQ(scan.source.matchPattern("*").len(), 0);
  EXPECT_STREQ(two, "TWO.txt");
}

TEST(Gk_SourceTest, MatchPatternWithoutMatch) {
  Scan scan("a b c", " ");
  EXPECT_EQ(scan.source.matchPattern("x").len(), 0);
  EXPECT_EQ(Text(scan.source.next()), "");
}

TEST(Gk_SourceTest, ReadsCharacters) {
  Scan scan(" xyz q", " ");
  char c = '#';
  EXPECT_EQ(&(scan.source >> c), &scan.source);
  EXPECT_EQ(c, 'x');
  scan.source >> c;
  EXPECT_EQ(c, 'q');
  scan.source >> c;
  EXPECT_EQ(c, '\0');
}

TEST(Gk_SourceTest, ReadsStringIntoBuffer) {
  Scan scan("abc,,d", ",", true);
  char buffer[8] = "#######";
  char* text = buffer;
  EXPECT_EQ(&(scan.source >> text), &scan.source);
  EXPECT_EQ(text, buffer);
  EXPECT_EQ(std::string(buffer, 7), std::string("abc\0###", 7));
  // An empty token and the end of input leave the buffer unchanged.
  scan.source >> text;
  EXPECT_STREQ(buffer, "abc");
  scan.source >> text;
  EXPECT_STREQ(buffer, "d");
  scan.source >> text;
  EXPECT_STREQ(buffer, "d");
}

TEST(Gk_SourceTest, ReadsStringUpToZeroByte) {
  Scan scan(std::string("a\0b c d", 7), " ");
  char buffer[8] = "#######";
  char* text = buffer;
  scan.source >> text;
  EXPECT_EQ(std::string(buffer, 4), std::string("a\0##", 4));
  char* none = nullptr;
  scan.source >> none;
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(Text(scan.source.next()), "d");
}

template <class Number>
std::vector<Number> ReadNumbers(char const* text, int count) {
  Scan scan(text, " ");
  std::vector<Number> numbers;
  for (int i = 0; i < count; ++i) {
    Number number = 77;
    EXPECT_EQ(&(scan.source >> number), &scan.source);
    numbers.push_back(number);
  }
  return numbers;
}

TEST(Gk_SourceTest, ReadsIntegers) {
  char const* const text = "12 -7 0x1F 017 +5 x 12abc 2147483647 -2147483648";
  EXPECT_EQ(ReadNumbers<int>(text, 10), (std::vector<int>{12, -7, 31, 15, 5, 0, 12, 2147483647, -2147483647 - 1, 0}));
  EXPECT_EQ(ReadNumbers<long>(text, 10), (std::vector<long>{12, -7, 31, 15, 5, 0, 12, 2147483647, -2147483648L, 0}));
}

TEST(Gk_SourceTest, ReadsUnsignedIntegers) {
  char const* const text = "12 0x1F 017 x 12abc 4294967295";
  EXPECT_EQ(ReadNumbers<unsigned int>(text, 7), (std::vector<unsigned int>{12, 31, 15, 0, 12, 4294967295u, 0}));
  EXPECT_EQ(ReadNumbers<unsigned long>(text, 7), (std::vector<unsigned long>{12, 31, 15, 0, 12, 4294967295ul, 0}));
}

TEST(Gk_SourceTest, ReadsRealNumbers) {
  char const* const text = "1.5e3 -0.25 12 x .5 3.5mm 1.2.25";
  EXPECT_EQ(ReadNumbers<double>(text, 8), (std::vector<double>{1500, -0.25, 12, 0, 0.5, 3.5, 1.45, 0}));
  EXPECT_EQ(ReadNumbers<float>(text, 6), (std::vector<float>{1500, -0.25F, 12, 0, 0.5F, 3.5F}));
}

TEST(Gk_SourceTest, ReadsMixedValues) {
  Scan scan("bolt 8\t1.25 M", " \t");
  int diameter = 0;
  double pitch = 0;
  char kind = 0;
  EXPECT_EQ(Text(scan.source.next()), "bolt");
  scan.source >> diameter >> pitch >> kind;
  EXPECT_EQ(diameter, 8);
  EXPECT_EQ(pitch, 1.25);
  EXPECT_EQ(kind, 'M');
}

TEST(Gk_SourceTest, TrailingCharactersPollAbortFlag) {
  Scan scan("12 12abc", " ");
  int number = 0;
  Gk_ErrMgr::setAbort();
  scan.source >> number;
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
  EXPECT_THROW(scan.source >> number, VRELAbortException);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

TEST(Gk_SourceTest, ReadsFiles) {
  ScratchDirectory const directory;
  VRELFilePath const path(directory.Write("file", "  one two\nthree ").c_str());
  VRELFileInputStream stream(path);
  Gk_Source source(&stream, false);
  source.setWhiteSpace(" \n");
  EXPECT_EQ(Text(source.peek()), "one");
  EXPECT_EQ(stream.getCurrentOffset(), 0);
  EXPECT_EQ(Text(source.next()), "one");
  EXPECT_EQ(stream.getCurrentOffset(), 5);
  EXPECT_FALSE(source.isEmpty());
  EXPECT_EQ(stream.getCurrentOffset(), 6);
  EXPECT_EQ(All(source, &Gk_Source::next), (Tokens{"two", "three", ""}));
  EXPECT_TRUE(source.isEmpty());
}

// Model of the tokenizer on a string and a position.
class Model {
 public:
  Model(std::string givenText, std::string givenDelimiters)
      : text(std::move(givenText)), delimiters(std::move(givenDelimiters)) {}

  std::string Next() {
    place = std::min(text.find_first_not_of(delimiters, place), text.size());
    return TakeToDelimiter(place);
  }
  std::string NextString() {
    if (AtDelimiter()) ++place;
    return TakeToDelimiter(place);
  }
  std::string NextLine() { return place == text.size() ? "" : TakeToDelimiter(place + 1); }
  std::string Peek() {
    std::size_t const before = place;
    std::string token = Next();
    place = before;
    return token;
  }
  bool IsEmpty() {
    place = std::min(text.find_first_not_of(delimiters, place), text.size());
    return place == text.size();
  }

 private:
  bool AtDelimiter() const { return place < text.size() && delimiters.find(text[place]) != std::string::npos; }
  std::string TakeToDelimiter(std::size_t searchFrom) {
    std::size_t const end = std::min(text.find_first_of(delimiters, searchFrom), text.size());
    std::string token = text.substr(place, end - place);
    place = end;
    return token;
  }

  std::string text;
  std::string delimiters;
  std::size_t place = 0;
};

TEST(Gk_SourceTest, AgreesWithModel) {
  std::mt19937 random(4711);
  for (int round = 0; round < 500; ++round) {
    SCOPED_TRACE(round);
    std::string const delimiters = std::string(" ,\n\xFE").substr(0, random() % 5);
    std::string text;
    for (std::size_t i = random() % 60; i > 0; --i)
      text +=
          " ,\n\xFE"
          "abc\x01"[random() % 8];
    Model model(text, delimiters);
    Scan scan(text, delimiters.c_str(), true);
    for (int step = 0; step < 30; ++step) {
      switch (random() % 5) {
        case 0:
          EXPECT_EQ(Text(scan.source.next()), model.Next());
          break;
        case 1:
          EXPECT_EQ(Text(scan.source.nextString()), model.NextString());
          break;
        case 2:
          EXPECT_EQ(Text(scan.source.nextLine()), model.NextLine());
          break;
        case 3:
          EXPECT_EQ(Text(scan.source.peek()), model.Peek());
          break;
        default:
          EXPECT_EQ(scan.source.isEmpty(), model.IsEmpty());
          break;
      }
    }
  }
}

}  // namespace
