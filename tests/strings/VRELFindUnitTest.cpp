#include "VRELFindUnit.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <string>

namespace {

constexpr std::size_t npos = std::u16string_view::npos;

// Models: plain loops.
std::size_t FirstByLoop(std::u16string_view text, char16_t unit, std::size_t start) {
  for (std::size_t i = start; i < text.size(); ++i) {
    if (text[i] == unit) return i;
  }
  return npos;
}

std::size_t LastByLoop(std::u16string_view text, char16_t unit) {
  for (std::size_t i = text.size(); i > 0; --i) {
    if (text[i - 1] == unit) return i - 1;
  }
  return npos;
}

TEST(VRELFindUnitTest, ReturnsIndexOrNpos) {
  EXPECT_EQ(VRELFindUnit(u"a/b/c", u'/'), 1u);
  EXPECT_EQ(VRELFindUnit(u"a/b/c", u'/', 2), 3u);
  EXPECT_EQ(VRELFindUnit(u"a/b/c", u'/', 4), npos);
  EXPECT_EQ(VRELFindUnit(u"a/b/c", u'/', 99), npos);
  EXPECT_EQ(VRELFindUnit(u"", u'/'), npos);
  EXPECT_EQ(VRELFindUnit(u"component/group/option", u'/', 10), 15u);
  EXPECT_EQ(VRELFindUnit(u"component/group/option", u'/', 99), npos);
  EXPECT_EQ(VRELFindLastUnit(u"a/b/c", u'/'), 3u);
  EXPECT_EQ(VRELFindLastUnit(u"component/group/option", u'/'), 15u);
  EXPECT_EQ(VRELFindLastUnit(u"", u'/'), npos);
}

// A match of half a unit, or of the halves of two neighbours, is none.
TEST(VRELFindUnitTest, ComparesWholeUnits) {
  std::u16string const halves(20, u'\u2F2F');
  EXPECT_EQ(VRELFindUnit(halves, u'\u002F'), npos);
  EXPECT_EQ(VRELFindLastUnit(halves, u'\u002F'), npos);
  EXPECT_EQ(VRELFindUnit(std::u16string(20, u'\u122F'), u'\u2F12'), npos);
  std::u16string signs(20, u'x');
  signs[13] = u'\uFFFF';
  EXPECT_EQ(VRELFindUnit(signs, u'\uFFFF'), 13u);
  EXPECT_EQ(VRELFindLastUnit(signs, u'\uFFFF'), 13u);
}

TEST(VRELFindUnitTest, AgreesWithLoopAtAllLengthsAndAlignments) {
  for (std::size_t offset = 0; offset < 8; ++offset) {
    for (std::size_t size = 0; size <= 34; ++size) {
      for (std::size_t first = 0; first <= size; ++first) {
        for (std::size_t second = first; second <= size; ++second) {
          // Matches next to the text on both sides must not be found.
          std::u16string buffer(offset + size + 8, u';');
          std::fill_n(buffer.begin() + static_cast<std::ptrdiff_t>(offset), size, u'x');
          if (first < size) buffer[offset + first] = u';';
          if (second < size) buffer[offset + second] = u';';
          std::u16string_view const text(buffer.data() + offset, size);
          ASSERT_EQ(VRELFindLastUnit(text, u';'), LastByLoop(text, u';')) << size << " " << first << " " << second;
          for (std::size_t start = 0; start <= size + 1; ++start) {
            ASSERT_EQ(VRELFindUnit(text, u';', start), FirstByLoop(text, u';', start))
                << size << " " << first << " " << second << " " << start;
          }
        }
      }
    }
  }
}

// The text fills the end, and then the start, of the only page that can be read.
TEST(VRELFindUnitTest, ReadsNothingOutsideText) {
  auto const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  void* const pages = mmap(nullptr, 3 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(pages, MAP_FAILED);
  char* const readable = static_cast<char*>(pages) + page;
  ASSERT_EQ(mprotect(readable, page, PROT_READ | PROT_WRITE), 0);
  auto* const units = reinterpret_cast<char16_t*>(readable);
  std::size_t const count = page / sizeof(char16_t);
  std::fill_n(units, count, u'x');
  for (std::size_t size = 0; size <= 34; ++size) {
    std::u16string_view const atEnd(units + (count - size), size);
    std::u16string_view const atStart(units, size);
    for (std::size_t start = 0; start <= size; ++start) {
      EXPECT_EQ(VRELFindUnit(atEnd, u';', start), npos);
      EXPECT_EQ(VRELFindUnit(atStart, u';', start), npos);
    }
    EXPECT_EQ(VRELFindLastUnit(atEnd, u';'), npos);
    EXPECT_EQ(VRELFindLastUnit(atStart, u';'), npos);
  }
  munmap(pages, 3 * page);
}

}  // namespace
