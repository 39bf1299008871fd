#include "StepBytes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Bytes with the padding that the functions need.
std::string Padded(std::string const& text) {
  return text + std::string(1 + kBlockPadding, '\0');
}

}  // namespace

TEST(StepBytesTest, CountDigitsEndsAtOtherByte) {
  for (std::size_t size = 0; size < 40; ++size) {
    std::string const digits = std::string("0123456789012345678901234567890123456789").substr(0, size);
    for (int byte = 0; byte < 256; ++byte) {
      if (byte >= '0' && byte <= '9') continue;
      std::string const text = Padded(digits + static_cast<char>(byte) + "5");
      ASSERT_EQ(CountDigits(text.data()), size) << byte;
    }
  }
}

TEST(StepBytesTest, CountWordBytesAgreesWithIsWordByte) {
  for (std::size_t size : {0U, 1U, 15U, 16U, 17U, 31U, 33U}) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string const text = Padded(std::string(size, 'A') + static_cast<char>(byte));
      bool const isWord = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
                          (byte >= '0' && byte <= '9') || byte == '_' || byte == '-';
      ASSERT_EQ(CountWordBytes(text.data()), isWord ? size + 1 : size) << byte;
    }
  }
}

TEST(StepBytesTest, NumberOfDigitsReadsUpTo18) {
  std::string const digits = "987654321012345678";
  std::uint64_t expected = 0;
  for (std::size_t size = 1; size <= digits.size(); ++size) {
    expected = expected * 10 + static_cast<std::uint64_t>(digits[size - 1] - '0');
    for (char const* const after : {"", "0", "9999999999", ",", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}) {
      EXPECT_EQ(NumberOfDigits(Padded(digits.substr(0, size) + after).data(), size), expected) << size << after;
    }
  }
  EXPECT_EQ(NumberOfDigits(Padded("00000007").data(), 8), 7U);
  EXPECT_EQ(NumberOfDigits(Padded("999999999999999999").data(), 18), 999999999999999999U);
}

TEST(StepBytesTest, CountsLineEnds) {
  struct Row {
    char const* text;
    bool isAfterReturn;
    long count;
  };
  for (Row const& row :
       {Row{"", false, 0}, Row{"", true, 0}, Row{"a", true, 0}, Row{"\n", false, 1}, Row{"\n", true, 0},
        Row{"\r", true, 1}, Row{"\r\n", false, 1}, Row{"\n\r", true, 1}, Row{"a\nb\rc\r\nd\n\re\r\r\nf", false, 7}}) {
    EXPECT_EQ(CountLineEnds(row.text, std::string(row.text).size(), row.isAfterReturn), row.count) << row.text;
  }
  std::string lines;
  for (int i = 0; i < 1000; ++i)
    lines += std::string(static_cast<std::size_t>(i % 50), 'x') + (i % 2 == 0 ? "\r\n" : "\n");
  EXPECT_EQ(CountLineEnds(lines.data(), lines.size(), false), 1000);
}
