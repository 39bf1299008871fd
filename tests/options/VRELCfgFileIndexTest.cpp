#include "detail/VRELCfgFileIndex.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string_view NameOf(std::string const& object) {
  return object;
}

TEST(VRELCfgFileIndexTest, FindsFirstObject) {
  VRELCfgFileIndex<std::string_view, std::string> index;
  std::vector<std::unique_ptr<std::string>> owned;
  std::vector<std::string*> objects;
  for (int i = 0; i < 200; ++i) {
    // Each name occurs twice.
    owned.push_back(std::make_unique<std::string>(std::to_string(i * 7 % 100)));
    objects.push_back(owned.back().get());
    for (int wanted = 0; wanted <= 100; ++wanted) {
      std::string const name = std::to_string(wanted);
      std::string* expected = nullptr;
      for (std::string* const object : objects) {
        if (expected == nullptr && *object == name) expected = object;
      }
      EXPECT_EQ(index.Find(objects.data(), static_cast<int>(objects.size()), name, NameOf), expected);
    }
  }
}

TEST(VRELCfgFileIndexTest, EmptyIndex) {
  VRELCfgFileIndex<std::string_view, std::string> index;
  std::string* const* const none = nullptr;
  EXPECT_EQ(index.Find(none, 0, "", NameOf), nullptr);
}

}  // namespace
