#include "Gk_String.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <string_view>

#include "VRELAllocException.h"

namespace {

using namespace std::string_view_literals;

// Returns all elements, terminators included.
std::string elements(Gk_String const& string) {
  char const* const bytes = string;
  return bytes == nullptr ? std::string() : std::string(bytes, static_cast<std::size_t>(string.len()));
}

TEST(Gk_StringTest, IsSingleArray) {
  EXPECT_EQ(sizeof(Gk_String), sizeof(VRELDynamicArray<char>));
}

TEST(Gk_StringTest, Construction) {
  Gk_String const empty;
  EXPECT_EQ(empty.len(), 0);
  EXPECT_EQ(empty.dataLen(), 0);
  EXPECT_EQ(static_cast<char*>(empty), nullptr);

  Gk_String const null(nullptr);
  EXPECT_EQ(null.len(), 1);
  EXPECT_EQ(null.dataLen(), 0);
  EXPECT_STREQ(null, "");

  EXPECT_EQ(Gk_String("").len(), 1);
  EXPECT_EQ(elements("abc"), "abc\0"sv);
  EXPECT_EQ(Gk_String("abc").len(), 4);
  EXPECT_EQ(Gk_String("abc").dataLen(), 3);

  EXPECT_EQ(elements(Gk_String("abcdef", 3)), "abc");
  EXPECT_EQ(Gk_String("abcdef", 3).dataLen(), 3);
  EXPECT_EQ(elements(Gk_String("a\0b", 3)), "a\0b"sv);
  EXPECT_EQ(Gk_String("abc", 0).len(), 0);
  EXPECT_EQ(Gk_String("abc", -1).len(), 0);
  EXPECT_EQ(Gk_String(nullptr, 3).len(), 0);
}

TEST(Gk_StringTest, ConstructionFromView) {
  EXPECT_EQ(elements(Gk_String(Gk_ROString("abc"))), "abc\0"sv);
  EXPECT_EQ(elements(Gk_String(Gk_ROString("abc", 3))), "abc\0"sv);
  EXPECT_EQ(elements(Gk_String(Gk_ROString("a", 1))), "a\0"sv);
  EXPECT_EQ(elements(Gk_String(Gk_ROString("ab\0", 4))), "ab\0\0"sv);
  Gk_ROString view("abcdef");
  view.offset(4);
  EXPECT_EQ(elements(Gk_String(view)), "ef\0"sv);
  EXPECT_EQ(Gk_String(Gk_ROString()).len(), 0);
}

TEST(Gk_StringTest, CopiesOnlyBytesInsideView) {
  Gk_ROString before("abc");
  before.offset(-7);
  EXPECT_EQ(elements(Gk_String(before)), "abc\0"sv);
  before.offset(INT_MIN);
  EXPECT_EQ(elements(Gk_String(before)), "abc\0"sv);
  Gk_ROString after("abc");
  after.offset(9);
  EXPECT_EQ(Gk_String(after).len(), 0);
  Gk_String string("xy");
  string.append(before);
  EXPECT_EQ(elements(string), "xyabc\0"sv);
  string.append(after);
  EXPECT_EQ(elements(string), "xyabc\0"sv);
}

TEST(Gk_StringTest, ConstructionFromViewCopies) {
  Gk_String source("abc");
  Gk_String const string(Gk_ROString(source.dataStr()));
  source[0] = 'X';
  EXPECT_STREQ(string, "abc");
}

TEST(Gk_StringTest, CopyConstructorSharesAndCopyDoesNot) {
  Gk_String first("abc");
  Gk_String second(first);
  Gk_String third;
  third = first;
  Gk_String const own = first.copy();
  second[0] = 'X';
  third.append("d");
  EXPECT_STREQ(first, "Xbcd");
  EXPECT_STREQ(second, "Xbcd");
  EXPECT_EQ(elements(own), "abc\0"sv);
  second.clear();
  EXPECT_EQ(first.len(), 0);
  EXPECT_EQ(Gk_String().copy().len(), 0);
}

TEST(Gk_StringTest, ReadsAndWritesBytes) {
  Gk_String string("abc");
  string[1] = 'X';
  static_cast<char*>(string)[2] = 'Y';
  EXPECT_STREQ(string, "aXY");
  Gk_String const& constant = string;
  EXPECT_EQ(constant[1], 'X');
  EXPECT_EQ(constant[3], '\0');
  EXPECT_EQ(constant[4], '\0');
  EXPECT_EQ(constant[-1], '\0');
  EXPECT_EQ(constant.text(), "aXY");
  EXPECT_EQ(Gk_String("abcd", 2).text(), "ab");
  EXPECT_EQ(Gk_String("a\0b", 3).text(), "a");
  EXPECT_EQ(Gk_String().text(), "");
}

TEST(Gk_StringTest, AppendsByteAfterTerminator) {
  Gk_String string("ab");
  string.append('c');
  EXPECT_EQ(elements(string), "ab\0c"sv);
  EXPECT_EQ(string.dataLen(), 4);
  Gk_String built;
  built.append('x');
  built.append('\0');
  EXPECT_STREQ(built, "x");
}

TEST(Gk_StringTest, AppendsBytesAfterTerminator) {
  Gk_String string("ab");
  string.appendBytes("c\0d", 3);
  EXPECT_EQ(std::string_view(string, 6), std::string_view("ab\0c\0d", 6));
  EXPECT_EQ(string.len(), 6);
  string.appendBytes("x", 0);
  string.appendBytes("x", -1);
  string.appendBytes(nullptr, 1);
  EXPECT_EQ(string.len(), 6);
  string.appendBytes(string, 6);
  EXPECT_EQ(std::string_view(string, 12), std::string_view("ab\0c\0dab\0c\0d", 12));
  Gk_String empty;
  empty.appendBytes("xy", 2);
  EXPECT_EQ(std::string_view(empty, 2), "xy");
  EXPECT_EQ(empty.len(), 2);
}

TEST(Gk_StringTest, IteratesOverElements) {
  Gk_String const string("ab");
  EXPECT_EQ(std::string(string.begin(), string.end()), std::string("ab\0", 3));
  Gk_String const empty;
  EXPECT_EQ(empty.begin(), empty.end());
}

TEST(Gk_StringTest, ReportsSharedBytes) {
  Gk_String const string("ab");
  EXPECT_FALSE(string.isShared());
  {
    Gk_String const other(string);
    EXPECT_TRUE(string.isShared());
    EXPECT_TRUE(other.isShared());
  }
  EXPECT_FALSE(string.isShared());
  EXPECT_FALSE(string.copy().isShared());
  Gk_RWString const view = string.dataStr();
  EXPECT_TRUE(string.isShared());
}

TEST(Gk_StringTest, AppendsCString) {
  Gk_String string("ab");
  string.append("cd");
  EXPECT_EQ(elements(string), "abcd\0"sv);
  string.append(static_cast<char const*>(nullptr));
  EXPECT_EQ(elements(string), "abcd\0"sv);
  string.append("");
  EXPECT_EQ(elements(string), "abcd\0"sv);
  Gk_String empty;
  empty.append("x");
  EXPECT_EQ(elements(empty), "x\0"sv);
  // The last element is removed, even if it is not a terminator.
  Gk_String open("abc", 3);
  open.append("X");
  EXPECT_EQ(elements(open), "abX\0"sv);
}

TEST(Gk_StringTest, AppendsString) {
  Gk_String string("ab");
  string.append(Gk_String("cd"));
  EXPECT_EQ(elements(string), "abcd\0"sv);
  string.append(Gk_String("ef", 2));
  EXPECT_EQ(elements(string), "abcdef"sv);
  string.append(Gk_String());
  EXPECT_EQ(elements(string), "abcde"sv);
  Gk_String empty;
  empty.append(Gk_String());
  EXPECT_EQ(empty.len(), 0);
  empty.append(Gk_String("a\0b", 3));
  EXPECT_EQ(elements(empty), "a\0b"sv);
}

TEST(Gk_StringTest, AppendsView) {
  Gk_String string("ab");
  string.append(Gk_ROString("cd"));
  EXPECT_EQ(elements(string), "abcd\0"sv);
  string.append(Gk_ROString("ef", 2));
  EXPECT_EQ(elements(string), "abcdef\0"sv);
  Gk_ROString view("xyz");
  view.offset(2);
  string.append(view);
  EXPECT_EQ(elements(string), "abcdefz\0"sv);
  string.append(Gk_ROString());
  EXPECT_EQ(elements(string), "abcdefz\0"sv);
  // The byte before the start of the view has no effect.
  Gk_ROString afterZero("\0a", 2);
  afterZero.offset(1);
  string.append(afterZero);
  EXPECT_EQ(elements(string), "abcdefza\0"sv);
  Gk_String empty;
  empty.append(Gk_ROString("x", 1));
  EXPECT_EQ(elements(empty), "x\0"sv);
}

TEST(Gk_StringTest, AppendsCountedBytes) {
  Gk_String string("ab");
  char bytes[] = "cdef";
  string.append(2, bytes);
  EXPECT_EQ(elements(string), "abcd\0"sv);
  string.append(5, bytes);
  EXPECT_EQ(elements(string), "abcdcdef\0"sv);
  string.append(0, bytes);
  string.append(-1, bytes);
  string.append(3, nullptr);
  EXPECT_EQ(elements(string), "abcdcdef\0"sv);
}

TEST(Gk_StringTest, TooManyBytesThrow) {
  Gk_String string("ab");
  EXPECT_THROW(string.append(INT_MAX, "x"), VRELAllocException);
  EXPECT_THROW(string.append(INT_MAX - 2, "x"), VRELAllocException);
  EXPECT_EQ(elements(string), "ab\0"sv);
}

TEST(Gk_StringTest, AppendsItself) {
  // Lengths with and without growth.
  for (std::string const& text : {std::string("ab"), std::string("abcdefgh"), std::string(100, 'x')}) {
    SCOPED_TRACE(text);
    std::string const twice = text + text + '\0';
    Gk_String byString(text.c_str());
    byString.append(byString);
    EXPECT_EQ(elements(byString), twice);
    Gk_String shared(text.c_str());
    shared.append(Gk_String(shared));
    EXPECT_EQ(elements(shared), twice);
    Gk_String byView(text.c_str());
    byView.append(Gk_ROString(byView.dataStr()));
    EXPECT_EQ(elements(byView), twice);
    Gk_String byPointer(text.c_str());
    byPointer.append(static_cast<char const*>(byPointer));
    EXPECT_EQ(elements(byPointer), twice);
    Gk_String byTail(text.c_str());
    byTail.append(&byTail[1]);
    EXPECT_EQ(elements(byTail), text + text.substr(1) + '\0');
    Gk_String counted(text.c_str());
    counted.append(1, &counted[1]);
    EXPECT_EQ(elements(counted), text + text[1] + '\0');
  }
  // The appended part includes the last element, which is overwritten first.
  Gk_String open("abc", 3);
  open.append(open);
  EXPECT_EQ(elements(open), "ababc");
  Gk_String openText("abc", 3);
  openText.append(static_cast<char const*>(openText));
  EXPECT_EQ(elements(openText), "ababc\0"sv);
  Gk_String openTail("abc", 3);
  openTail.append(&openTail[1]);
  EXPECT_EQ(elements(openTail), "abbc\0"sv);
}

TEST(Gk_StringTest, Chop) {
  struct {
    int n;
    std::string_view result;
  } const rows[] = {
      {INT_MAX, "abc\0"sv}, {5, "abc\0"sv}, {4, "abc\0"sv}, {3, "abc\0\0"sv},  {2, "abc\0"sv},
      {1, "ab\0"sv},        {0, "a\0"sv},   {-1, "\0"sv},   {INT_MIN, "\0"sv},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.n);
    Gk_String string("abc");
    string.chop(row.n);
    EXPECT_EQ(elements(string), row.result);
  }
  Gk_String empty;
  empty.chop(0);
  EXPECT_EQ(empty.len(), 0);
}

TEST(Gk_StringTest, ChopAtDotKeepsDot) {
  Gk_String name("bolt.old");
  name.chop(Gk_ROString(name.dataStr()).find('.'));
  name.append("txt");
  EXPECT_STREQ(name, "bolt.txt");
}

TEST(Gk_StringTest, Ensure) {
  struct {
    int n;
    std::string_view result;
  } const rows[] = {
      {5, "ab  \0"sv}, {4, "ab \0"sv}, {3, "ab\0"sv}, {2, "ab\0\0"sv},
      {1, "ab\0"sv},   {0, "a\0"sv},   {-1, "\0"sv},  {INT_MIN, "\0"sv},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.n);
    Gk_String string("ab");
    string.ensure(row.n);
    EXPECT_EQ(elements(string), row.result);
  }
  Gk_String empty;
  empty.ensure(4);
  EXPECT_EQ(elements(empty), "    \0"sv);
  Gk_String single;
  single.ensure(1);
  EXPECT_EQ(elements(single), " \0"sv);
  Gk_String none;
  none.ensure(0);
  EXPECT_EQ(none.len(), 0);
  none.ensure(-5);
  EXPECT_EQ(elements(none), "\0"sv);
  Gk_String open("abc", 3);
  open.ensure(5);
  EXPECT_EQ(elements(open), "ab  \0"sv);
  Gk_String large("x");
  large.ensure(4096);
  EXPECT_EQ(large.len(), 4096);
  EXPECT_EQ(large.text(), "x" + std::string(4094, ' '));
}

TEST(Gk_StringTest, EnsureAboveIntMaxThrows) {
  Gk_String empty;
  EXPECT_THROW(empty.ensure(INT_MAX), VRELAllocException);
  EXPECT_EQ(empty.len(), 0);
}

TEST(Gk_StringTest, EnsureOfOwnLengthChangesNothing) {
  Gk_String open("abc", 3);
  open.ensure(3);
  EXPECT_EQ(elements(open), "abc");
}

TEST(Gk_StringTest, Subset) {
  struct {
    int start;
    int count;
    std::string_view result;
  } const rows[] = {
      {0, 2, "ab\0"sv},
      {1, 2, "bc\0"sv},
      {1, 100, "bcd\0"sv},
      {1, INT_MAX, "bcd\0"sv},
      {0, 5, "abcd\0"sv},
      {2, 0, "\0"sv},
      {2, -3, "\0"sv},
      {4, 1, "\0"sv},
      {5, 1, "\0"sv},
      {INT_MAX, INT_MAX, "\0"sv},
      {-1, 3, "ab\0"sv},
      {-3, 2, "\0"sv},
      {INT_MIN, INT_MAX, "\0"sv},
  };
  Gk_String string("abcd");
  for (auto const& row : rows) {
    SCOPED_TRACE(std::to_string(row.start) + ", " + std::to_string(row.count));
    EXPECT_EQ(elements(string.subset(row.start, row.count)), row.result);
  }
  EXPECT_EQ(elements(Gk_String("abcd", 4).subset(2, 9)), "cd\0"sv);
  EXPECT_EQ(elements(Gk_String().subset(0, 1)), "\0"sv);
  Gk_String part = string.subset(0, 2);
  part[0] = 'X';
  EXPECT_STREQ(string, "abcd");
}

TEST(Gk_StringTest, ShrinksBothEnds) {
  Gk_String string("abcd");
  string.shrinkEnd(1);
  EXPECT_EQ(elements(string), "abcd");
  string.shrinkEnd(2);
  EXPECT_EQ(elements(string), "ab");
  string.shrinkFront(1);
  EXPECT_EQ(elements(string), "b");
  string.shrinkFront(0);
  string.shrinkFront(-1);
  string.shrinkEnd(-1);
  EXPECT_EQ(elements(string), "b");
  string.shrinkEnd(9);
  EXPECT_EQ(string.len(), 0);
  string.shrinkFront(9);
  EXPECT_EQ(static_cast<char*>(string), nullptr);
}

TEST(Gk_StringTest, ClearRemovesAllElements) {
  Gk_String string("abc");
  string.clear();
  EXPECT_EQ(string.len(), 0);
  EXPECT_EQ(static_cast<char*>(string), nullptr);
  EXPECT_EQ(string.text(), "");
}

TEST(Gk_StringTest, ViewsShareBytes) {
  Gk_String string("abc");
  Gk_RWString const data = string.dataStr();
  EXPECT_EQ(static_cast<char const*>(data), static_cast<char*>(string));
  EXPECT_EQ(string.rwString().len(), 4);
  EXPECT_EQ(Gk_String("").dataStr().len(), 1);
  Gk_String empty;
  Gk_RWString const none = empty.dataStr();
  empty.append("abc");
  // The view of a string without elements shares nothing.
  EXPECT_EQ(none.len(), 0);
  EXPECT_EQ(Gk_String().rwString().len(), 0);
}

TEST(Gk_StringTest, Compares) {
  EXPECT_TRUE(Gk_String("abc") == Gk_String("abc"));
  EXPECT_TRUE(Gk_String("abc") == Gk_String("abc", 3));
  EXPECT_TRUE(Gk_String("a\0b", 3) == Gk_String("a"));
  EXPECT_FALSE(Gk_String("abc") == Gk_String("abd"));
  EXPECT_TRUE(Gk_String("abc") != Gk_String("ab"));
  EXPECT_TRUE(Gk_String() == Gk_String());
  EXPECT_FALSE(Gk_String() == Gk_String(""));
  EXPECT_FALSE(Gk_String("") == Gk_String());
  EXPECT_TRUE(Gk_String("") == Gk_String(nullptr));
  EXPECT_TRUE(Gk_String("abc") < Gk_String("abd"));
  EXPECT_TRUE(Gk_String("ab") < Gk_String("abc"));
  EXPECT_FALSE(Gk_String("abc") < Gk_String("abc"));
  EXPECT_TRUE(Gk_String("a") < Gk_String("\xE9"));
  EXPECT_TRUE(Gk_String() < Gk_String("a"));
  EXPECT_FALSE(Gk_String("a") < Gk_String());
}

TEST(Gk_StringTest, ComparesWithCString) {
  Gk_String const string("abc");
  EXPECT_TRUE(string == "abc");
  EXPECT_TRUE("abc" == string);
  EXPECT_TRUE(string != "abd");
  EXPECT_TRUE("abd" != string);
  EXPECT_FALSE(string == static_cast<char const*>(nullptr));
  EXPECT_TRUE(Gk_String() == static_cast<char const*>(nullptr));
  EXPECT_FALSE(Gk_String() == "");
  EXPECT_FALSE(Gk_String("") == static_cast<char const*>(nullptr));
}

// Model of the operations on a std::string with all elements.
struct StringModel {
  std::string held;

  void dropLast() {
    if (!held.empty()) held.pop_back();
  }
  void appendBytes(std::string const& bytes) {
    dropLast();
    held += bytes;
  }
  void terminate() {
    if (held.empty() || held.back() != '\0') held += '\0';
  }
  void chop(int n) {
    if (n >= static_cast<int>(held.size())) return;
    while (static_cast<int>(held.size()) > std::max(n + 1, 0)) held.pop_back();
    held += '\0';
  }
  void ensure(int n) {
    int const length = static_cast<int>(held.size());
    if (n <= length) {
      chop(n);
      return;
    }
    dropLast();
    for (int i = length; i < n; ++i) held += ' ';
    held += '\0';
  }
};

TEST(Gk_StringTest, EqualsModelOnRandomOperations) {
  std::mt19937 random(7);
  auto const upTo = [&random](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
  for (int round = 0; round < 300; ++round) {
    Gk_String string;
    Gk_String const sharer(string);
    StringModel model;
    for (int step = 0; step < 60; ++step) {
      std::string bytes(static_cast<std::size_t>(upTo(12)), ' ');
      for (char& byte : bytes) byte = "abc"[upTo(2)];
      int const count = static_cast<int>(bytes.size());
      int const operation = upTo(12);
      switch (operation) {
        case 0:
          string.append('x');
          model.held += 'x';
          break;
        case 1:
          string.append(bytes.c_str());
          model.appendBytes(bytes + '\0');
          break;
        case 2:
          string.append(Gk_String(bytes.c_str(), count));
          model.appendBytes(bytes);
          break;
        case 3:
          string.append(Gk_ROString(bytes.c_str(), count));
          model.appendBytes(bytes);
          model.terminate();
          break;
        case 4:
          string.append(count, bytes.c_str());
          model.appendBytes(bytes);
          model.terminate();
          break;
        case 5:
          string.append(sharer);
          model.appendBytes(std::string(model.held));
          break;
        case 6:
          string.chop(count);
          model.chop(count);
          break;
        case 7:
          string.ensure(count * 3);
          model.ensure(count * 3);
          break;
        case 8:
          string.shrinkEnd(count);
          model.held.erase(model.held.size() - std::min(bytes.size(), model.held.size()));
          break;
        case 9:
          string.shrinkFront(count);
          model.held.erase(0, bytes.size());
          break;
        case 10:
          string.dataStr().toLower();
          break;
        case 11: {
          int const start = upTo(20);
          std::string part = static_cast<std::size_t>(start) < model.held.size()
                                 ? model.held.substr(static_cast<std::size_t>(start), bytes.size())
                                 : std::string();
          if (part.empty() || part.back() != '\0') part += '\0';
          ASSERT_EQ(elements(string.subset(start, count)), part);
          break;
        }
        default:
          if (model.held.size() > 2000) {
            string.clear();
            model.held.clear();
          }
          break;
      }
      ASSERT_EQ(elements(string), model.held) << "round " << round << ", step " << step << ", operation " << operation;
      ASSERT_EQ(elements(sharer), model.held);
      bool const ended = !model.held.empty() && model.held.back() == '\0';
      ASSERT_EQ(string.dataLen(), static_cast<int>(model.held.size()) - (ended ? 1 : 0));
      ASSERT_EQ(elements(string.copy()), model.held);
    }
  }
}

}  // namespace
