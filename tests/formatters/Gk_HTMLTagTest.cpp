#include "Gk_HTMLTag.h"

#include <gtest/gtest.h>

#include "StreamText.h"

namespace {

using Object = VRELStreamFormatter::VRELStreamFormatterObject;

std::string Written(Object const& object) {
  return TextOf([&](VRELOutputStream* stream) { VRELStreamFormatter(stream).dump(&object); });
}

TEST(Gk_HTMLTagTest, WritesLink) {
  EXPECT_EQ(Written(Gk_HTMLTag(new Object("bolt"), new Object("a bolt"))), "<a href=\"#bolt\">a bolt</a>");
  EXPECT_EQ(Written(Gk_HTMLTag(new Object("bolt"), new Object(""))), "<a href=\"#bolt\"></a>");
}

TEST(Gk_HTMLTagTest, NullTextIsTarget) {
  EXPECT_EQ(Written(Gk_HTMLTag(new Object("bolt"), nullptr)), "<a href=\"#bolt\">bolt</a>");
}

TEST(Gk_HTMLTagTest, NullTargetIsEmpty) {
  EXPECT_EQ(Written(Gk_HTMLTag(nullptr, nullptr)), "<a href=\"#\"></a>");
}

TEST(Gk_HTMLTagTest, KeepsBothObjects) {
  VRELStreamFormatter::VRELStreamFormatterObjectHandle const target(new Object("t"));
  {
    Gk_HTMLTag const tag(target, nullptr);
    EXPECT_EQ(target->GetReferenceCount(), 3U);
  }
  EXPECT_TRUE(target.IsLastCall());
}

}  // namespace
