#include "FileIdentity.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ScratchDirectory.h"

namespace {

bool AreEqual(std::string const& a, std::string const& b) {
  return FileIdentity::OfInput(a) == FileIdentity::OfOutput(b);
}

}  // namespace

TEST(FileIdentityTest, RecognizesNamesOfOneFile) {
  ScratchDirectory const folder;
  std::string const file = folder.Write("a", "same");
  std::string const other = folder.Write("b", "same");
  ASSERT_EQ(symlink("a", folder.Path("symbolic").c_str()), 0);
  ASSERT_EQ(link(file.c_str(), folder.Path("hard").c_str()), 0);
  for (char const* name : {"a", "./a", "symbolic", "hard"}) {
    EXPECT_TRUE(AreEqual(file, folder.Path(name))) << name;
    EXPECT_FALSE(AreEqual(other, folder.Path(name))) << name;
  }
}

TEST(FileIdentityTest, RecognizesNamesOfMissingFile) {
  ScratchDirectory const folder;
  std::string const missing = folder.Path("new");
  ASSERT_EQ(symlink("new", folder.Path("symbolic").c_str()), 0);
  EXPECT_TRUE(AreEqual(missing, folder.Path("./new")));
  EXPECT_TRUE(AreEqual(missing, folder.Path("symbolic")));
  EXPECT_FALSE(AreEqual(missing, folder.Path("other")));
  EXPECT_FALSE(AreEqual(missing, folder.Path()));
  EXPECT_FALSE(AreEqual("", ""));
  EXPECT_FALSE(AreEqual(folder.Path("x/new"), folder.Path("x/new")));
}

TEST(FileIdentityTest, DevicesAndPipesEqualNothing) {
  ScratchDirectory const folder;
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(AreEqual(folder.Path("pipe"), folder.Path("pipe")));
  EXPECT_FALSE(AreEqual("/dev/null", "/dev/null"));
  EXPECT_FALSE(AreEqual(folder.Path(), folder.Path()));
}

TEST(FileIdentityTest, ResolvesLinks) {
  ScratchDirectory const folder;
  ASSERT_EQ(symlink("x/b", folder.Path("a").c_str()), 0);
  EXPECT_EQ(ResolveLinks(folder.Path("a")), folder.Path("x/b"));
  ASSERT_EQ(symlink("/c", folder.Path("absolute").c_str()), 0);
  EXPECT_EQ(ResolveLinks(folder.Path("absolute")), "/c");
  ASSERT_EQ(symlink("loop", folder.Path("loop").c_str()), 0);
  EXPECT_EQ(ResolveLinks(folder.Path("loop")), "");
}
