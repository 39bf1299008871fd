#include "Gk_ROString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "RepeatedUnits.h"
#include "VRELAllocException.h"

namespace {

VRELDynamicArray<char> arrayOf(std::string_view bytes) {
  VRELDynamicArray<char> array;
  for (char byte : bytes) array.add(byte);
  return array;
}

TEST(Gk_ROStringTest, Construction) {
  Gk_ROString const empty;
  EXPECT_EQ(empty.len(), 0);
  EXPECT_EQ(empty.text(), "");
  Gk_ROString const terminated("abc");
  EXPECT_EQ(terminated.len(), 4);
  EXPECT_STREQ(terminated, "abc");
  Gk_ROString const counted("abcdef", 3);
  EXPECT_EQ(counted.len(), 3);
  EXPECT_EQ(counted.text(), "abc");
  Gk_ROString const withZero("a\0b", 3);
  EXPECT_EQ(withZero.len(), 3);
  EXPECT_EQ(withZero[2], 'b');
  EXPECT_EQ(withZero.text(), "a");
  Gk_ROString const null(static_cast<char const*>(nullptr));
  EXPECT_EQ(null.len(), 1);
  EXPECT_STREQ(null, "");
  EXPECT_EQ(Gk_ROString(nullptr, 3).len(), 0);
  EXPECT_EQ(Gk_ROString("abc", 0).len(), 0);
  EXPECT_EQ(Gk_ROString("abc", -2).len(), 0);
}

TEST(Gk_ROStringTest, MoreBytesThanIntMaxThrow) {
  RepeatedUnits const bytes(u'\u6161', std::size_t(1) << 30);
  if (!bytes.IsMapped()) GTEST_SKIP() << "cannot map 2 GiB of addresses";
  EXPECT_THROW(Gk_ROString(reinterpret_cast<char const*>(bytes.View().data())), VRELAllocException);
}

TEST(Gk_ROStringTest, CopiesBytes) {
  char bytes[] = "abc";
  Gk_ROString const view(bytes);
  bytes[0] = 'x';
  EXPECT_STREQ(view, "abc");
}

TEST(Gk_ROStringTest, SharesArrayAndOtherView) {
  VRELDynamicArray<char> array = arrayOf("abc");
  Gk_ROString const view(array);
  Gk_ROString copy(view);
  copy.offset(1);
  array[1] = 'X';
  array.add('d');
  EXPECT_EQ(view.text(), "aXcd");
  EXPECT_EQ(copy.text(), "Xcd");
  EXPECT_EQ(view.len(), 4);
  EXPECT_EQ(copy.len(), 3);
}

TEST(Gk_ROStringTest, OffsetMovesStart) {
  Gk_ROString view("abcdef");
  view.offset(2);
  EXPECT_EQ(view.len(), 5);
  EXPECT_STREQ(view, "cdef");
  EXPECT_EQ(view[0], 'c');
  EXPECT_EQ(view[4], '\0');
  EXPECT_EQ(view[-2], 'a');
  view.offset(3);
  EXPECT_STREQ(view, "f");
  view.offset(-1);
  EXPECT_STREQ(view, "ef");
}

TEST(Gk_ROStringTest, IndexOutsideBytesReadsZero) {
  Gk_ROString const view("abc");
  EXPECT_EQ(view[4], '\0');
  EXPECT_EQ(view[-1], '\0');
  EXPECT_EQ(view[INT_MAX], '\0');
  EXPECT_EQ(view[INT_MIN], '\0');
}

TEST(Gk_ROStringTest, OffsetBeyondEndReadsNothing) {
  Gk_ROString view("abc");
  view.offset(6);
  EXPECT_EQ(view.len(), -2);
  EXPECT_EQ(view.text(), "");
  EXPECT_EQ(view[0], '\0');
  EXPECT_EQ(view[-4], 'c');
  EXPECT_EQ(view.find('a'), -1);
  EXPECT_EQ(view.find('\0'), -1);
  EXPECT_EQ(view.find(Gk_ROString("a")), -2);
  EXPECT_EQ(view.reverseFind('a', 0), -1);
  EXPECT_EQ(view.matchPathString("abc"), -1);
  EXPECT_TRUE(view.matchPathPattern("*"));
  EXPECT_TRUE(view == "");
  view.offset(-6);
  EXPECT_EQ(view.len(), 4);
  EXPECT_STREQ(view, "abc");
}

TEST(Gk_ROStringTest, OffsetBeforeStartReadsNothing) {
  Gk_ROString view("abc");
  view.offset(-2);
  EXPECT_EQ(view.len(), 6);
  EXPECT_EQ(view.text(), "");
  EXPECT_EQ(view[0], '\0');
  EXPECT_EQ(view[2], 'a');
  EXPECT_EQ(view.find('a'), 2);
  EXPECT_EQ(view.find('\0'), 5);
  EXPECT_EQ(view.find('x'), -1);
  EXPECT_EQ(view.reverseFind('a', 5), 0);
  EXPECT_EQ(view.reverseFind('c', 0), 2);
  EXPECT_EQ(view.matchPathString("abc"), -1);
  EXPECT_FALSE(view.matchPathPattern("a*"));
  view.offset(3);
  EXPECT_STREQ(view, "bc");
}

TEST(Gk_ROStringTest, OffsetStopsAtIntLimits) {
  Gk_ROString view("abc");
  view.offset(INT_MAX);
  EXPECT_EQ(view.len(), 4 - INT_MAX);
  view.offset(INT_MAX);
  EXPECT_EQ(view.len(), 4 - INT_MAX);
  view.offset(-INT_MAX);
  EXPECT_STREQ(view, "abc");
  view.offset(INT_MIN);
  EXPECT_EQ(view.len(), INT_MAX);
  view.offset(INT_MIN);
  EXPECT_EQ(view.len(), INT_MAX);
  EXPECT_EQ(view.find('a'), INT_MAX);
  EXPECT_EQ(view.reverseFind('c', INT_MIN), 2);
  EXPECT_EQ(view.text(), "");
  EXPECT_EQ(Gk_ROString(view).len(), INT_MAX);
}

TEST(Gk_ROStringTest, ViewOfShortenedArrayIsEmpty) {
  VRELDynamicArray<char> array = arrayOf("abcdef");
  Gk_ROString view(array);
  view.offset(4);
  array.resize(2);
  EXPECT_EQ(view.len(), -2);
  EXPECT_EQ(view.text(), "");
  EXPECT_EQ(view[0], '\0');
}

TEST(Gk_ROStringTest, FindsByte) {
  Gk_ROString view("abcabc");
  EXPECT_EQ(view.find('b'), 1);
  EXPECT_EQ(view.find('x'), -1);
  EXPECT_EQ(view.find('\0'), 6);
  view.offset(2);
  EXPECT_EQ(view.find('b'), 2);
  EXPECT_EQ(Gk_ROString().find('\0'), -1);
  EXPECT_EQ(Gk_ROString("abcd", 3).find('d'), -1);
  EXPECT_EQ(Gk_ROString("a\0b", 3).find('b'), 2);
}

TEST(Gk_ROStringTest, FindOfViewReturnsAddressDifference) {
  Gk_ROString const view("one two");
  EXPECT_EQ(view.find(Gk_ROString("three")), 8);
  EXPECT_EQ(view.find(Gk_ROString("two!")), 8);
  Gk_ROString const sought("two");
  auto const distance = reinterpret_cast<std::uintptr_t>(static_cast<char const*>(view)) + 4 -
                        reinterpret_cast<std::uintptr_t>(static_cast<char const*>(sought));
  EXPECT_EQ(view.find(sought), static_cast<int>(distance));

  Gk_ROString const twice("abcabc");
  Gk_ROString second(twice);
  second.offset(3);
  EXPECT_EQ(twice.find(second), -3);
  second.offset(1);
  EXPECT_EQ(twice.find(second), 1 - 4);
  // The terminator is not searched for.
  EXPECT_EQ(twice.find(twice), 0);
  // Neither view has a terminator.
  EXPECT_EQ(Gk_ROString("abc", 2).find(Gk_ROString("bc", 2)), 2);
}

TEST(Gk_ROStringTest, ReverseFind) {
  Gk_ROString view("a.b.c");
  EXPECT_EQ(view.reverseFind('.', 0), 3);
  EXPECT_EQ(view.reverseFind('\0', 0), 5);
  EXPECT_EQ(view.reverseFind('\0', 1), -1);
  // From index 6 - 1 - 2.
  EXPECT_EQ(view.reverseFind('.', 2), 3);
  EXPECT_EQ(view.reverseFind('.', 3), 1);
  EXPECT_EQ(view.reverseFind('a', 5), 0);
  EXPECT_EQ(view.reverseFind('a', 6), -1);
  EXPECT_EQ(view.reverseFind('x', 0), -1);
  EXPECT_EQ(view.reverseFind('c', -3), 4);
  EXPECT_EQ(view.reverseFind('c', INT_MIN), 4);
  EXPECT_EQ(view.reverseFind('\0', -3), 5);
  EXPECT_EQ(view.reverseFind('a', INT_MAX), -1);
}

TEST(Gk_ROStringTest, ReverseFindCountsFromArrayStart) {
  Gk_ROString view("a.b.c");
  view.offset(3);
  // 3 bytes are visible, so that the search begins at index 2 of the array: the dot at 3 is not found.
  EXPECT_EQ(view.len(), 3);
  EXPECT_EQ(view.reverseFind('.', 0), 1);
  EXPECT_EQ(view.reverseFind('c', 0), -1);
}

TEST(Gk_ROStringTest, ReverseFindNeedsTwoBytes) {
  EXPECT_EQ(Gk_ROString("").reverseFind('\0', 0), -1);
  EXPECT_EQ(Gk_ROString("a", 1).reverseFind('a', 0), -1);
  EXPECT_EQ(Gk_ROString().reverseFind('a', 0), -1);
  EXPECT_EQ(Gk_ROString("a").reverseFind('a', 0), 0);
  Gk_ROString view("abc");
  view.offset(3);
  EXPECT_EQ(view.reverseFind('a', 0), -1);
}

TEST(Gk_ROStringTest, ComparesAsStrcmpDoes) {
  EXPECT_TRUE(Gk_ROString("abc") == Gk_ROString("abc"));
  EXPECT_FALSE(Gk_ROString("abc") == Gk_ROString("abd"));
  EXPECT_TRUE(Gk_ROString("abc") != Gk_ROString("ab"));
  EXPECT_TRUE(Gk_ROString("abc", 3) == Gk_ROString("abc"));
  EXPECT_TRUE(Gk_ROString("abcd", 3) == Gk_ROString("abcx", 3));
  EXPECT_TRUE(Gk_ROString("a\0b", 3) == Gk_ROString("a\0c", 3));
  EXPECT_TRUE(Gk_ROString() == Gk_ROString(""));
  EXPECT_TRUE(Gk_ROString("abc") < Gk_ROString("abd"));
  EXPECT_TRUE(Gk_ROString("ab") < Gk_ROString("abc"));
  EXPECT_FALSE(Gk_ROString("abc") < Gk_ROString("abc"));
  EXPECT_FALSE(Gk_ROString("b") < Gk_ROString("abc"));
  EXPECT_TRUE(Gk_ROString("a") < Gk_ROString("\xE9"));
  Gk_ROString view("xabc");
  view.offset(1);
  EXPECT_TRUE(view == "abc");
  EXPECT_TRUE("abc" == view);
  EXPECT_TRUE(view != "xabc");
  EXPECT_TRUE("xabc" != view);
  EXPECT_TRUE(Gk_ROString("") == static_cast<char const*>(nullptr));
}

TEST(Gk_ROStringTest, MatchesStartOfPath) {
  struct {
    char const* path;
    char const* segment;
    int taken;
  } const rows[] = {
      {"abc/def", "abc", 4},
      {"abc/def", "ab", -1},
      {"abc/def", "abcd", -1},
      {"abc/def", "abd", -1},
      {"abc", "abc", 3},
      {"ab", "abc", -1},
      {"/abc", "/", 1},
      {"/abc", "/abc", 1},
      {"abc", "/", 0},
      {"", "/", 0},
      {"/abc", "abc", -1},
      {"/abc", "", -1},
      {"", "", 0},
      {"abc", "", -1},
      {"", "abc", -1},
      {"abc/", "abc", 4},
      {"abc//def", "abc", 4},
      {"abc/def", "abc/", -1},
      {"abc/def", "abc/def", 7},
      {"abc/def/g", "abc/def", 8},
      {"abc/def", "ABC", -1},
      {"//", "/", 1},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.path) + " with " + row.segment);
    EXPECT_EQ(Gk_ROString(row.path).matchPathString(row.segment), row.taken);
  }
}

TEST(Gk_ROStringTest, MatchesPathsWithoutTerminator) {
  EXPECT_EQ(Gk_ROString("abc/def", 3).matchPathString(Gk_ROString("abcdef", 3)), 3);
  EXPECT_EQ(Gk_ROString("abc/def", 4).matchPathString(Gk_ROString("abc", 3)), 4);
  EXPECT_EQ(Gk_ROString().matchPathString(Gk_ROString()), 0);
  Gk_ROString path("one/two/three");
  path.offset(path.matchPathString("one"));
  EXPECT_EQ(path.matchPathString("two"), 4);
}

TEST(Gk_ROStringTest, MatchesNamesAgainstPatterns) {
  struct {
    char const* name;
    char const* pattern;
    bool holds;
  } const rows[] = {
      {"Foo.TXT", "*.txt", true},
      {"foo.txt", "*.TXT", true},
      {".profile", "?profile", false},
      {".profile", "*profile", true},
      {"a/b", "a*", true},
      {"a/b", "a?b", false},
      // The end of the pattern.
      {"", "", true},
      {"a", "", false},
      {"/a", "", true},
      {"abc", "abc", true},
      {"abc/def", "abc", true},
      {"abcdef", "abc", false},
      {"ab", "abc", false},
      {"abc/def", "abc/def", true},
      {"ABC", "abc", true},
      // "?"
      {"a", "?", true},
      {"", "?", false},
      {"/", "?", false},
      {"ab", "??", true},
      {"ab", "???", false},
      {"a.b", "a?b", true},
      {"a/.b", "a/?b", false},
      {"a/xb", "a/?b", true},
      // A backslash.
      {"*", "\\*", true},
      {"a", "\\*", false},
      {"?", "\\?", true},
      {"[a]", "\\[a]", true},
      {"\\", "\\\\", true},
      {"A", "\\a", true},
      {"a", "\\", false},
      {"a", "a\\", false},
      {"", "\\", false},
      {"", "\\a", false},
      // Sets.
      {"b", "[abc]", true},
      {"d", "[abc]", false},
      {"B", "[abc]", true},
      {"b", "[ABC]", true},
      {"d", "[!abc]", true},
      {"d", "[^abc]", true},
      {"b", "[!abc]", false},
      {"b", "[^abc]", false},
      {"!", "[!abc]", true},
      {"^", "[^abc]", true},
      {"^", "[!abc]", true},
      {"!", "[!!]", false},
      {"", "[abc]", false},
      {"", "[!abc]", false},
      {".", "[.]", false},
      {".", "[!a]", false},
      {"a/.", "a/[.]", false},
      {"a.b", "a[.]b", true},
      {"a.b", "a[!x]b", true},
      {"c", "[a-d]", true},
      {"e", "[a-d]", false},
      {"C", "[a-d]", true},
      {"c", "[A-D]", true},
      {"c", "[!a-d]", false},
      {"b", "[a-]", false},
      {"a", "[a-]", true},
      {"-", "[a-]", true},
      {"-", "[-a]", true},
      {"b", "[-a]", false},
      {"]", "[\\]]", true},
      {"b", "[\\b]", true},
      {"\\", "[\\b]", false},
      {"c", "[\\a-\\d]", true},
      {"^", "[a^]", true},
      {"!", "[a!]", true},
      {"5", "[a-c4-6x]", true},
      {"x", "[a-c4-6x]", true},
      {"3", "[a-c4-6x]", false},
      {"c", "[d-a]", false},
      {"a", "[a", false},
      {"b", "[a", false},
      {"b", "[!a", false},
      {"a", "[", false},
      {"a", "[a\\", false},
      {"a", "[a-", false},
      {"a", "[a/b]", true},  // the rest of a matching set is not checked
      {"a", "[!a/b]", false},
      {"a", "[a\\]b]", true},
      {"a", "[a/", false},
      {"b", "[a/b]", false},
      {"c", "[!a/b]", false},
      {"a", "[a\\/]", true},
      {"b", "[a\\/]", false},
      {"a", "[a-/]", false},
      {"a", "[]", false},
      {"a", "[!]", true},
      {"a]", "[!]]", true},
      {"ab", "[ax]b", true},
      {"abx", "[a]b", false},
      {"ab/x", "[a]b", true},
      {"a/b", "a[!x]b", true},
      {"a/b", "a[+-9]b", true},
      // "*".
      {"", "*", true},
      {"a/b/c", "*", true},
      {".x", "*", true},
      {"a", "a*", true},
      {"abc", "a*c", true},
      {"abcd", "a*c", false},
      {"abc/d", "a*c", true},
      {"a/b/c.txt", "*.txt", true},
      {"a/b/c.txt", "a*c.txt", true},
      {"ab", "*\\b", true},
      {"a*", "*\\*", true},
      {"ab", "*\\", false},
      {"a[", "*\\[", true},
      {"xb", "*[ab]", true},
      {"xc", "*[ab]", false},
      {"xB/y", "*[ab]", true},
      {"a.b", "*[.]b", false},
      {"a.b", "*a[.]b", true},
      {"a.b", "*[!x]b", false},
      {".b", "*[.]b", false},
      {"a/.b", "*[.]b", false},
      {"", "*a", false},
      {"abcabc", "*abc", true},
      {"aab", "*ab", true},
      {"mississippi", "m*iss*ip*i", true},
      {"mississippi", "m*iss*ip*s", false},
      // Elements after a star.
      {"a", "*?", true},
      {"", "*?", false},
      {"/", "*?", false},
      {"/", "**", false},
      {"", "**", true},
      {"a", "a**", true},
      {"a", "a*?", false},
      {"ab/c", "a*?", true},
      {"a/c", "a*?", false},
      {".b", "*?b", true},
      {"b", "**b", false},
      {"ab", "**b", true},
      {"b", "*?b", false},
      {"abc", "a**c", true},
      {"ac", "a**c", false},
      {"ab/c", "a*?c", true},
      {"a/bc", "a*?c", false},
      // Only a later occurrence of "a" has no "/" after it.
      {"a/axb", "*a?b", true},
      {"a/axyb", "*a*?b", true},
      {"a/axyb", "*a**b", true},
      {"a/a/b", "*a*?b", false},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.name) + " against " + row.pattern);
    EXPECT_EQ(Gk_ROString(row.name).matchPathPattern(row.pattern), row.holds);
  }
}

TEST(Gk_ROStringTest, MatchesNamesAndPatternsWithoutTerminator) {
  EXPECT_TRUE(Gk_ROString("abcd", 3).matchPathPattern(Gk_ROString("abcx", 3)));
  EXPECT_TRUE(Gk_ROString("abcd", 3).matchPathPattern(Gk_ROString("a*c!", 3)));
  EXPECT_FALSE(Gk_ROString("abc", 3).matchPathPattern(Gk_ROString("ab[c]", 4)));
  EXPECT_FALSE(Gk_ROString("abc", 3).matchPathPattern(Gk_ROString("ab[c-]", 5)));
  EXPECT_FALSE(Gk_ROString("abc", 3).matchPathPattern(Gk_ROString("ab\\c", 3)));
  EXPECT_TRUE(Gk_ROString().matchPathPattern(Gk_ROString()));
  EXPECT_TRUE(Gk_ROString("ab\0c", 4).matchPathPattern(Gk_ROString("ab\0d", 4)));
  Gk_ROString name("x/.a");
  name.offset(2);
  EXPECT_FALSE(name.matchPathPattern("?a"));
}

TEST(Gk_ROStringTest, FoldsOnlyAsciiCapitals) {
  auto const folded = [](int byte) { return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte; };
  for (int inName = 1; inName < 256; ++inName) {
    std::string const name(1, static_cast<char>(inName));
    for (int inPattern = 1; inPattern < 256; ++inPattern) {
      std::string const pattern = {'\\', static_cast<char>(inPattern)};
      ASSERT_EQ(Gk_ROString(name.c_str()).matchPathPattern(pattern.c_str()), folded(inName) == folded(inPattern))
          << inName << " against " << inPattern;
    }
  }
}

TEST(Gk_ROStringTest, BytesAboveAsciiAreNotSigned) {
  EXPECT_TRUE(Gk_ROString("\xE9").matchPathPattern("\xE9"));
  EXPECT_TRUE(Gk_ROString("\xE9").matchPathPattern("[a-\xFF]"));
  EXPECT_FALSE(Gk_ROString("a").matchPathPattern("[\xE0-\xFF]"));
}

// The documented recursive matcher.
class PatternModel {
 public:
  PatternModel(std::string_view aName, std::string_view aPattern) : name(aName), pattern(aPattern) {}

  bool Match(std::size_t n, std::size_t p) const {
    std::size_t const begin = n;
    while (true) {
      if (p == pattern.size()) return n == name.size() || name[n] == '/';
      char const c = pattern[p];
      if (c == '*') break;
      bool const ended = n == name.size();
      bool const leading = !ended && name[n] == '.' && (n == begin || name[n - 1] == '/');
      if (c == '?') {
        if (ended || name[n] == '/' || leading) return false;
        ++p;
      } else if (c == '[') {
        if (ended || leading) return false;
        std::size_t const end = EndOfSet(Fold(name[n]), p + 1);
        if (end == 0) return false;
        p = end;
      } else {
        if (c == '\\' && ++p == pattern.size()) return false;
        if (ended || Fold(name[n]) != Fold(pattern[p])) return false;
        ++p;
      }
      ++n;
    }
    for (++p; p < pattern.size() && (pattern[p] == '?' || pattern[p] == '*'); ++p) {
      if (n < name.size() && name[n] == '/') return false;
      if (n == name.size() && pattern[p] == '?') return false;
      if (n < name.size()) ++n;
    }
    if (p == pattern.size()) return true;
    for (; n < name.size(); ++n) {
      bool const tried = pattern[p] == '[' || pattern[p] == '\\' || Fold(name[n]) == Fold(pattern[p]);
      if (tried && Match(n, p)) return true;
    }
    return false;
  }

 private:
  static int Fold(char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; }

  // Returns the index after the "]" of a set that contains the byte; 0 if it does not contain the byte.
  std::size_t EndOfSet(int byte, std::size_t p) const {
    bool const negated = p < pattern.size() && (pattern[p] == '!' || pattern[p] == '^');
    if (negated) ++p;
    for (; p < pattern.size() && pattern[p] != ']';) {
      int const low = ReadByte(p);
      int high = low;
      if (p + 1 < pattern.size() && pattern[p] == '-' && pattern[p + 1] != ']') high = ReadByte(++p);
      if (low < 0 || high < 0) return 0;
      if (low <= byte && byte <= high) return negated ? 0 : EndOfClose(p);
    }
    return p < pattern.size() && negated ? p + 1 : 0;
  }

  // Returns the folded byte; -1 for the end of the pattern and for a "/".
  int ReadByte(std::size_t& p) const {
    if (pattern[p] == '\\') ++p;
    if (p >= pattern.size() || pattern[p] == '/') return -1;
    return Fold(pattern[p++]);
  }

  std::size_t EndOfClose(std::size_t p) const {
    while (p < pattern.size() && pattern[p] != ']') p += pattern[p] == '\\' ? 2U : 1U;
    return p < pattern.size() ? p + 1 : 0;
  }

  std::string_view name;
  std::string_view pattern;
};

std::string randomText(std::mt19937& random, std::string_view alphabet, std::size_t longest) {
  std::string text(random() % (longest + 1), ' ');
  for (char& byte : text) byte = alphabet[random() % alphabet.size()];
  return text;
}

TEST(Gk_ROStringTest, EqualsRecursiveModel) {
  std::mt19937 random(20011);
  std::string_view const patternAlphabets[] = {"ab*?/.", "aB.*?[]!-\\/", "a**?/", "ab*[!a]"};
  std::string_view const nameAlphabets[] = {"ab/.", "a/", "abB.-]", "a"};
  int matches = 0;
  int const pairs = 200000;
  for (int i = 0; i < pairs; ++i) {
    std::string const pattern = randomText(random, patternAlphabets[random() % 4], 10);
    std::string const name = randomText(random, nameAlphabets[random() % 4], 9);
    bool const expected = PatternModel(name, pattern).Match(0, 0);
    matches += expected ? 1 : 0;
    ASSERT_EQ(Gk_ROString(name.c_str()).matchPathPattern(pattern.c_str()), expected) << name << " against " << pattern;
  }
  EXPECT_GT(matches, pairs / 20);
  EXPECT_LT(matches, pairs * 19 / 20);
}

TEST(Gk_ROStringTest, HostilePatternsNeedPolynomialTime) {
  std::string const name(10000, 'a');
  std::string stars;
  for (int i = 0; i < 1000; ++i) stars += "*a";
  EXPECT_FALSE(Gk_ROString(name.c_str()).matchPathPattern("*a*a*a*a*b"));
  EXPECT_TRUE(Gk_ROString(name.c_str()).matchPathPattern("*a*a*a*a*a"));
  EXPECT_FALSE(Gk_ROString(name.c_str()).matchPathPattern((stars + "*b").c_str()));
  EXPECT_TRUE(Gk_ROString(name.c_str()).matchPathPattern((stars + "*a").c_str()));
  EXPECT_FALSE(Gk_ROString(name.c_str()).matchPathPattern("*[a-z]*[a-z]*[a-z]*[a-z]*[a-z]*b"));
}

}  // namespace
