#include "Gk_FileElement.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <type_traits>

#include "ChildProcess.h"
#include "ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;

std::string Text(Gk_String const& string) {
  return std::string(string.text());
}

Gk_FileElement Element(std::string const& path) {
  return Gk_FileElement(Gk_String(path.c_str()));
}

TEST(Gk_FileElementTest, IsStringWithoutVirtualTable) {
  static_assert(std::is_base_of_v<Gk_String, Gk_FileElement>);
  static_assert(!std::is_polymorphic_v<Gk_FileElement>);
  static_assert(sizeof(Gk_FileElement) == sizeof(Gk_String));
  Gk_FileElement const element = Element("a/b");
  EXPECT_EQ(Text(element), "a/b");
  Gk_String const path = element.pathName();
  EXPECT_TRUE(path == "a/b");
}

TEST(Gk_FileElementTest, CopyIsDeep) {
  Gk_String text("a/b");
  Gk_FileElement element(text);
  text[0] = 'x';
  EXPECT_EQ(Text(element), "a/b");
  Gk_FileElement copy(element);
  copy.flatten();
  EXPECT_EQ(Text(element), "a/b");
  EXPECT_EQ(Text(copy), "a_b");
  copy = element;
  copy.flatten();
  EXPECT_EQ(Text(element), "a/b");
}

TEST(Gk_FileElementTest, NameOperationsSplitPath) {
  struct {
    char const* path;
    char const* directory;
    char const* base;
    char const* identifier;
  } const rows[] = {
      {"plain", ".", "plain", "plain"},
      {"a/b", "a", "b", "b"},
      {"/x/y.tar.gz", "/x", "y.tar.gz", "y"},
      {"a/b/c.d", "a/b", "c.d", "c"},
      {"a.b/c", "a.b", "c", "c"},
      {"/x", "", "x", "x"},
      {"a/", "a", "", ""},
      {"a//b", "a/", "b", "b"},
      {"a\\b", "a", "a\\b", "a\\b"},
      {"a\\b\\c.d", "a\\b", "a\\b\\c.d", "a\\b\\c"},
      // Where there is a "/", a backslash does not divide.
      {"a/b\\c", "a", "b\\c", "b\\c"},
      {"a\\b/c", "a\\b", "c", "c"},
      {".profile", ".", ".profile", ""},
      {"x/..", "x", "..", ""},
      {"", ".", "", ""},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    Gk_FileElement const element = Element(row.path);
    EXPECT_EQ(Text(element.dirName()), row.directory);
    EXPECT_EQ(Text(element.baseName()), row.base);
    EXPECT_EQ(Text(element.identifier()), row.identifier);
    EXPECT_STREQ(element.dirName(), row.directory);
    EXPECT_STREQ(element.baseName(), row.base);
    EXPECT_STREQ(element.identifier(), row.identifier);
  }
}

TEST(Gk_FileElementTest, ChangeExtnCutsAtFirstDot) {
  struct {
    char const* path;
    char const* extension;
    char const* changed;
  } const rows[] = {
      {"a.stp", "log", "a.log"}, {"a.tar.gz", "log", "a.log"}, {"d.e/f", "txt", "d.txt"}, {"plain", "txt", "plain.txt"},
      {"a.", "txt", "a.txt"},    {".profile", "txt", ".txt"},  {"", "txt", ".txt"},       {"a.b", "", "a."},
      {"a.b", nullptr, "a."},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    Gk_FileElement element = Element(row.path);
    EXPECT_EQ(&element.changeExtn(row.extension), &element);
    EXPECT_STREQ(element, row.changed);
    EXPECT_EQ(element.dataLen(), static_cast<int>(std::strlen(row.changed)));
  }
  Gk_FileElement own = Element("a.stp");
  own.changeExtn(own.begin() + 2);
  EXPECT_STREQ(own, "a.stp");
}

TEST(Gk_FileElementTest, FlattenReplacesSeparators) {
  Gk_FileElement element = Element("a/b\\c");
  EXPECT_EQ(&element.flatten(), &element);
  EXPECT_STREQ(element, "a_b_c");
  EXPECT_EQ(Text(Element("//x\\").flatten()), "__x_");
  EXPECT_EQ(Text(Element("plain.x").flatten()), "plain.x");
}

TEST(Gk_FileElementTest, RelativeNameFollowsBase) {
  struct {
    char const* path;
    char const* base;
    char const* relative;  // null: an empty string
  } const rows[] = {
      {"a/b/c", "a/b", "c"},     {"a/b/c/d", "a", "b/c/d"},  {"a/b/", "a/b", ""},     {"a/b//c", "a/b", "/c"},
      {"/c", "", "c"},           {"a/bc", "a/b", nullptr},   {"a/b", "a/b", nullptr}, {"a", "a/b", nullptr},
      {"a/b/c", "a/x", nullptr}, {"a/b/c", "a/b/", nullptr}, {"A/b", "a", nullptr},   {"", "", nullptr},
      {"c", "", nullptr},        {"a/b", "a\\b", nullptr},   {"a\\b", "a", nullptr},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.path) + " from " + row.base);
    Gk_String const relative = Element(row.path).relativeName(Element(row.base));
    if (row.relative == nullptr) {
      EXPECT_EQ(relative.len(), 0);
    } else {
      EXPECT_STREQ(relative, row.relative);
    }
  }
}

TEST(Gk_FileElementTest, QueriesReadFileSystem) {
  ScratchDirectory const scratch;
  Gk_FileElement const file = Element(scratch.Write("file", "12345"));
  Gk_FileElement const directory = Element(scratch.Path());
  Gk_FileElement const missing = Element(scratch.Path("missing"));
  ASSERT_EQ(mkfifo(scratch.Path("pipe").c_str(), 0600), 0);
  Gk_FileElement const pipe = Element(scratch.Path("pipe"));

  EXPECT_TRUE(file.exists());
  EXPECT_TRUE(file.isFile());
  EXPECT_FALSE(file.isDirectory());
  EXPECT_EQ(file.length(), 5);

  EXPECT_TRUE(directory.exists());
  EXPECT_FALSE(directory.isFile());
  EXPECT_TRUE(directory.isDirectory());

  EXPECT_TRUE(pipe.exists());
  EXPECT_FALSE(pipe.isFile());
  EXPECT_FALSE(pipe.isDirectory());

  EXPECT_FALSE(missing.exists());
  EXPECT_FALSE(missing.isFile());
  EXPECT_FALSE(missing.isDirectory());
  EXPECT_FALSE(missing.canRead());
  EXPECT_FALSE(missing.canWrite());
  EXPECT_EQ(missing.length(), 0);
  EXPECT_EQ(missing.lastModified(), 0);
}

TEST(Gk_FileElementTest, LastModifiedReturnsSeconds) {
  ScratchDirectory const scratch;
  std::string const path = scratch.Write("file", "");
  timespec const times[2] = {{1, 0}, {1234567890, 999999999}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  EXPECT_EQ(Element(path).lastModified(), 1234567890);
}

TEST(Gk_FileElementTest, CanReadTestsOwnerPermissions) {
  ScratchDirectory const scratch;
  std::string const path = scratch.Write("file", "");
  struct {
    mode_t mode;
    bool canRead;
    bool canWrite;
  } const rows[] = {
      {0600, true, true}, {0400, true, false}, {0200, false, true}, {0100, false, false}, {0077, false, false}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.mode);
    ASSERT_EQ(chmod(path.c_str(), row.mode), 0);
    EXPECT_EQ(Element(path).canRead(), row.canRead);
    EXPECT_EQ(Element(path).canWrite(), row.canWrite);
  }
}

TEST(Gk_FileElementTest, QueriesAreNotCached) {
  ScratchDirectory const scratch;
  Gk_FileElement const file = Element(scratch.Path("file"));
  EXPECT_FALSE(file.exists());
  scratch.Write("file", "12");
  EXPECT_EQ(file.length(), 2);
}

TEST(Gk_FileElementTest, QueriesFollowLinks) {
  ScratchDirectory const scratch;
  scratch.Write("file", "123");
  fs::create_symlink("file", scratch.Path("link"));
  fs::create_symlink("nowhere", scratch.Path("broken"));
  EXPECT_TRUE(Element(scratch.Path("link")).isFile());
  EXPECT_EQ(Element(scratch.Path("link")).length(), 3);
  EXPECT_FALSE(Element(scratch.Path("broken")).exists());
}

TEST(Gk_FileElementTest, AcceptsInvalidTextAndLongPaths) {
  ScratchDirectory const scratch;
  std::string const bytes = scratch.Write("\xFF\xFE\x01 *?", "1");
  EXPECT_EQ(Element(bytes).length(), 1);
  std::string const longName = scratch.Write(std::string(255, 'n'), "12");
  EXPECT_EQ(Element(longName).length(), 2);
  EXPECT_FALSE(Element(longName + "n").exists());
  EXPECT_FALSE(Element(std::string(100000, 'd')).exists());
  EXPECT_FALSE(Element("").exists());
  EXPECT_FALSE(Gk_FileElement(Gk_String()).exists());
}

TEST(Gk_FileElementTest, PathNeedsNoTerminator) {
  ScratchDirectory const scratch;
  std::string const path = scratch.Write("file", "123");
  Gk_FileElement const element(Gk_String(path.data(), static_cast<int>(path.size())));
  ASSERT_EQ(element.len(), element.dataLen());
  EXPECT_EQ(element.length(), 3);
  EXPECT_TRUE(element.isFile());
  EXPECT_TRUE(element.renameTo(Gk_String(scratch.Path("moved").data(), static_cast<int>(path.size()) + 1)));
  EXPECT_TRUE(scratch.Has("moved"));
}

TEST(Gk_FileElementTest, EraseRefusesDirectory) {
  ScratchDirectory const scratch;
  Gk_FileElement const file = Element(scratch.Write("file", "1"));
  EXPECT_TRUE(file.erase());
  EXPECT_FALSE(scratch.Has("file"));
  EXPECT_FALSE(file.erase());
  fs::create_directory(scratch.Path("directory"));
  EXPECT_FALSE(Element(scratch.Path("directory")).erase());
  EXPECT_TRUE(scratch.Has("directory"));
}

TEST(Gk_FileElementTest, RenameToKeepsOwnPath) {
  ScratchDirectory const scratch;
  Gk_FileElement const file = Element(scratch.Write("file", "1"));
  EXPECT_TRUE(file.renameTo(Element(scratch.Path("moved"))));
  EXPECT_EQ(Text(file), scratch.Path("file"));
  EXPECT_EQ(scratch.Read("moved"), "1");
  EXPECT_FALSE(file.renameTo(Element(scratch.Path("again"))));
}

TEST(Gk_FileElementTest, GetCurrentDirReturnsDirectory) {
  ScratchDirectory const scratch;
  ChildResult const result = RunInChild([&] {
    if (chdir(scratch.Path().c_str()) != 0) return 1;
    if (Text(Gk_FileElement::getCurrentDir()) != fs::canonical(scratch.Path()).string()) return 2;
    // Beyond the buffer of 1024 bytes.
    for (int i = 0; i < 5; ++i) {
      std::string const name(250, 'd');
      if (mkdir(name.c_str(), 0700) != 0 || chdir(name.c_str()) != 0) return 3;
    }
    return Text(Gk_FileElement::getCurrentDir()).empty() ? 0 : 4;
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Gk_FileElementTest, EnsureParentCreatesDirectories) {
  ScratchDirectory const scratch;
  EXPECT_FALSE(Element(scratch.Path("file")).ensureParent());
  EXPECT_TRUE(Element(scratch.Path("new/file")).ensureParent());
  EXPECT_TRUE(fs::is_directory(scratch.Path("new")));
  EXPECT_FALSE(scratch.Has("new/file"));
  EXPECT_FALSE(Element(scratch.Path("new/file")).ensureParent());
  EXPECT_TRUE(Element(scratch.Path("p/q/r/file")).ensureParent());
  EXPECT_TRUE(fs::is_directory(scratch.Path("p/q/r")));
  // The result does not say whether it could be created.
  scratch.Write("plain", "");
  EXPECT_TRUE(Element(scratch.Path("plain/x/file")).ensureParent());
  // A parent that exists need not be a directory.
  EXPECT_FALSE(Element(scratch.Path("plain/file")).ensureParent());
  EXPECT_FALSE(Element("name").ensureParent());
}

}  // namespace
