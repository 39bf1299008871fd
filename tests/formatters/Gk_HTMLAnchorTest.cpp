#include "Gk_HTMLAnchor.h"

#include <gtest/gtest.h>

#include "StreamText.h"

namespace {

using Object = VRELStreamFormatter::VRELStreamFormatterObject;

std::string Written(Object const& object) {
  return TextOf([&](VRELOutputStream* stream) { VRELStreamFormatter(stream).dump(&object); });
}

TEST(Gk_HTMLAnchorTest, WritesAnchor) {
  EXPECT_EQ(Written(Gk_HTMLAnchor(new Object("bolt"), new Object("a bolt"))), "<a name= \"bolt\">a bolt</a>");
  EXPECT_EQ(Written(Gk_HTMLAnchor(new Object("bolt"), new Object(""))), "<a name= \"bolt\"></a>");
}

TEST(Gk_HTMLAnchorTest, NullTextIsName) {
  EXPECT_EQ(Written(Gk_HTMLAnchor(new Object("bolt"), nullptr)), "<a name= \"bolt\">bolt</a>");
}

TEST(Gk_HTMLAnchorTest, NullNameIsEmpty) {
  EXPECT_EQ(Written(Gk_HTMLAnchor(nullptr, nullptr)), "<a name= \"\"></a>");
}

TEST(Gk_HTMLAnchorTest, KeepsBothObjects) {
  VRELStreamFormatter::VRELStreamFormatterObjectHandle const name(new Object("n"));
  {
    Gk_HTMLAnchor const anchor(name, nullptr);
    EXPECT_EQ(name->GetReferenceCount(), 3U);
  }
  EXPECT_TRUE(name.IsLastCall());
}

}  // namespace
