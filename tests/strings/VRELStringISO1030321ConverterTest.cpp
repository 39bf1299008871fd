#include "VRELStringISO1030321Converter.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

class OpenConverter : public VRELStringISO1030321Converter {
 public:
  char const* Held() const { return USAsciiString; }
};

TEST(VRELStringISO1030321ConverterTest, InitiallyNull) {
  OpenConverter const converter;
  EXPECT_EQ(converter.Held(), nullptr);
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELStringISO1030321Converter>);
}

TEST(VRELStringISO1030321ConverterTest, CopiesString) {
  OpenConverter converter;
  char text[] = "text";
  converter.ResetUSAsciiString(text);
  EXPECT_NE(converter.Held(), text);
  text[0] = 'n';
  EXPECT_STREQ(converter.Held(), "text");
  converter.ResetUSAsciiString("other");
  EXPECT_STREQ(converter.Held(), "other");
  converter.ResetUSAsciiString("");
  EXPECT_STREQ(converter.Held(), "");
  converter.ResetUSAsciiString(nullptr);
  EXPECT_EQ(converter.Held(), nullptr);
}

TEST(VRELStringISO1030321ConverterTest, AcceptsOwnString) {
  OpenConverter converter;
  converter.ResetUSAsciiString("some text");
  converter.ResetUSAsciiString(converter.Held());
  EXPECT_STREQ(converter.Held(), "some text");
  converter.ResetUSAsciiString(converter.Held() + 5);
  EXPECT_STREQ(converter.Held(), "text");
}

TEST(VRELStringISO1030321ConverterTest, ReleasesString) {
  OpenConverter converter;
  converter.ResetUSAsciiString("text");
  converter.ReleaseUSAsciiString();
  EXPECT_EQ(converter.Held(), nullptr);
  converter.ReleaseUSAsciiString();
  EXPECT_EQ(converter.Held(), nullptr);
}

}  // namespace
