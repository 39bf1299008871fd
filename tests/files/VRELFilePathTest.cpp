#include "VRELFilePath.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unicode/ucnv.h>
#include <unistd.h>

#include <cstring>
#include <ctime>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "ChildProcess.h"
#include "LocaleProcess.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VirtualSlot.h"

namespace {

std::string Text(VRELFilePath const& path) {
  return path.GetPath().toUtf8();
}

TEST(VRELFilePathTest, DefaultPathIsEmpty) {
  VRELFilePath const path;
  EXPECT_EQ(Text(path), "");
  EXPECT_EQ(path.GetPath().length(), 0);
  EXPECT_FALSE(path.IsValid());
}

TEST(VRELFilePathTest, NullIsEmptyPath) {
  char const* const null = nullptr;
  VRELFilePath const path(null);
  EXPECT_EQ(path.GetPath().length(), 0);
  EXPECT_FALSE(path.IsValid());
  EXPECT_FALSE(path.IsAbsolute());
  EXPECT_FALSE(path.DoesFileExist());
}

TEST(VRELFilePathTest, ConstructorsOnlyReplaceBackslashes) {
  struct {
    char const* given;
    char const* held;
  } const rows[] = {
      {"a\\b\\c.txt", "a/b/c.txt"},
      {"\\\\server\\share", "//server/share"},
      {"C:\\", "C:/"},
      {"Mixed/Case\\X", "Mixed/Case/X"},
      {"./a/../b", "./a/../b"},
      {"a//b\\\\c", "a//b//c"},
      {"trailing\\", "trailing/"},
      {" blank ", " blank "},
      {"", ""},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.given);
    EXPECT_EQ(Text(VRELFilePath(row.given)), row.held);
    VRELString const text(row.given);
    EXPECT_EQ(Text(VRELFilePath(text)), row.held);
    EXPECT_EQ(text.toUtf8(), row.given);
    EXPECT_EQ(Text(VRELFilePath(VRELString(row.given))), row.held);
  }
}

TEST(VRELFilePathTest, CopyKeepsBackslashOfExtension) {
  VRELFilePath source("a");
  source.AddExtension(L"b\\c");
  EXPECT_EQ(Text(source), "a.b\\c");
  VRELFilePath const copy(source);
  EXPECT_EQ(Text(copy), "a.b\\c");
  VRELFilePath assigned("x");
  EXPECT_EQ(&(assigned = source), &assigned);
  EXPECT_EQ(Text(assigned), "a.b\\c");
  EXPECT_EQ(Text(source), "a.b\\c");
  EXPECT_EQ(Text(VRELFilePath(source.GetPath())), "a.b/c");
}

TEST(VRELFilePathTest, SelfAssignmentDoesNothing) {
  VRELFilePath path("a/b");
  VRELFilePath const& itself = path;
  EXPECT_EQ(&(path = itself), &path);
  EXPECT_EQ(Text(path), "a/b");
}

TEST(VRELFilePathTest, IndexFunctionsIgnoreOwnPath) {
  struct {
    wchar_t const* text;
    int lastSeparator;
    int lastExtension;
    int firstExtension;
    int name;
  } const rows[] = {
      {L"", -1, -1, -1, 0},      {L"name", -1, -1, -1, 0}, {L"a.b.c", -1, 3, 1, 0},       {L".profile", -1, 0, 0, 0},
      {L"/", 0, -1, -1, 1},      {L"/.x", 0, 1, 1, 1},     {L"dir.d/file", 5, -1, -1, 6}, {L"dir.d/a.b.c", 5, 9, 7, 6},
      {L"x/y.z/", 5, -1, -1, 6}, {L"a\\b.c", -1, 3, 3, 0}, {L"a/b\\c.d", 1, 5, 5, 2},     {L"m.", -1, 1, 1, 0},
  };
  VRELFilePath const own("own/text.of.the/object.x");
  for (auto const& row : rows) {
    VRELString const text(row.text);
    SCOPED_TRACE(text.toUtf8());
    EXPECT_EQ(own.GetLastSeparatorIndex(text), row.lastSeparator);
    EXPECT_EQ(own.GetLastExtensionIndex(text), row.lastExtension);
    EXPECT_EQ(own.GetFirstExtensionIndex(text), row.firstExtension);
    EXPECT_EQ(own.GetNameIndex(text), row.name);
  }
}

TEST(VRELFilePathTest, NameOperationsSplitPath) {
  struct {
    char const* path;
    char const* name;
    char const* directory;
    char const* lastExtension;
    char const* withoutLastExtension;
    char const* withoutExtension;
  } const rows[] = {
      {"a\\b\\c.txt", "c.txt", "a/b", "txt", "c", "c"},
      {".profile", ".profile", "", "profile", "", ""},
      {"a.b.c", "a.b.c", "", "c", "a.b", "a"},
      {"dir.d/file", "file", "dir.d", "", "file", "file"},
      {"dir.d/a.b.c", "a.b.c", "dir.d", "c", "a.b", "a"},
      {"trailing/", "", "trailing", "", "", ""},
      {"x.y/", "", "x.y", "", "", ""},
      {"name", "name", "", "", "name", "name"},
      {"/name", "name", "", "", "name", "name"},
      {"//name", "name", "/", "", "name", "name"},
      {"m.", "m.", "", "", "m", "m"},
      {"a..b", "a..b", "", "b", "a.", "a"},
      {"/", "", "", "", "", ""},
      {"..", "..", "", "", ".", ""},
      {"", "", "", "", "", ""},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    VRELFilePath const path(row.path);
    EXPECT_EQ(path.GetName().toUtf8(), row.name);
    EXPECT_EQ(path.GetDirectory().toUtf8(), row.directory);
    EXPECT_EQ(path.GetLastExtension().toUtf8(), row.lastExtension);
    EXPECT_EQ(path.GetNameWithoutLastExtension().toUtf8(), row.withoutLastExtension);
    EXPECT_EQ(path.GetNameWithoutExtension().toUtf8(), row.withoutExtension);
  }
}

TEST(VRELFilePathTest, IsValidTestsLength) {
  EXPECT_TRUE(VRELFilePath("trailing/").IsValid());
  EXPECT_TRUE(VRELFilePath("/no/such/file").IsValid());
  EXPECT_TRUE(VRELFilePath(" ").IsValid());
  EXPECT_FALSE(VRELFilePath("").IsValid());
}

TEST(VRELFilePathTest, IsAbsoluteRecognizesDrives) {
  struct {
    char const* path;
    bool isAbsolute;
  } const rows[] = {
      {"", false},     {"/", true},    {"/x", true},    {"\\x", true},  {"x", false},   {"C:/x", true},
      {"C:\\x", true}, {"C:/", true},  {"1:/x", true},  {"/:x", true},  {"C:", false},  {"C:x", false},
      {":/x", false},  {"C/:", false}, {"AB:/", false}, {"./x", false}, {"../", false}, {"C", false},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(VRELFilePath(row.path).IsAbsolute(), row.isAbsolute);
  }
  VRELFilePath dotDrive;
  dotDrive.AddExtension(L":\\x");
  EXPECT_EQ(Text(dotDrive), ".:\\x");
  EXPECT_TRUE(dotDrive.IsAbsolute());
}

TEST(VRELFilePathTest, HasLastExtensionIgnoresCase) {
  struct {
    char const* path;
    wchar_t const* extension;
    bool has;
  } const rows[] = {
      {"m.Step", L".STEP", true}, {"m.Step", L"step", true},    {"m.Step", L"..step", false},
      {"m.Step", L"ste", false},  {"m.Step", L"stepx", false},  {"m.Step", L"", false},
      {"m.Step", L".", false},    {"a.b.c", L"C", true},        {"a.b.c", L"b.c", false},
      {"m", L".STEP", false},     {"m", L"step", false},        {"m", L"", true},
      {"m.", L"", true},          {"m.", L".", true},           {"m.", L"..", false},
      {"m.", L"x", false},        {"d.step/m", L"step", false}, {"m.STRASSE", L"stra\u00DFe", true},
  };
  for (auto const& row : rows) {
    VRELString const extension(row.extension);
    SCOPED_TRACE(std::string(row.path) + " has " + extension.toUtf8());
    EXPECT_EQ(VRELFilePath(row.path).HasLastExtensionIgnoringCase(extension), row.has);
    EXPECT_EQ(extension.toUtf8(), VRELString(row.extension).toUtf8());
  }
}

TEST(VRELFilePathTest, AddExtensionAlwaysAddsDot) {
  struct {
    char const* path;
    wchar_t const* extension;
    char const* sum;
  } const rows[] = {
      {"a/b", L"x", "a/b.x"}, {"a/b", L".x", "a/b..x"}, {"a/b.x", L"y", "a/b.x.y"}, {"a/b", L"", "a/b."},
      {"", L"x", ".x"},       {"a/", L"x", "a/.x"},     {"a", L"b\\c", "a.b\\c"},   {"a", L"b/c", "a.b/c"},
  };
  for (auto const& row : rows) {
    VRELFilePath path(row.path);
    path.AddExtension(row.extension);
    EXPECT_EQ(Text(path), row.sum);
  }
}

TEST(VRELFilePathTest, ReplaceLastExtensionAddsDot) {
  struct {
    char const* path;
    wchar_t const* extension;
    char const* result;
  } const rows[] = {
      {"a.b.c", L"x", "a.b.x"},
      {"a.b.c", L".x", "a.b.x"},
      {"a.b.c", L"..x", "a.b..x"},
      {"dir.d/file", L"x", "dir.d/file.x"},
      {"dir.d/file", L".x", "dir.d/file.x"},
      {"m", L"", "m."},
      {"m.n", L"", "m."},
      {"m.n", L".", "m."},
      {".profile", L"x", ".x"},
      {"", L"x", ".x"},
      {"d.e/", L"x", "d.e/.x"},
      {"a.b", L"c\\d", "a.c/d"},
  };
  for (auto const& row : rows) {
    VRELFilePath const path(row.path);
    SCOPED_TRACE(row.path);
    EXPECT_EQ(Text(path.ReplaceLastExtension(row.extension)), row.result);
    EXPECT_EQ(Text(path), row.path);
  }
}

TEST(VRELFilePathTest, ReplaceFirstExtensionAddsNoDot) {
  struct {
    char const* path;
    wchar_t const* extension;
    char const* result;
  } const rows[] = {
      {"a.b.c", L"new", "anew"},
      {"a.b.c", L".new", "a.new"},
      {"dir.d/file", L"x", "dir.d/filex"},
      {"dir.d/a.b.c", L".x", "dir.d/a.x"},
      {"a.b.c", L"", "a"},
      {"name", L".x", "name.x"},
      {".profile", L"x", "x"},
      {"", L"x", "x"},
      {"a.b", L"\\d", "a/d"},
  };
  for (auto const& row : rows) {
    VRELFilePath const path(row.path);
    SCOPED_TRACE(row.path);
    EXPECT_EQ(Text(path.ReplaceFirstExtension(row.extension)), row.result);
    EXPECT_EQ(Text(path), row.path);
  }
}

TEST(VRELFilePathTest, JoinAddsSlash) {
  struct {
    char const* path;
    wchar_t const* appended;
    char const* sum;
  } const rows[] = {
      {"a/b", L".log", "a/b.log"}, {"a/b", L"c", "a/b/c"}, {"a/b/", L"c", "a/b/c"}, {"", L"c", "/c"},
      {"a", L"./x", "a./x"},       {"a", L"..", "a.."},    {"a/", L"..", "a/.."},   {"a", L"", "a/"},
      {"a/", L"", "a/"},           {"", L"", "/"},         {"a", L"/c", "a//c"},    {"a", L"c\\d", "a/c/d"},
      {"a", L"\\d", "a//d"},       {"", L".x", ".x"},
  };
  for (auto const& row : rows) {
    VRELFilePath const path(row.path);
    SCOPED_TRACE(row.sum);
    EXPECT_EQ(Text(path + row.appended), row.sum);
    EXPECT_EQ(Text(path), row.path);
  }
}

TEST(VRELFilePathTest, FixSeparatorIgnoresOwnPath) {
  VRELFilePath path("own");
  VRELString text(L"\\a\\\\b/c\\");
  path.FixSeparator(text);
  EXPECT_EQ(text.toUtf8(), "/a//b/c/");
  EXPECT_EQ(Text(path), "own");
}

TEST(VRELFilePathTest, VirtualOperationsKeepSlots) {
  using Path = VRELFilePath;
  std::size_t const slots[] = {
      SlotOf(&Path::GetPath),
      SlotOf(&Path::GetName),
      SlotOf(&Path::GetNameWithoutExtension),
      SlotOf(&Path::GetNameWithoutLastExtension),
      SlotOf(&Path::GetLastExtension),
      SlotOf(&Path::GetDirectory),
      SlotOf(&Path::IsValid),
      SlotOf(&Path::IsAbsolute),
      SlotOf(&Path::HasLastExtensionIgnoringCase),
      SlotOf(&Path::AddExtension),
      SlotOf(&Path::ReplaceLastExtension),
      SlotOf(&Path::ReplaceFirstExtension),
      SlotOf(&Path::ResolveAgainst),
      SlotOf(&Path::DoesFileExist),
      SlotOf(&Path::OpenFile),
      SlotOf(&Path::RemoveFile),
      SlotOf(&Path::Initialize),
      SlotOf(&Path::FixSeparator),
  };
  std::size_t expected = 2;
  for (std::size_t const slot : slots) EXPECT_EQ(slot, expected++);
}

// Path whose operations return what the test sets.
class OverriddenPath : public VRELFilePath {
 public:
  using VRELFilePath::VRELFilePath;

  VRELString GetPath() const override { return Count(0), whole; }
  VRELString GetName() const override { return Count(1), name; }
  VRELString GetLastExtension() const override {
    return overridesExtension ? VRELString(L"other") : VRELFilePath::GetLastExtension();
  }
  VRELString GetDirectory() const override { return Count(2), directory; }
  bool IsValid() const override { return isValid; }
  bool IsAbsolute() const override { return isAbsolute; }
  bool DoesFileExist() const override { return Count(3), exists; }
  void Initialize() override { ++initialized; }
  void FixSeparator(VRELString& text) override { text = VRELString(L"fixed"); }

  bool IsAbsoluteByTheBase() const { return VRELFilePath::IsAbsolute(); }

  VRELString whole = L"x/y.z";
  VRELString name = L"n.x.y";
  VRELString directory = L"/no/such/directory";
  bool overridesExtension = false;
  bool isValid = true;
  bool isAbsolute = false;
  bool exists = false;
  int initialized = 0;
  mutable int calls[4] = {};

 private:
  void Count(int operation) const { ++calls[operation]; }
};

TEST(VRELFilePathTest, OperationsUseVirtualTable) {
  OverriddenPath path("/held.text");
  EXPECT_EQ(path.GetLastExtension().toUtf8(), "y");
  EXPECT_EQ(path.GetNameWithoutLastExtension().toUtf8(), "n.x");
  EXPECT_EQ(path.GetNameWithoutExtension().toUtf8(), "n");
  EXPECT_TRUE(path.HasLastExtensionIgnoringCase(L"Y"));
  path.overridesExtension = true;
  EXPECT_TRUE(path.HasLastExtensionIgnoringCase(L"OTHER"));
  EXPECT_TRUE(path.IsAbsoluteByTheBase());
  path.isValid = false;
  EXPECT_FALSE(path.IsAbsoluteByTheBase());
}

TEST(VRELFilePathTest, ConstructorsCallNoVirtualOperation) {
  OverriddenPath path("a\\b");
  EXPECT_EQ(path.VRELFilePath::GetPath().toUtf8(), "a/b");
  EXPECT_EQ(path.initialized, 0);
  path.Initialize();
  EXPECT_EQ(path.initialized, 1);
  VRELFilePath plain("a");
  plain.Initialize();
  EXPECT_EQ(Text(plain), "a");
}

TEST(VRELFilePathTest, ResolveAgainstUsesVirtualTable) {
  OverriddenPath path("/held.text");
  OverriddenPath base("/base.text");
  EXPECT_EQ(Text(path.ResolveAgainst(base)), "/no/such/directory/x/y.z");
  EXPECT_EQ(path.calls[0], 1);
  EXPECT_EQ(path.calls[1], 1);
  EXPECT_EQ(base.calls[2], 1);
  // A relative path itself is not probed.
  EXPECT_EQ(path.calls[3], 0);
  path.isAbsolute = true;
  EXPECT_EQ(Text(path.ResolveAgainst(base)), "/no/such/directory/x/y.z");
  EXPECT_EQ(path.calls[3], 1);
  path.exists = true;
  EXPECT_EQ(Text(path.ResolveAgainst(base)), "/held.text");
  path.name = L"";
  EXPECT_EQ(Text(path.ResolveAgainst(base)), "");
}

TEST(VRELFilePathTest, ResolveAgainstFindsShortestTail) {
  struct {
    char const* path;
    std::vector<char const*> files;
    char const* expected;  // below the base's directory
  } const rows[] = {
      {"x/y/z.dat", {"z.dat", "y/z.dat", "x/y/z.dat"}, "/z.dat"},
      {"x/y/z.dat", {"y/z.dat", "x/y/z.dat"}, "/y/z.dat"},
      {"x/y/z.dat", {"x/y/z.dat"}, "/x/y/z.dat"},
      {"x/y/z.dat", {}, "/x/y/z.dat"},
      {"x\\y\\z.dat", {"y/z.dat"}, "/y/z.dat"},
      {"z.dat", {}, "/z.dat"},
      {"/abs/part.dat", {}, "/abs/part.dat"},
      {"/abs/part.dat", {"part.dat"}, "/part.dat"},
      // Two slashes: the server's name is never used.
      {"//server/share/part.dat", {"server/share/part.dat"}, "/share/part.dat"},
      {"//server/share/part.dat", {"part.dat"}, "/part.dat"},
      {"///x.dat", {}, "/x.dat"},
      {"////a/x.dat", {}, "//a/x.dat"},
      // Components with a colon, and ".", add nothing.
      {"C:/cad/part.dat", {"C:/cad/part.dat"}, "/cad/part.dat"},
      {"C:/cad/part.dat", {"part.dat"}, "/part.dat"},
      {"a/b:c/part.dat", {}, "/a/part.dat"},
      {"a/:b/part.dat", {}, "/a/part.dat"},
      {"./part.dat", {}, "/part.dat"},
      {"a/./part.dat", {"a/part.dat"}, "/a/part.dat"},
      {"a/./part.dat", {}, "/a/part.dat"},
      {"a/x:", {"a"}, "/a"},
      // ".." is used like any other.
      {"a/../part.dat", {}, "/a/../part.dat"},
      {"a/../part.dat", {"a/x", "part.dat"}, "/part.dat"},
      {"..", {}, "/.."},
      // Empty components are components.
      {"x//y.dat", {}, "/x//y.dat"},
      {"x//y.dat", {"x/y.dat"}, "/x//y.dat"},
      {"x//C:", {}, "/"},
      {"C:", {}, nullptr},
      {"C:x.dat", {}, nullptr},
      {".", {}, nullptr},
      {"./.", {}, nullptr},
      {"//server", {}, nullptr},
      {"trailing/", {"trailing"}, nullptr},
      {"", {}, nullptr},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    ScratchDirectory const directory;
    for (char const* file : row.files) directory.Write(file, "x");
    VRELFilePath base(directory.Path("top.asm").c_str());
    VRELFilePath const path(row.path);
    VRELFilePath const resolved = path.ResolveAgainst(base);
    EXPECT_EQ(Text(resolved), row.expected == nullptr ? "" : directory.Path() + row.expected);
    EXPECT_EQ(resolved.IsValid(), row.expected != nullptr);
    EXPECT_EQ(Text(path), VRELFilePath(row.path).GetPath().toUtf8());
  }
}

TEST(VRELFilePathTest, ResolveAgainstKeepsExistingAbsolutePath) {
  ScratchDirectory const directory;
  std::string const part = directory.Write("deep/part.dat", "x");
  directory.Write("part.dat", "x");
  VRELFilePath base(directory.Path("top.asm").c_str());
  EXPECT_EQ(Text(VRELFilePath(part.c_str()).ResolveAgainst(base)), part);
  VRELFilePath nowhere("/no/such/top.asm");
  EXPECT_EQ(Text(VRELFilePath(part.c_str()).ResolveAgainst(nowhere)), part);
  VRELFilePath none;
  EXPECT_EQ(Text(VRELFilePath(part.c_str()).ResolveAgainst(none)), part);
}

TEST(VRELFilePathTest, ResolveAgainstAddsNoSecondSlash) {
  ScratchDirectory const directory;
  VRELFilePath base((directory.Path() + "//top.asm").c_str());
  EXPECT_EQ(Text(VRELFilePath("z.dat").ResolveAgainst(base)), directory.Path("z.dat"));
}

// Tails that are too long to exist are not probed, so that the time is linear.
TEST(VRELFilePathTest, ResolveAgainstIsLinear) {
  ScratchDirectory const directory;
  directory.Write("z.dat", "x");
  std::string path;
  std::string longest = directory.Path();
  for (int i = 0; i < 50000; ++i) {
    path += "/a/./C:/b";
    longest += "/a/b";
  }
  VRELFilePath base(directory.Path("top.asm").c_str());
  EXPECT_EQ(Text(VRELFilePath((path + "/z.dat").c_str()).ResolveAgainst(base)), directory.Path("z.dat"));
  EXPECT_EQ(Text(VRELFilePath((path + "/y.dat").c_str()).ResolveAgainst(base)), longest + "/y.dat");
  EXPECT_EQ(Text(VRELFilePath(("/" + path + "/y.dat").c_str()).ResolveAgainst(base)),
            directory.Path() + "/b" + longest.substr(directory.Path().size() + 4) + "/y.dat");
}

// 4095 bytes and the terminator.
TEST(VRELFilePathTest, ResolveAgainstFindsLongestPath) {
  ScratchDirectory const directory;
  directory.Write("q/z.dat", "x");
  ChildResult const result = RunInChild([&] {
    if (chdir(directory.Path().c_str()) != 0) return 1;
    VRELFilePath base("top.asm");
    std::string const longest = "q" + std::string(4095 - 6, '/') + "z.dat";
    EXPECT_EQ(Text(VRELFilePath(("no/" + longest).c_str()).ResolveAgainst(base)), longest);
    std::string const tooLong = "q" + std::string(4096 - 6, '/') + "z.dat";
    EXPECT_EQ(Text(VRELFilePath(("no/" + tooLong).c_str()).ResolveAgainst(base)), "no/" + tooLong);
    return ::testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
}

TEST(VRELFilePathTest, ResolveAgainstUsesCurrentDirectory) {
  ScratchDirectory const directory;
  directory.Write("b/z.dat", "x");
  directory.Write("sub/b/z.dat", "x");
  ChildResult const result = RunInChild([&] {
    if (chdir(directory.Path().c_str()) != 0) return 1;
    for (char const* text : {"top.asm", "/top.asm", ""}) {
      VRELFilePath base(text);
      EXPECT_EQ(Text(VRELFilePath("a/b/z.dat").ResolveAgainst(base)), "b/z.dat");
      EXPECT_EQ(Text(VRELFilePath("/q/w.dat").ResolveAgainst(base)), "q/w.dat");
    }
    // A relative path that exists below the current directory is resolved against the base, too.
    VRELFilePath base("sub/top.asm");
    EXPECT_EQ(Text(VRELFilePath("b/z.dat").ResolveAgainst(base)), "sub/b/z.dat");
    VRELFilePath other("other/top.asm");
    EXPECT_EQ(Text(VRELFilePath("b/z.dat").ResolveAgainst(other)), "other/b/z.dat");
    return ::testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
}

TEST(VRELFilePathTest, BufferConversionsNeedExactSize) {
  VRELFilePath const path("abc");
  for (int size = 4; size < 200; ++size) {
    char buffer[200];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(path.GetMBCSBuffer(buffer, size), VREL_S_OK);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(buffer[4], '#');
    wchar_t wide[200];
    EXPECT_EQ(path.GetWideCharacterBuffer(wide, size), VREL_S_OK);
    EXPECT_STREQ(wide, L"abc");
  }
  char one[1] = {'#'};
  EXPECT_EQ(VRELFilePath().GetMBCSBuffer(one, 1), VREL_S_OK);
  EXPECT_EQ(one[0], '\0');
  wchar_t wideOne[1] = {L'#'};
  EXPECT_EQ(VRELFilePath().GetWideCharacterBuffer(wideOne, 1), VREL_S_OK);
  EXPECT_EQ(wideOne[0], L'\0');
}

TEST(VRELFilePathTest, SmallBufferIsUnchanged) {
  VRELFilePath const path("abc");
  for (int const size : {3, 1, 0, -1}) {
    SCOPED_TRACE(size);
    char buffer[] = "####";
    EXPECT_EQ(path.GetMBCSBuffer(buffer, size), VREL_E_FAIL);
    EXPECT_STREQ(buffer, "####");
    EXPECT_EQ(path.GetMBCSBuffer(nullptr, size), VREL_E_FAIL);
    wchar_t wide[] = L"####";
    EXPECT_EQ(path.GetWideCharacterBuffer(wide, size), VREL_E_FAIL);
    EXPECT_STREQ(wide, L"####");
    EXPECT_EQ(path.GetWideCharacterBuffer(nullptr, size), VREL_E_FAIL);
  }
}

TEST(VRELFilePathTest, NullBufferFails) {
  VRELFilePath const path("abc");
  for (int const size : {4, 4096}) {
    EXPECT_EQ(path.GetMBCSBuffer(nullptr, size), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(path.GetWideCharacterBuffer(nullptr, size), VREL_E_INVALID_ARGUMENT);
  }
}

TEST(VRELFilePathTest, LoneSurrogateFailsInWideBuffer) {
  unsigned short const units[] = {'a', 0xD800, 0};
  VRELFilePath const path{VRELString(units)};
  wchar_t wide[16] = L"#";
  EXPECT_EQ(path.GetWideCharacterBuffer(wide, 16), VREL_E_FAIL);
  EXPECT_EQ(wide[0], L'\0');
}

// A moved-from string has no content, not even a terminator.
TEST(VRELFilePathTest, MovedFromStringIsEmptyPath) {
  VRELString source(L"a/b");
  VRELString const taken(std::move(source));
  VRELFilePath path(source);
  ASSERT_EQ(path.GetPath().length(), -1);
  EXPECT_FALSE(path.IsValid());
  EXPECT_FALSE(path.IsAbsolute());
  EXPECT_FALSE(path.DoesFileExist());
  EXPECT_FALSE(path.RemoveFile());
  EXPECT_EQ(path.OpenFile("r"), nullptr);
  EXPECT_EQ(path.GetName().toUtf8(), "");
  EXPECT_EQ(path.GetDirectory().toUtf8(), "");
  VRELFilePath base("/m/top.asm");
  EXPECT_EQ(Text(path.ResolveAgainst(base)), "");
  EXPECT_EQ(Text(path + VRELString(L"c")), "/c");
  EXPECT_EQ(Text(path.ReplaceLastExtension(L"x")), ".x");
  char bytes[] = "##";
  wchar_t wide[] = L"##";
  for (int const size : {0, -1}) {
    EXPECT_EQ(path.GetMBCSBuffer(bytes, size), VREL_E_FAIL);
    EXPECT_EQ(path.GetWideCharacterBuffer(wide, size), VREL_E_FAIL);
    EXPECT_STREQ(bytes, "##");
    EXPECT_STREQ(wide, L"##");
  }
  EXPECT_EQ(path.GetMBCSBuffer(bytes, 2), VREL_E_FAIL);
  EXPECT_EQ(path.GetWideCharacterBuffer(wide, 2), VREL_E_FAIL);
  path.AddExtension(L"x");
  EXPECT_EQ(Text(path), ".x");
}

TEST(VRELFilePathTest, DoesFileExistTestsReading) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("file", "12345");
  EXPECT_TRUE(VRELFilePath(file.c_str()).DoesFileExist());
  EXPECT_TRUE(VRELFilePath(directory.Path().c_str()).DoesFileExist());
  EXPECT_FALSE(VRELFilePath(directory.Path("missing").c_str()).DoesFileExist());
  EXPECT_FALSE(VRELFilePath((file + "/below").c_str()).DoesFileExist());
  EXPECT_FALSE(VRELFilePath().DoesFileExist());
}

TEST(VRELFilePathTest, UnreadableFileDoesNotExist) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("file", "12345");
  ASSERT_EQ(chmod(directory.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(file.c_str(), 0200), 0);
  RunUnprivileged([&] {
    VRELFilePath const path(file.c_str());
    EXPECT_FALSE(path.DoesFileExist());
    EXPECT_EQ(path.OpenFile("r"), nullptr);
    long size = 0;
    EXPECT_EQ(path.GetFileSize(size), VREL_S_OK);
    EXPECT_EQ(size, 5);
  });
}

TEST(VRELFilePathTest, DoesFileExistClosesFile) {
  auto const openDescriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  };
  ScratchDirectory const directory;
  VRELFilePath const path(directory.Write("file", "").c_str());
  auto const before = openDescriptors();
  EXPECT_TRUE(path.DoesFileExist());
  EXPECT_EQ(openDescriptors(), before);
}

// In a process without standard input, open returns descriptor 0.
TEST(VRELFilePathTest, DoesFileExistAcceptsDescriptorZero) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("file", "");
  ChildResult const result = RunInChild([&] {
    close(STDIN_FILENO);
    return VRELFilePath(file.c_str()).DoesFileExist() ? 0 : 1;
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(VRELFilePathTest, OpenFileReturnsStream) {
  ScratchDirectory const directory;
  VRELFilePath const path(directory.Path("file").c_str());
  EXPECT_EQ(path.OpenFile("r"), nullptr);
  std::FILE* const writer = path.OpenFile("w");
  ASSERT_NE(writer, nullptr);
  std::fputs("text", writer);
  std::fclose(writer);
  EXPECT_EQ(directory.Read("file"), "text");
  std::FILE* const reader = path.OpenFile("rb");
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(std::fgetc(reader), 't');
  std::fclose(reader);
  EXPECT_EQ(VRELFilePath(directory.Path().c_str()).OpenFile("w"), nullptr);
  EXPECT_EQ(VRELFilePath().OpenFile("w"), nullptr);
  EXPECT_EQ(path.OpenFile(nullptr), nullptr);
  EXPECT_EQ(path.OpenFile("?"), nullptr);
}

TEST(VRELFilePathTest, RemoveFileRemovesEmptyDirectory) {
  ScratchDirectory const directory;
  VRELFilePath const file(directory.Write("sub/file", "").c_str());
  VRELFilePath const sub(directory.Path("sub").c_str());
  EXPECT_FALSE(sub.RemoveFile());
  EXPECT_TRUE(file.RemoveFile());
  EXPECT_FALSE(directory.Has("sub/file"));
  EXPECT_FALSE(file.RemoveFile());
  EXPECT_TRUE(sub.RemoveFile());
  EXPECT_FALSE(directory.Has("sub"));
  EXPECT_FALSE(VRELFilePath().RemoveFile());
}

TEST(VRELFilePathTest, QueriesReadFileSystem) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("file", "12345");
  timespec const accessAndModification[2] = {{1000000000, 0}, {1100000000, 0}};
  long const before = std::time(nullptr) - 2;
  ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), accessAndModification, 0), 0);
  VRELFilePath const path(file.c_str());
  long size = 0;
  long creation = 0;
  long access = 0;
  long modification = 0;
  EXPECT_EQ(path.GetFileSize(size), VREL_S_OK);
  EXPECT_EQ(path.GetCreationDate(creation), VREL_S_OK);
  EXPECT_EQ(path.GetLastAccessDate(access), VREL_S_OK);
  EXPECT_EQ(path.GetLastModificationDate(modification), VREL_S_OK);
  EXPECT_EQ(size, 5);
  EXPECT_GE(creation, before);
  EXPECT_LE(creation, std::time(nullptr) + 2);
  EXPECT_EQ(access, 1000000000);
  EXPECT_EQ(modification, 1100000000);
  struct stat stats = {};
  EXPECT_EQ(path.GetFileStats(stats), VREL_S_OK);
  EXPECT_EQ(stats.st_size, 5);
  EXPECT_TRUE(S_ISREG(stats.st_mode));
}

TEST(VRELFilePathTest, FailedQueryKeepsArgument) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("file", "12345");
  std::string const tooLong = directory.Path() + std::string(4096, '/') + "file";
  for (std::string const& text : {directory.Path("missing"), file + "/below", std::string(), tooLong}) {
    SCOPED_TRACE(text);
    VRELFilePath const path(text.c_str());
    long value = 42;
    EXPECT_EQ(path.GetFileSize(value), VREL_E_FAIL);
    EXPECT_EQ(path.GetCreationDate(value), VREL_E_FAIL);
    EXPECT_EQ(path.GetLastAccessDate(value), VREL_E_FAIL);
    EXPECT_EQ(path.GetLastModificationDate(value), VREL_E_FAIL);
    EXPECT_EQ(value, 42);
    struct stat stats = {};
    stats.st_size = 42;
    EXPECT_EQ(path.GetFileStats(stats), VREL_E_FAIL);
    EXPECT_EQ(stats.st_size, 42);
  }
}

TEST(VRELFilePathTest, GetFileStatsCallsIsValid) {
  ScratchDirectory const directory;
  OverriddenPath path(directory.Write("file", "12345").c_str());
  long size = 0;
  EXPECT_EQ(path.GetFileSize(size), VREL_S_OK);
  path.isValid = false;
  EXPECT_EQ(path.GetFileSize(size), VREL_E_FAIL);
}

// Returns a path of `length` bytes to a file, padded with slashes between the directory and the name.
std::string PathOfLength(ScratchDirectory const& directory, std::string const& name, std::size_t length) {
  return directory.Path() + std::string(length - directory.Path().size() - name.size(), '/') + name;
}

TEST(VRELFilePathTest, PathHasAtMost4096Bytes) {
  struct {
    std::size_t byteCount;  // terminator included
    bool fits;
  } const rows[] = {{4095, true}, {4096, true}, {4097, false}, {4098, false}, {9000, false}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.byteCount);
    ScratchDirectory const directory;
    directory.Write("f", "12345");
    VRELFilePath const path(PathOfLength(directory, "f", row.byteCount - 1).c_str());
    EXPECT_EQ(path.GetPath().length(), static_cast<int>(row.byteCount) - 1);
    char buffer[4096];
    EXPECT_EQ(path.GetMBCSBuffer(buffer, sizeof buffer), row.fits ? VREL_S_OK : VREL_E_FAIL);
    EXPECT_EQ(path.DoesFileExist(), row.fits);
    long size = 0;
    EXPECT_EQ(path.GetFileSize(size), row.fits ? VREL_S_OK : VREL_E_FAIL);
    std::FILE* const stream = path.OpenFile("r");
    EXPECT_EQ(stream != nullptr, row.fits);
    if (stream != nullptr) std::fclose(stream);
    EXPECT_EQ(path.RemoveFile(), row.fits);
    EXPECT_EQ(directory.Has("f"), !row.fits);
  }
}

TEST(VRELFilePathTest, OverlongPathIsNotTruncated) {
  ScratchDirectory const directory;
  directory.Write("f", "");
  VRELFilePath const path(PathOfLength(directory, "fx", 4096).c_str());
  EXPECT_FALSE(path.DoesFileExist());
  EXPECT_EQ(path.OpenFile("r"), nullptr);
  EXPECT_FALSE(path.RemoveFile());
  EXPECT_TRUE(directory.Has("f"));
}

TEST(VRELFilePathTest, PathIsUtf8) {
  RunTestInLocale("C.UTF-8", [] {
    ScratchDirectory const directory;
    directory.Write("\xC3\xB6.step", "12345");
    VRELFilePath const wide = VRELFilePath(directory.Path().c_str()) + VRELString(L"\u00F6.step");
    VRELFilePath const bytes(directory.Path("\xC3\xB6.step").c_str());
    for (VRELFilePath const& path : {wide, bytes}) {
      EXPECT_EQ(path.GetName().length(), 6);
      EXPECT_EQ(path.GetName().charAt(0), 0xF6);
      EXPECT_TRUE(path.DoesFileExist());
      long size = 0;
      EXPECT_EQ(path.GetFileSize(size), VREL_S_OK);
      EXPECT_EQ(size, 5);
    }
    char buffer[3] = {'#', '#', '#'};
    VRELFilePath const letter{VRELString(L"\u00F6")};
    EXPECT_EQ(letter.GetMBCSBuffer(buffer, 2), VREL_E_FAIL);
    EXPECT_EQ(buffer[0], '#');
    EXPECT_EQ(letter.GetMBCSBuffer(buffer, 3), VREL_S_OK);
    EXPECT_STREQ(buffer, "\xC3\xB6");
    EXPECT_TRUE(wide.RemoveFile());
    EXPECT_FALSE(directory.Has("\xC3\xB6.step"));
  });
}

TEST(VRELFilePathTest, LimitCountsUtf8Bytes) {
  RunTestInLocale("C.UTF-8", [] {
    ScratchDirectory const directory;
    directory.Write("\xE2\x82\xAC", "");
    VRELFilePath const fits(PathOfLength(directory, "\xE2\x82\xAC", 4095).c_str());
    EXPECT_EQ(fits.GetPath().length(), 4093);
    EXPECT_TRUE(fits.DoesFileExist());
    VRELFilePath const tooLong(PathOfLength(directory, "\xE2\x82\xAC", 4096).c_str());
    EXPECT_EQ(tooLong.GetPath().length(), 4094);
    EXPECT_FALSE(tooLong.DoesFileExist());
  });
}

TEST(VRELFilePathTest, LoneSurrogateIsReplaced) {
  RunTestInLocale("C.UTF-8", [] {
    ScratchDirectory const directory;
    directory.Write("\xEF\xBF\xBD", "");
    unsigned short const surrogate[] = {0xD800, 0};
    VRELFilePath const path = VRELFilePath(directory.Path().c_str()) + VRELString(surrogate);
    EXPECT_TRUE(path.DoesFileExist());
  });
}

TEST(VRELFilePathTest, PlainLocaleUsesDefaultCodepage) {
  RunTestInLocale("C", [] {
    // ICU uses the locale, whose US-ASCII lacks the umlaut, or is built to use UTF-8 always.
    bool const isUtf8 = std::string(ucnv_getDefaultName()) == "UTF-8";
    std::string const name = isUtf8 ? "\xC3\xB6" : "\x1A";
    ScratchDirectory const directory;
    VRELFilePath const path = VRELFilePath(directory.Path().c_str()) + VRELString(L"\u00F6");
    char buffer[4096];
    EXPECT_EQ(path.GetMBCSBuffer(buffer, sizeof buffer), VREL_S_OK);
    EXPECT_EQ(std::string(buffer), directory.Path(name));
    EXPECT_FALSE(path.DoesFileExist());
    directory.Write(name, "");
    EXPECT_TRUE(path.DoesFileExist());
    VRELFilePath const bytes(directory.Path("\xC3\xB6").c_str());
    EXPECT_EQ(bytes.GetName().charAt(0), isUtf8 ? 0xF6 : 0xFFFD);
  });
}

TEST(VRELFilePathTest, InvalidBytesAreReplaced) {
  RunTestInLocale("C.UTF-8", [] {
    ScratchDirectory const directory;
    VRELFilePath const path(directory.Write("\xFF", "").c_str());
    EXPECT_EQ(path.GetName().length(), 1);
    EXPECT_EQ(path.GetName().charAt(0), 0xFFFD);
    EXPECT_FALSE(path.DoesFileExist());
    EXPECT_FALSE(path.RemoveFile());
    EXPECT_TRUE(directory.Has("\xFF"));
  });
}

TEST(VRELFilePathTest, GetCurrentWorkingDirectoryReturnsPath) {
  ScratchDirectory const directory;
  std::string const resolved = std::filesystem::canonical(directory.Path()).string();
  ChildResult const result = RunInChild([&] {
    if (chdir(directory.Path().c_str()) != 0) return 2;
    return Text(VRELFilePath::GetCurrentWorkingDirectory()) == resolved ? 0 : 1;
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(VRELFilePathTest, RemovedCurrentDirectoryIsEmptyPath) {
  ScratchDirectory const directory;
  std::string const gone = directory.Path("gone");
  std::filesystem::create_directory(gone);
  ChildResult const result = RunInChild([&] {
    if (chdir(gone.c_str()) != 0 || rmdir(gone.c_str()) != 0) return 2;
    return VRELFilePath::GetCurrentWorkingDirectory().IsValid() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(VRELFilePathTest, HasOneField) {
  EXPECT_EQ(sizeof(VRELFilePath), sizeof(void*) + sizeof(VRELString));
}

}  // namespace
