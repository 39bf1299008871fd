#include "VRELCfgFile.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "OpenDescriptors.h"
#include "ScratchDirectory.h"
#include "VRELFilePath.h"

namespace {

using Texts = std::vector<std::string>;

// Loads a file from a stream of bytes.
VRINResult LoadBytes(VRELCfgFile& file, std::string const& bytes) {
  std::FILE* const stream = std::tmpfile();
  EXPECT_NE(stream, nullptr);
  EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), stream), bytes.size());
  std::rewind(stream);
  VRINResult const result = file.Load(stream);
  EXPECT_EQ(std::fclose(stream), 0);
  return result;
}

// A loaded file.
class Loaded : public VRELCfgFile {
 public:
  explicit Loaded(std::string const& bytes) : result(LoadBytes(*this, bytes)) {}

  VRINResult const result;
};

Texts Errors(VRELCfgFile const& file) {
  Texts errors;
  for (int i = 0; i < file.GetErrorCount(); ++i) errors.emplace_back(file.GetErrorMessage(i));
  return errors;
}

// Returns the keys of a section, each as its name and its values in brackets.
Texts Keys(VRELCfgFile const& file, char const* section = "") {
  VRELCfgFileSection const* const found = file.findSection(section);
  if (found == nullptr) return {"(none)"};
  Texts keys;
  for (int i = 0; i < found->GetNumKeys(); ++i) {
    VRELCfgFileKey const* const key = found->GetKey(i);
    std::string text = key->GetName().toUtf8();
    for (int j = 0; j < key->GetNumValues(); ++j) text += "[" + key->GetValue(j).toUtf8() + "]";
    keys.push_back(text);
  }
  return keys;
}

std::string KeyError(int line, std::string const& text) {
  return "Incorrect syntax: line " + std::to_string(line) + ":" + text + " *** \"key=value\" expected";
}

TEST(VRELCfgFileTest, StartsEmpty) {
  VRELCfgFile const file;
  EXPECT_EQ(file.GetErrorCount(), 0);
  EXPECT_EQ(file.findSection(""), nullptr);
  EXPECT_EQ(file.findSection(nullptr), nullptr);
  EXPECT_FALSE(file.ExistKey("a", nullptr));
  EXPECT_EQ(file.GetArraySize("a", nullptr), 0);
}

TEST(VRELCfgFileTest, ReadsSectionsAndKeys) {
  Loaded const file(
      "first=1\n"
      "[Import]\n"
      "unit = mm\n"
      "\tlayers\t:\t1,2,3 \n"
      "[Export]\n"
      "unit=inch\n"
      "[Import]\n"
      "late=yes\n"
      "[]\n"
      "last=9\n");
  EXPECT_EQ(file.result, VREL_S_OK);
  EXPECT_EQ(Keys(file), (Texts{"first[1]", "last[9]"}));
  EXPECT_EQ(Keys(file, nullptr), (Texts{"first[1]", "last[9]"}));
  EXPECT_EQ(Keys(file, "Import"), (Texts{"unit[mm]", "layers[1][2][3]", "late[yes]"}));
  EXPECT_EQ(Keys(file, "Export"), Texts{"unit[inch]"});
  EXPECT_EQ(Keys(file, "import"), Texts{"(none)"});
  EXPECT_TRUE(file.findSection("Import")->GetSectionName() == "Import");
}

TEST(VRELCfgFileTest, EmptyFileHasDefaultSection) {
  for (char const* bytes : {"", "\n", " \t\r\n", "# only this"}) {
    Loaded const file(bytes);
    EXPECT_EQ(file.result, VREL_S_OK);
    EXPECT_EQ(Keys(file), Texts{});
  }
}

TEST(VRELCfgFileTest, LineSyntax) {
  struct Row {
    char const* bytes;
    Texts keys;
    Texts errors;
  };
  Row const rows[] = {
      {"a=1", {"a[1]"}, {}},
      {"a=1\nb=2", {"a[1]", "b[2]"}, {}},
      {"a=1\r\nb=2\r\n", {"a[1]", "b[2]"}, {}},
      // A carriage return alone does not end a line.
      {"a=1\rb=2\r", {"a[1\rb=2]"}, {}},
      {" \t a \t = \t 1 \t \r\n", {"a[1]"}, {}},
      {"\v=\f", {"\v[\f]"}, {}},
      // Comments are whole lines.
      {"#a=1\n;b=2\n \t# c=3\n\t ; d=4\n", {}, {}},
      {"a=1 # one\nb=2;two\n", {"a[1 # one]", "b[2;two]"}, {}},
      // Separators.
      {"a:1", {"a[1]"}, {}},
      {"a:b=c", {"a:b[c]"}, {}},
      {"a=b:c", {"a[b:c]"}, {}},
      {"a=b=c", {"a[b=c]"}, {}},
      {"a:b:c", {"a[b:c]"}, {}},
      {"a b = c d", {"a b[c d]"}, {}},
      {"a==", {"a[=]"}, {}},
      {"a=:", {"a[:]"}, {}},
      // Values.
      {"a=1,2,3", {"a[1][2][3]"}, {}},
      {"a= 1 , 2 , 3 ", {"a[1 ][ 2 ][ 3]"}, {}},
      {"a=1,,2", {"a[1][][2]"}, {}},
      {"key= ,a", {"key[][a]"}, {}},
      {"a=,", {"a[][]"}, {}},
      {"a=1,", {"a[1][]"}, {}},
      {"a=\"1,2\"", {"a[\"1][2\"]"}, {}},
      // Repeated keys are not merged.
      {"a=1\na=2,3\n", {"a[1]", "a[2][3]"}, {}},
      {"A=1\na=2\n", {"A[1]", "a[2]"}, {}},
      // Bad lines do not affect the others.
      {"=value", {}, {KeyError(1, "=value")}},
      {"key=", {}, {KeyError(1, "key=")}},
      {"key = \t", {}, {KeyError(1, "key =")}},
      {" = value", {}, {KeyError(1, "= value")}},
      {"=", {}, {KeyError(1, "=")}},
      {":", {}, {KeyError(1, ":")}},
      // The first "=" is the separator, also after a ":".
      {"a:b=", {}, {KeyError(1, "a:b=")}},
      {"=a:b", {}, {KeyError(1, "=a:b")}},
      {"  text  \n", {}, {KeyError(1, "text")}},
      {"]", {}, {KeyError(1, "]")}},
      {"a=1\n   \n#\nbad %d %s\nb=2\nworse", {"a[1]", "b[2]"}, {KeyError(4, "bad %d %s"), KeyError(6, "worse")}},
      {"[a=1", {}, {"Incorrect syntax: line 1:[a=1 *** \"[section name]' expected."}},
      {"\n\n [ \n", {}, {"Incorrect syntax: line 3:[ *** \"[section name]' expected."}},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.bytes);
    Loaded const file(row.bytes);
    EXPECT_EQ(file.result, row.errors.empty() ? VREL_S_OK : VREL_E_FAIL);
    EXPECT_EQ(Keys(file), row.keys);
    EXPECT_EQ(Errors(file), row.errors);
  }
}

TEST(VRELCfgFileTest, SectionNames) {
  struct Row {
    char const* line;
    char const* name;
  };
  Row const rows[] = {
      {"[a]", "a"},        {"[a]b]", "a]b"}, {"[ a ] x", "a"},   {"[]", ""},
      {"[ \t ]", ""},      {" \t[a]", "a"},  {"[[a]]", "[a]"},   {"[a b]", "a b"},
      {"[a=1]b=2", "a=1"}, {"[#]", "#"},     {"[a]#b]", "a]#b"}, {"[\xFF\xC3]", "\xFF\xC3"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.line);
    Loaded const file(std::string(row.line) + "\nk=v\n");
    EXPECT_EQ(file.result, VREL_S_OK);
    EXPECT_EQ(Keys(file, row.name), Texts{"k[v]"});
    ASSERT_NE(file.findSection(row.name), nullptr);
    EXPECT_TRUE(file.findSection(row.name)->GetSectionName() == row.name);
  }
}

TEST(VRELCfgFileTest, BadLineKeepsSection) {
  Loaded const file("[a]\nk=1\n[b\nl=2\nbad\nm=3\n");
  EXPECT_EQ(file.result, VREL_E_FAIL);
  EXPECT_EQ(Keys(file, "a"), (Texts{"k[1]", "l[2]", "m[3]"}));
  EXPECT_EQ(Keys(file), Texts{});
  EXPECT_EQ(file.findSection("b"), nullptr);
}

TEST(VRELCfgFileTest, TextIsInDefaultCodepage) {
  Loaded const file("Gr\xC3\xB6\xC3\x9F\x65=\xC3\x96,\xFF\n");
  EXPECT_EQ(file.result, VREL_S_OK);
  VRELCfgFileKey const* const key = file.findSection("")->GetKey(0);
  EXPECT_TRUE(key->GetName().equals(VRELString("Gr\xC3\xB6\xC3\x9F\x65")));
  EXPECT_TRUE(key->GetValue(0).equals(VRELString("\xC3\x96")));
  EXPECT_TRUE(key->GetValue(1).equals(VRELString("\xFF")));
  EXPECT_TRUE(file.ExistKey("Gr\xC3\xB6\xC3\x9F\x65", ""));
}

TEST(VRELCfgFileTest, ByteOrderMarkIsPartOfFirstLine) {
  Loaded const file("\xEF\xBB\xBF[a]\nk=1\n");
  EXPECT_EQ(file.result, VREL_E_FAIL);
  EXPECT_EQ(Errors(file), Texts{KeyError(1, "\xEF\xBB\xBF[a]")});
  EXPECT_EQ(Keys(file), Texts{"k[1]"});

  Loaded const marked("\xEF\xBB\xBFk=1\n");
  EXPECT_EQ(marked.result, VREL_S_OK);
  EXPECT_FALSE(marked.ExistKey("k", nullptr));
  EXPECT_TRUE(marked.ExistKey("\xEF\xBB\xBFk", nullptr));
}

TEST(VRELCfgFileTest, ZeroByteEndsLine) {
  using std::string_literals::operator""s;
  Loaded const file("a=1\0=2\n\0b=3\n[c\0]\nd\0=4\ne=5\0"s);
  EXPECT_EQ(file.result, VREL_E_FAIL);
  EXPECT_EQ(Keys(file), (Texts{"a[1]", "e[5]"}));
  EXPECT_EQ(Errors(file), (Texts{"Incorrect syntax: line 3:[c *** \"[section name]' expected.", KeyError(4, "d")}));
  EXPECT_EQ(Loaded(std::string(100000, '\0')).result, VREL_S_OK);
}

TEST(VRELCfgFileTest, LongLineIsReadInPieces) {
  struct Row {
    std::size_t length;  // of the line without its end
    std::size_t value;
    Texts errors;
  };
  // The line number of the bad line after it shows the number of pieces.
  Row const rows[] = {
      {1021, 1019, {KeyError(2, "bad")}},
      {1022, 1020, {KeyError(2, "bad")}},
      {1023, 1021, {KeyError(3, "bad")}},
      {1024, 1021, {KeyError(2, "v"), KeyError(3, "bad")}},
      {1025, 1021, {KeyError(2, "vv"), KeyError(3, "bad")}},
      {2045, 1021, {KeyError(2, std::string(1022, 'v')), KeyError(3, "bad")}},
      {2046, 1021, {KeyError(2, std::string(1023, 'v')), KeyError(4, "bad")}},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.length);
    Loaded const file("k=" + std::string(row.length - 2, 'v') + "\nbad\n");
    EXPECT_EQ(file.result, VREL_E_FAIL);
    EXPECT_EQ(Keys(file), Texts{"k[" + std::string(row.value, 'v') + "]"});
    EXPECT_EQ(Errors(file), row.errors);
  }
}

TEST(VRELCfgFileTest, PieceOfLongLineIsLine) {
  // The piece after the first 1023 bytes is a section, the next a key, and the next, with a carriage return, is blank.
  std::string const comment = "#" + std::string(1022, 'c');
  std::string const section = "[s]" + std::string(1020, ' ');
  std::string const key = "k=1" + std::string(1019, ' ') + "\r";
  Loaded const file(comment + section + key + "\nbad");
  EXPECT_EQ(Keys(file, "s"), Texts{"k[1]"});
  EXPECT_EQ(Errors(file), Texts{KeyError(5, "bad")});
}

TEST(VRELCfgFileTest, LineOfOneMegabyte) {
  // 1,048,576 bytes are 1025 pieces of 1023 and one byte.
  Loaded const file(std::string(1048576, 'x'));
  EXPECT_EQ(file.result, VREL_E_FAIL);
  ASSERT_EQ(file.GetErrorCount(), 1026);
  EXPECT_EQ(file.GetErrorMessage(0), KeyError(1, std::string(1023, 'x')));
  EXPECT_EQ(file.GetErrorMessage(1024), KeyError(1025, std::string(1023, 'x')));
  EXPECT_EQ(file.GetErrorMessage(1025), KeyError(1026, "x"));
  // Only the first piece has a separator.
  Loaded const commas("k=" + std::string(1048576, ','));
  EXPECT_EQ(commas.GetArraySize("k", nullptr), 1022);
  EXPECT_EQ(commas.GetErrorCount(), 1025);
}

TEST(VRELCfgFileTest, ManySectionsAreFound) {
  constexpr int count = 100000;
  std::string bytes;
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < count; ++i) {
      bytes += "[s" + std::to_string(i) + "]\nk=" + std::to_string(round * count + i) + "\n";
    }
  }
  Loaded file(bytes);
  EXPECT_EQ(file.result, VREL_S_OK);
  for (int i = 0; i < count; i += 997) {
    std::string const name = "s" + std::to_string(i);
    EXPECT_EQ(Keys(file, name.c_str()),
              (Texts{"k[" + std::to_string(i) + "]", "k[" + std::to_string(count + i) + "]"}));
  }
  EXPECT_EQ(file.findSection("s100000"), nullptr);
  EXPECT_NE(file.findSection("s99999"), nullptr);
  EXPECT_EQ(Keys(file), Texts{});
}

TEST(VRELCfgFileTest, ManyKeysAreFound) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += "k" + std::to_string(i) + "=" + std::to_string(i) + "\n";
  Loaded file(bytes);
  for (int i = 0; i < 100000; ++i) {
    int value = -1;
    ASSERT_EQ(file.GetInt(("k" + std::to_string(i)).c_str(), value, 0, nullptr), 1);
    ASSERT_EQ(value, i);
  }
}

TEST(VRELCfgFileTest, LoadsFile) {
  ScratchDirectory const directory;
  std::string const path = directory.Write("settings.cfg", "[a]\nk=1\n");
  VRELCfgFile file;
  EXPECT_EQ(file.Load(VRELFilePath(path.c_str())), VREL_S_OK);
  EXPECT_EQ(Keys(file, "a"), Texts{"k[1]"});
  EXPECT_EQ(CountOpenDescriptors(path), 0);
  std::string const bad = directory.Write("bad.cfg", "bad\n");
  EXPECT_EQ(file.Load(VRELFilePath(bad.c_str())), VREL_E_FAIL);
  EXPECT_EQ(CountOpenDescriptors(bad), 0);
}

TEST(VRELCfgFileTest, LoadFailureCodes) {
  ScratchDirectory const directory;
  VRELCfgFile file;
  EXPECT_EQ(file.Load(VRELFilePath()), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(file.Load(VRELFilePath(directory.Path("missing").c_str())), VREL_E_FILE_OPEN);
  EXPECT_EQ(file.Load(static_cast<std::FILE*>(nullptr)), VREL_E_INVALID_ARGUMENT);
  // Nothing was loaded.
  EXPECT_EQ(file.findSection(""), nullptr);
  EXPECT_EQ(file.GetErrorCount(), 0);
  // A directory can be opened, and has no content.
  EXPECT_EQ(file.Load(VRELFilePath(directory.Path().c_str())), VREL_S_OK);
  EXPECT_EQ(Keys(file), Texts{});
}

// The mode that is passed to VRELFilePath::OpenFile.
class RecordingPath : public VRELFilePath {
 public:
  using VRELFilePath::VRELFilePath;
  std::FILE* OpenFile(char const* mode) const override {
    modes.emplace_back(mode);
    return nullptr;
  }
  mutable Texts modes;
};

TEST(VRELCfgFileTest, OpensInTextMode) {
  VRELCfgFile file;
  RecordingPath const path("settings.cfg");
  EXPECT_EQ(file.Load(path), VREL_E_FILE_OPEN);
  EXPECT_EQ(path.modes, Texts{"rt"});
  RecordingPath const empty("");
  EXPECT_EQ(file.Load(empty), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(empty.modes, Texts{});
}

TEST(VRELCfgFileTest, LoadStartsAtStreamPosition) {
  std::FILE* const stream = std::tmpfile();
  ASSERT_NE(stream, nullptr);
  std::fputs("a=1\nb=2\n", stream);
  std::fseek(stream, 4, SEEK_SET);
  VRELCfgFile file;
  EXPECT_EQ(file.Load(stream), VREL_S_OK);
  EXPECT_EQ(Keys(file), Texts{"b[2]"});
  // The stream is still open, at its end.
  EXPECT_EQ(std::ftell(stream), 8);
  EXPECT_EQ(std::fclose(stream), 0);
}

TEST(VRELCfgFileTest, LoadsAccumulate) {
  Loaded file("a=1\n[s]\nb=2\n");
  // The second file starts in the default section, on line 1.
  EXPECT_EQ(LoadBytes(file, "c=3\n[s]\nd=4\nbad\n"), VREL_E_FAIL);
  EXPECT_EQ(Keys(file), (Texts{"a[1]", "c[3]"}));
  EXPECT_EQ(Keys(file, "s"), (Texts{"b[2]", "d[4]"}));
  EXPECT_EQ(Errors(file), Texts{KeyError(4, "bad")});
  // Errors are kept, so that a later load fails.
  EXPECT_EQ(LoadBytes(file, "e=5\n"), VREL_E_FAIL);
  EXPECT_EQ(Keys(file), (Texts{"a[1]", "c[3]", "e[5]"}));
  EXPECT_EQ(file.GetErrorCount(), 1);
}

TEST(VRELCfgFileTest, FailedReadFailsNextLoad) {
  Loaded file("a=x\n");
  EXPECT_EQ(file.result, VREL_S_OK);
  int value = 77;
  EXPECT_EQ(file.GetInt("a", value, 0, ""), 0);
  EXPECT_EQ(file.GetErrorCount(), 1);
  EXPECT_EQ(LoadBytes(file, "b=1\n"), VREL_E_FAIL);
}

TEST(VRELCfgFileTest, CreateSectionFindsExisting) {
  VRELCfgFile file;
  VRELCfgFileSection* const section = file.createSection("a");
  ASSERT_NE(section, nullptr);
  EXPECT_EQ(file.createSection("a"), section);
  EXPECT_EQ(file.findSection("a"), section);
  EXPECT_NE(file.createSection("A"), section);
  VRELCfgFileSection* const unnamed = file.createSection(nullptr);
  EXPECT_EQ(file.createSection(""), unnamed);
  EXPECT_EQ(file.findSection(nullptr), unnamed);
  section->createKey("k")->AppendValue("5");
  int value = 0;
  EXPECT_EQ(file.GetInt("k", value, 0, "a"), 1);
  EXPECT_EQ(value, 5);
}

TEST(VRELCfgFileTest, GetErrorMessage) {
  VRELCfgFile file;
  EXPECT_EQ(file.GetErrorMessage(0), nullptr);
  file.flagError("%s is %d%%", "share", 40);
  char const* const first = file.GetErrorMessage(0);
  EXPECT_STREQ(first, "share is 40%");
  for (int i = 0; i < 100; ++i) file.flagError("more");
  EXPECT_EQ(file.GetErrorCount(), 101);
  EXPECT_EQ(file.GetErrorMessage(0), first);
  EXPECT_STREQ(file.GetErrorMessage(100), "more");
  for (int index : {std::numeric_limits<int>::min(), -1, 101, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(file.GetErrorMessage(index), nullptr);
  }
}

TEST(VRELCfgFileTest, LongErrorIsTruncated) {
  VRELCfgFile file;
  file.flagError("%s", std::string(100000, 'e').c_str());
  EXPECT_EQ(file.GetErrorMessage(0), std::string(4095, 'e'));

  // A null format adds nothing.
  file.flagError(file.GetErrorMessage(1), 1);
  EXPECT_EQ(file.GetErrorCount(), 1);
}

TEST(VRELCfgFileTest, RemoveWhiteSpaces) {
  struct Row {
    char const* text;
    char const* rest;
  };
  Row const rows[] = {
      {"", ""}, {" ", ""}, {"\t \r\n", ""}, {"a", "a"}, {" \t\r\na b\t\tc\n\r\t ", "a b\t\tc"}, {"\va\f", "\va\f"},
  };
  for (Row const& row : rows) {
    std::string text = row.text;
    VRELCfgFile::removeWhiteSpaces(text.data());
    EXPECT_STREQ(text.c_str(), row.rest);
  }
  VRELCfgFile::removeWhiteSpaces(nullptr);
}

TEST(VRELCfgFileTest, ExistKeyAndGetArraySize) {
  Loaded const file("a=1,2,3\n[s]\nb=4\nb=5,6\n");
  EXPECT_TRUE(file.ExistKey("a", nullptr));
  EXPECT_TRUE(file.ExistKey("a", ""));
  EXPECT_TRUE(file.ExistKey("b", "s"));
  EXPECT_FALSE(file.ExistKey("a", "s"));
  EXPECT_FALSE(file.ExistKey("A", ""));
  EXPECT_FALSE(file.ExistKey("b", "t"));
  EXPECT_FALSE(file.ExistKey(nullptr, "s"));
  EXPECT_EQ(file.GetArraySize("a", nullptr), 3);
  EXPECT_EQ(file.GetArraySize("b", "s"), 1);
  EXPECT_EQ(file.GetArraySize("c", "s"), 0);
  EXPECT_EQ(file.GetArraySize("b", "t"), 0);
}

TEST(VRELCfgFileTest, ReadsFirstKeyByIndex) {
  Loaded file("a=1,2,3\na=7\n[s]\na=9\n");
  int value = 0;
  EXPECT_EQ(file.GetInt("a", value, 2, nullptr), 1);
  EXPECT_EQ(value, 3);
  EXPECT_EQ(file.GetInt("a", value, 0, nullptr), 1);
  EXPECT_EQ(value, 1);
  EXPECT_EQ(file.GetInt("a", value, 0, "s"), 1);
  EXPECT_EQ(value, 9);
  EXPECT_EQ(file.GetErrorCount(), 0);
  for (int index : {3, -1}) EXPECT_EQ(file.GetInt("a", value, index, nullptr), 0);
  EXPECT_EQ(value, 9);
  EXPECT_EQ(Errors(file), (Texts(2, "Incorrect syntax: key:a *** integer value expected.")));
}

TEST(VRELCfgFileTest, MissingKeyAddsNoError) {
  Loaded file("a=1\n");
  for (char const* section : {"", "s"}) {
    VRELString text(L"untouched");
    double number = 7.5;
    int integer = 77;
    bool flag = true;
    EXPECT_EQ(file.GetString("b", text, 0, section), 0);
    EXPECT_EQ(file.GetDouble("b", number, 0, section), 0);
    EXPECT_EQ(file.GetInt("b", integer, 0, section), 0);
    EXPECT_EQ(file.GetLogical("b", integer, 0, section), 0);
    EXPECT_EQ(file.GetBool("b", flag, 0, section), 0);
    EXPECT_EQ(text.toUtf8(), "untouched");
    EXPECT_EQ(number, 7.5);
    EXPECT_EQ(integer, 77);
    EXPECT_TRUE(flag);
  }
  EXPECT_EQ(file.GetErrorCount(), 0);
}

TEST(VRELCfgFileTest, GetStringNeverFails) {
  Loaded const file("a=x,, y\n");
  char const* const values[] = {"x", "", " y", ""};
  for (int index = 0; index < 4; ++index) {
    VRELString text(L"before");
    EXPECT_EQ(file.GetString("a", text, index, nullptr), 1);
    EXPECT_EQ(text.toUtf8(), values[index]);
  }
  EXPECT_EQ(file.GetErrorCount(), 0);
}

// Returns a value read as each kind; "-" if the read fails.
struct Reading {
  char const* value;
  char const* asDouble;
  char const* asInt;
  char const* asLogical;
  char const* asBool;
};

std::string Shown(int result, std::string const& value) {
  EXPECT_TRUE(result == 0 || result == 1);
  return result == 1 ? value : "-";
}

TEST(VRELCfgFileTest, TypedReads) {
  Reading const rows[] = {
      {"0", "0", "0", "0", "-"},
      {"1", "1", "1", "1", "-"},
      {"+1", "1", "1", "1", "-"},
      {"2", "2", "2", "-", "-"},
      {"-1", "-1", "-1", "-", "-"},
      {"0x1", "-", "1", "1", "-"},
      {"0x1F", "-", "31", "-", "-"},
      {"1.5", "1.5", "-", "-", "-"},
      {"-.5", "-0.5", "-", "-", "-"},
      {"2e3", "2000", "-", "-", "-"},
      {"1.0", "1", "-", "-", "-"},
      {"12 ", "-", "-", "-", "-"},
      {"TRUE", "-", "-", "1", "true"},
      {"true", "-", "-", "1", "true"},
      {"FaLsE", "-", "-", "0", "false"},
      {"yes", "-", "-", "-", "-"},
      {"on", "-", "-", "-", "-"},
      {" true", "-", "-", "-", "-"},
      {"", "-", "-", "-", "-"},
      // A sign is an integer without digits.
      {"-", "-", "0", "0", "-"},
      {"9999999999", "1e+10", "2147483647", "-", "-"},
      {"\xC3\x96", "-", "-", "-", "-"},
  };
  for (Reading const& row : rows) {
    SCOPED_TRACE(row.value);
    VRELCfgFile file;
    file.createSection("s")->createKey("k")->AppendValue(row.value);
    double number = 7.5;
    int integer = 77;
    int logical = 77;
    bool const before = std::string(row.asBool) == "false";
    bool flag = before;
    int const gotDouble = file.GetDouble("k", number, 0, "s");
    char shownDouble[32];
    std::snprintf(shownDouble, sizeof shownDouble, "%g", number);
    EXPECT_EQ(Shown(gotDouble, shownDouble), row.asDouble);
    int const gotInt = file.GetInt("k", integer, 0, "s");
    EXPECT_EQ(Shown(gotInt, std::to_string(integer)), row.asInt);
    int const gotLogical = file.GetLogical("k", logical, 0, "s");
    EXPECT_EQ(Shown(gotLogical, std::to_string(logical)), row.asLogical);
    int const gotBool = file.GetBool("k", flag, 0, "s");
    EXPECT_EQ(Shown(gotBool, flag ? "true" : "false"), row.asBool);
    // Failed reads keep the target, and each adds an error.
    Texts errors;
    if (gotDouble == 0) {
      EXPECT_EQ(number, 7.5);
      errors.emplace_back("Incorrect syntax: key:k *** double value expected.");
    }
    if (gotInt == 0) {
      EXPECT_EQ(integer, 77);
      errors.emplace_back("Incorrect syntax: key:k *** integer value expected.");
    }
    if (gotLogical == 0) {
      EXPECT_EQ(logical, 77);
      errors.emplace_back(
          "Incorrect syntax: key:k *** integer \"0\" or \"1\" or string \"TRUE\" or \"FALSE\" expected.");
    }
    if (gotBool == 0) {
      EXPECT_EQ(flag, before);
      errors.emplace_back("Incorrect syntax: key:k *** bool value \"true\" or \"false\" expected.");
    }
    EXPECT_EQ(Errors(file), errors);
  }
}

TEST(VRELCfgFileTest, ErrorHasAsciiKey) {
  VRELCfgFile file;
  VRELString const name(L"100% \u00D6");
  char* bytes = nullptr;
  ASSERT_EQ(VRELStringToChars(name, bytes), VREL_S_OK);
  VRELCfgFileKey* const key = file.createSection("")->createKey(bytes);
  VRELReleaseChars(bytes);
  if (!key->GetName().equals(name)) GTEST_SKIP() << "the default codepage lacks the letter";
  int value = 0;
  EXPECT_EQ(file.GetInt(key->GetName().toUtf8().c_str(), value, 0, nullptr), 0);
  EXPECT_EQ(Errors(file), Texts{"Incorrect syntax: key:100% \x1A *** integer value expected."});
}

TEST(VRELCfgFileTest, RandomFiles) {
  // Each piece is skipped, a section, a key or an error.
  std::uint32_t state = 20260311;
  auto const next = [&state] { return (state = state * 1664525U + 1013904223U) >> 16; };
  char const alphabet[] = "ab=:,[]#; \t\r\n\n\0\xC3\xFF";
  for (int round = 0; round < 200; ++round) {
    std::string bytes(next() % 4000, '\0');
    for (char& byte : bytes) byte = alphabet[next() % (sizeof alphabet - 1)];
    Loaded const file(bytes);
    EXPECT_EQ(file.result == VREL_S_OK, file.GetErrorCount() == 0);
    for (std::string const& error : Errors(file)) EXPECT_EQ(error.rfind("Incorrect syntax: line ", 0), 0U);
  }
}

}  // namespace
