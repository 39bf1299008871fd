#include "Utf8StreamFormatter.h"

#include <gtest/gtest.h>

#include "VRELFileHeader.h"
#include "VRELString.h"
#include "VRELStringOutputStream.h"
#include "VRELValue.h"

namespace {

template <class Write>
std::string Written(Write write) {
  VRELStringOutputStream stream;
  {
    Utf8StreamFormatter out(&stream);
    write(out);
  }
  stream.writeChar('\0');
  return stream.contents();
}

}  // namespace

TEST(Utf8StreamFormatterTest, StringsBecomeUtf8) {
  EXPECT_EQ(Written([](VRELStreamFormatter& out) { out << VRELString(L"J\u00F6rg \u30D6 \U0001F529"); }),
            "J\xC3\xB6rg \xE3\x83\x96 \xF0\x9F\x94\xA9");
  EXPECT_EQ(Written([](VRELStreamFormatter& out) { out << VRELString(std::u16string_view(u"a\xD83D")); }),
            "a\xEF\xBF\xBD");
  EXPECT_EQ(Written([](VRELStreamFormatter& out) { out << VRELString() << VRELValue(VRELString(L"\u2300 9")); }),
            "\xE2\x8C\x80 9");
}

TEST(Utf8StreamFormatterTest, OtherValuesAreUnchanged) {
  EXPECT_EQ(Written([](VRELStreamFormatter& out) { out << "a%s" << 'b' << 12 << out.space() << 1.5 << out.endline(); }),
            "a%sb12 1.500000\n");
}

TEST(Utf8StreamFormatterTest, FileHeaderIsUtf8) {
  VRELFileHeader header;
  header.AddSection(VRELString(L"Pr\u00FCfling"));
  header.Set(VRELFileHeader::AUTHOR, VRELString(L"\u4F50\u85E4 Yui"));
  EXPECT_EQ(Written([&header](VRELStreamFormatter& out) { out << header; }),
            "Pr\xC3\xBC"
            "fling\n"
            "Author                   : \xE4\xBD\x90\xE8\x97\xA4 Yui\n");
}
