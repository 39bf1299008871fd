#include "Gk_DirTraversor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "OpenDescriptors.h"
#include "ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using ::testing::UnorderedElementsAre;

std::unique_ptr<Gk_DirTraversor> Walk(std::string const& path) {
  return std::unique_ptr<Gk_DirTraversor>(Gk_DirTraversor::create(Gk_DirElement(Gk_String(path.c_str()))));
}

TEST(Gk_DirTraversorTest, EntryMayBeNull) {
  Gk_DirEntry const none;
  EXPECT_FALSE(none.isValid());
  EXPECT_EQ(none.name(), nullptr);
  EXPECT_EQ(none.type(), DT_UNKNOWN);
  dirent record = {};
  record.d_type = DT_DIR;
  record.d_name[0] = 'x';
  Gk_DirEntry const entry(&record);
  EXPECT_TRUE(entry.isValid());
  EXPECT_STREQ(entry.name(), "x");
  EXPECT_EQ(entry.type(), DT_DIR);
  static_assert(sizeof(Gk_DirEntry) == sizeof(dirent*));
}

TEST(Gk_DirTraversorTest, CreateReadsFirstEntry) {
  ScratchDirectory const scratch;
  std::unique_ptr<Gk_DirTraversor> const walk = Walk(scratch.Path());
  ASSERT_NE(walk, nullptr);
  EXPECT_EQ(walk->text(), scratch.Path());
  ASSERT_TRUE(walk->current().isValid());
  EXPECT_EQ(walk->currentName().text(), scratch.Path() + "/" + walk->current().name());
  EXPECT_EQ(walk->entries().size(), 0);
  EXPECT_GE(walk->descriptor(), 0);
  EXPECT_EQ(CountOpenDescriptors(scratch.Path()), 1);
}

TEST(Gk_DirTraversorTest, NextReadsAllEntriesAndCloses) {
  ScratchDirectory const scratch;
  scratch.Write("file", "");
  std::unique_ptr<Gk_DirTraversor> const walk = Walk(scratch.Path());
  ASSERT_NE(walk, nullptr);
  std::vector<std::string> names;
  do {
    names.emplace_back(walk->current().name());
    EXPECT_EQ(walk->currentName().text(), scratch.Path() + "/" + names.back());
  } while (walk->next());
  EXPECT_THAT(names, UnorderedElementsAre(".", "..", "file"));
  EXPECT_FALSE(walk->current().isValid());
  EXPECT_EQ(walk->currentName().len(), 0);
  EXPECT_EQ(walk->descriptor(), -1);
  EXPECT_EQ(CountOpenDescriptors(scratch.Path()), 0);
  EXPECT_FALSE(walk->next());
}

TEST(Gk_DirTraversorTest, ReadAllStartsAtCurrentEntry) {
  ScratchDirectory const scratch;
  scratch.Write("file", "");
  std::unique_ptr<Gk_DirTraversor> const walk = Walk(scratch.Path());
  ASSERT_NE(walk, nullptr);
  ASSERT_TRUE(walk->next());
  std::string const second(walk->currentName().text());
  walk->readAll();
  ASSERT_EQ(walk->entries().size(), 2);
  EXPECT_EQ(walk->entries()[0].text(), second);
  EXPECT_FALSE(walk->current().isValid());
  walk->readAll();
  EXPECT_EQ(walk->entries().size(), 2);
}

TEST(Gk_DirTraversorTest, DestructorCloses) {
  ScratchDirectory const scratch;
  Walk(scratch.Path());
  EXPECT_EQ(CountOpenDescriptors(scratch.Path()), 0);
}

TEST(Gk_DirTraversorTest, CreateReturnsNullOnFailure) {
  ScratchDirectory const scratch;
  EXPECT_EQ(Walk(scratch.Path("missing")), nullptr);
  EXPECT_EQ(Walk(scratch.Write("file", "")), nullptr);
  EXPECT_EQ(Walk(""), nullptr);
}

TEST(Gk_DirTraversorTest, EntriesCanBeRemovedDuringIteration) {
  ScratchDirectory const scratch;
  for (int i = 0; i < 500; ++i) scratch.Write("f" + std::to_string(i), "");
  std::unique_ptr<Gk_DirTraversor> const walk = Walk(scratch.Path());
  ASSERT_NE(walk, nullptr);
  int removed = 0;
  do {
    if (Gk_FileElement(walk->currentName()).erase()) ++removed;
  } while (walk->next());
  EXPECT_EQ(removed, 500);
  EXPECT_TRUE(fs::is_empty(scratch.Path()));

  std::unique_ptr<Gk_DirTraversor> const orphan = Walk(scratch.Path());
  ASSERT_NE(orphan, nullptr);
  fs::remove(scratch.Path());
  orphan->readAll();
  EXPECT_LE(orphan->entries().size(), 2);
}

}  // namespace
