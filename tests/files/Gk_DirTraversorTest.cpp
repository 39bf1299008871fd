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

std::unique_ptr<Gk_DirTraversor> CreateTraversor(std::string const& path) {
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
  std::unique_ptr<Gk_DirTraversor> const traversor = CreateTraversor(scratch.Path());
  ASSERT_NE(traversor, nullptr);
  EXPECT_EQ(traversor->text(), scratch.Path());
  ASSERT_TRUE(traversor->current().isValid());
  EXPECT_EQ(traversor->currentName().text(), scratch.Path() + "/" + traversor->current().name());
  EXPECT_EQ(traversor->entries().size(), 0);
  EXPECT_GE(traversor->descriptor(), 0);
  EXPECT_EQ(CountOpenDescriptors(scratch.Path()), 1);
}

TEST(Gk_DirTraversorTest, NextReadsAllEntriesAndCloses) {
  ScratchDirectory const scratch;
  scratch.Write("file", "");
  std::unique_ptr<Gk_DirTraversor> const traversor = CreateTraversor(scratch.Path());
  ASSERT_NE(traversor, nullptr);
  std::vector<std::string> names;
  do {
    names.emplace_back(traversor->current().name());
    EXPECT_EQ(traversor->currentName().text(), scratch.Path() + "/" + names.back());
  } while (traversor->next());
  EXPECT_THAT(names, UnorderedElementsAre(".", "..", "file"));
  EXPECT_FALSE(traversor->current().isValid());
  EXPECT_EQ(traversor->currentName().len(), 0);
  EXPECT_EQ(traversor->descriptor(), -1);
  EXPECT_EQ(CountOpenDescriptors(scratch.Path()), 0);
  EXPECT_FALSE(traversor->next());
}

TEST(Gk_DirTraversorTest, ReadAllStartsAtCurrentEntry) {
  ScratchDirectory const scratch;
  scratch.Write("file", "");
  std::unique_ptr<Gk_DirTraversor> const traversor = CreateTraversor(scratch.Path());
  ASSERT_NE(traversor, nullptr);
  ASSERT_TRUE(traversor->next());
  std::string const second(traversor->currentName().text());
  traversor->readAll();
  ASSERT_EQ(traversor->entries().size(), 2);
  EXPECT_EQ(traversor->entries()[0].text(), second);
  EXPECT_FALSE(traversor->current().isValid());
  traversor->readAll();
  EXPECT_EQ(traversor->entries().size(), 2);
}

TEST(Gk_DirTraversorTest, DestructorCloses) {
  ScratchDirectory const scratch;
  CreateTraversor(scratch.Path());
  EXPECT_EQ(CountOpenDescriptors(scratch.Path()), 0);
}

TEST(Gk_DirTraversorTest, CreateReturnsNullOnFailure) {
  ScratchDirectory const scratch;
  EXPECT_EQ(CreateTraversor(scratch.Path("missing")), nullptr);
  EXPECT_EQ(CreateTraversor(scratch.Write("file", "")), nullptr);
  EXPECT_EQ(CreateTraversor(""), nullptr);
}

TEST(Gk_DirTraversorTest, EntriesCanBeRemovedDuringIteration) {
  ScratchDirectory const scratch;
  for (int i = 0; i < 500; ++i) scratch.Write("f" + std::to_string(i), "");
  std::unique_ptr<Gk_DirTraversor> const traversor = CreateTraversor(scratch.Path());
  ASSERT_NE(traversor, nullptr);
  int removed = 0;
  do {
    if (Gk_FileElement(traversor->currentName()).erase()) ++removed;
  } while (traversor->next());
  EXPECT_EQ(removed, 500);
  EXPECT_TRUE(fs::is_empty(scratch.Path()));

  std::unique_ptr<Gk_DirTraversor> const orphan = CreateTraversor(scratch.Path());
  ASSERT_NE(orphan, nullptr);
  fs::remove(scratch.Path());
  orphan->readAll();
  EXPECT_LE(orphan->entries().size(), 2);
}

}  // namespace
