#include "PathNames.h"

#include <gtest/gtest.h>

TEST(PathNamesTest, SplitsPaths) {
  struct Row {
    char const* path;
    char const* folder;
    char const* base;
    char const* extension;
  };
  Row const rows[] = {{"", "", "", ""},
                      {"a", "", "a", ""},
                      {"a.b", "", "a.b", ".b"},
                      {"x/a.b.c", "x/", "a.b.c", ".c"},
                      {"x.y/a", "x.y/", "a", ""},
                      {"x/", "x/", "", ""},
                      {".a", "", ".a", ""},
                      {"..a", "", "..a", ".a"},
                      {"a.", "", "a.", "."},
                      {"/a.b", "/", "a.b", ".b"},
                      {"/x/y/z", "/x/y/", "z", ""}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(FolderOf(row.path), row.folder);
    EXPECT_EQ(BaseNameOf(row.path), row.base);
    EXPECT_EQ(ExtensionOf(row.path), row.extension);
  }
}
