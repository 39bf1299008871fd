#include "VRELConvertedSize.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unicode/ustring.h>
#include <unistd.h>

#include <climits>
#include <string>

namespace {

// Maps `units` UTF-16 units, all of the same value, with the memory of 2 MiB only.
class RepeatedUnits {
 public:
  RepeatedUnits(char16_t unit, std::size_t units) : count(units), size(units * sizeof(char16_t)) {
    constexpr std::size_t block = std::size_t(1) << 21;
    std::u16string const content(block / sizeof(char16_t), unit);
    int const file = memfd_create("units", 0);
    if (file < 0 || write(file, content.data(), block) != static_cast<ssize_t>(block)) return;
    void* const place = mmap(nullptr, size + block, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (place == MAP_FAILED) return;
    base = static_cast<char*>(place);
    for (std::size_t at = 0; at < size; at += block) {
      if (mmap(base + at, block, PROT_READ, MAP_SHARED | MAP_FIXED, file, 0) == MAP_FAILED) isMapped = false;
    }
    close(file);
  }
  ~RepeatedUnits() {
    if (base != nullptr) munmap(base, size + (std::size_t(1) << 21));
  }

  bool IsMapped() const { return base != nullptr && isMapped; }
  std::u16string_view View() const { return {reinterpret_cast<char16_t const*>(base), count}; }

 private:
  std::size_t count;
  std::size_t size;
  char* base = nullptr;
  bool isMapped = true;
};

int Utf8Length(std::u16string_view part) {
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t length = 0;
  u_strToUTF8(nullptr, 0, &length, part.data(), static_cast<std::int32_t>(part.size()), &status);
  return length;
}

TEST(VRELConvertedSizeTest, AddsPartsAndTerminator) {
  auto const units = [](std::u16string_view part) { return static_cast<int>(part.size()); };
  EXPECT_EQ(VRELConvertedSize(u"", units), 1);
  EXPECT_EQ(VRELConvertedSize(u"abcdefg", units, 3), 8);
  EXPECT_EQ(VRELConvertedSize(u"abcdefg", units, 1), 8);
}

TEST(VRELConvertedSizeTest, DoesNotDivideSurrogatePairs) {
  EXPECT_EQ(VRELConvertedSize(u"a\U0001F600b", Utf8Length, 2), 7);
  EXPECT_EQ(VRELConvertedSize(u"\U0001F600\U0001F600", Utf8Length, 3), 9);
  // Parts of one unit cannot keep a pair together; the size stays positive.
  EXPECT_GT(VRELConvertedSize(u"\U0001F600", Utf8Length, 1), 0);
}

TEST(VRELConvertedSizeTest, SizeAboveIntMaxIsZero) {
  auto const half = [](std::u16string_view) { return 1 << 30; };
  EXPECT_EQ(VRELConvertedSize(u"a", half, 1), (1 << 30) + 1);
  EXPECT_EQ(VRELConvertedSize(u"ab", half, 1), 0);
  EXPECT_EQ(VRELConvertedSize(u"abcd", half, 1), 0);
  auto const almost = [](std::u16string_view) { return INT_MAX - 1; };
  EXPECT_EQ(VRELConvertedSize(u"a", almost, 1), INT_MAX);
  auto const full = [](std::u16string_view) { return INT_MAX; };
  EXPECT_EQ(VRELConvertedSize(u"a", full, 1), 0);
}

// ICU reports a negative length for the whole string.
TEST(VRELConvertedSizeTest, EightHundredMillionEuroSigns) {
  RepeatedUnits const text(u'\u20AC', 800'000'000);
  if (!text.IsMapped()) GTEST_SKIP() << "cannot map 1.6 GB of addresses";
  EXPECT_EQ(VRELConvertedSize(text.View(), Utf8Length), 0);
  EXPECT_TRUE(VRELMayExceedInt(text.View()));
  EXPECT_EQ(VRELConvertedSize(text.View().substr(0, 700'000'000), Utf8Length), 2'100'000'001);
}

}  // namespace
