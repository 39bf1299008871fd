#include "VRELArchive.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "Gk_PacketInputStream.h"
#include "VRELArchiveException.h"
#include "VRELString.h"
#include "VRELStringInputStream.h"

namespace {

using std::string_literals::operator""s;

// Reads from memory, and records the requests of an archive and the heap memory that is in use during them.
class Bytes : public VRELInputStream {
 public:
  explicit Bytes(std::string bytes) : text(std::move(bytes)), heapAtStart(HeapInUse()) {}

  VRELInputStream* duplicate() override { return nullptr; }
  int read(char* buffer, int count) override {
    if (count < 0) return -1;
    requests.push_back(count);
    heap = std::max(heap, static_cast<long>(HeapInUse()) - static_cast<long>(heapAtStart));
    if (mustFail) return -1;
    std::size_t const taken = std::min(static_cast<std::size_t>(count), text.size() - offset);
    std::memcpy(buffer, text.data() + offset, taken);
    offset += taken;
    return static_cast<int>(taken);
  }

  std::size_t Left() const { return text.size() - offset; }

  std::string text;
  std::size_t offset = 0;
  bool mustFail = false;
  std::vector<int> requests;
  long heap = 0;  // the largest growth of the heap since the start

 private:
  static std::size_t HeapInUse() {
    auto const info = mallinfo2();
    return info.uordblks + info.hblkhd;
  }

  std::size_t heapAtStart;
};

// Returns the code of the exception that `body` throws, or 0.
int Thrown(std::function<void()> const& body) {
  try {
    body();
    return 0;
  } catch (VRELArchiveException* exception) {
    std::unique_ptr<VRELArchiveException> const owned(exception);
    return exception->GetCode();
  }
}

template <class T>
T Read(std::string const& bytes) {
  Bytes stream(bytes);
  VRELArchive archive(&stream);
  T value{};
  EXPECT_EQ(&(archive >> value), &archive);
  EXPECT_EQ(archive.GetBytesRead(), static_cast<long>(bytes.size()));
  EXPECT_EQ(stream.Left(), 0U);
  return value;
}

TEST(VRELArchiveTest, ValueWidths) {
  EXPECT_EQ(Read<unsigned char>("\xFE"), 254);
  EXPECT_EQ(Read<char>("\xFE"), '\xFE');
  EXPECT_EQ(Read<unsigned short>("\x01\xFF"), 0xFF01);
  EXPECT_EQ(Read<short>("\xFE\xFF"), -2);
  EXPECT_EQ(Read<unsigned int>("\x01\x02\x03\xF4"), 0xF4030201U);
  EXPECT_EQ(Read<int>("\xFD\xFF\xFF\xFF"), -3);
  EXPECT_EQ(Read<long>("\x04\x03\x02\x01"), 0x01020304L);
  EXPECT_EQ(Read<long>("\xFC\xFF\xFF\xFF"), -4L);
  EXPECT_EQ(Read<float>("\x00\x00\xA0\xBF"s), -1.25F);
  EXPECT_EQ(Read<double>("\x00\x00\x00\x00\x00\x00\xF4\x3F"s), 1.25);
}

TEST(VRELArchiveTest, ChainedReads) {
  Bytes stream("\x01\x02\x03\x04\x00\x00\x00Z"s);
  VRELArchive archive(&stream);
  unsigned char a = 0;
  unsigned short b = 0;
  int c = 0;
  char d = 0;
  archive >> a >> b >> c >> d;
  EXPECT_EQ(a, 1);
  EXPECT_EQ(b, 0x302);
  EXPECT_EQ(c, 4);
  EXPECT_EQ(d, 'Z');
  EXPECT_EQ(archive.GetBytesRead(), 8);
}

// A memory stream is read without a virtual call, with the same results.
TEST(VRELArchiveTest, MemoryStreamFastPath) {
  std::string const bytes = "\x01\x02\x03\x04\x00\x00\x00\x02hi\xFF"s;
  VRELStringInputStream stream(Gk_String(bytes.c_str(), static_cast<int>(bytes.size()) + 1));
  VRELArchive archive(&stream);
  unsigned char a = 0;
  unsigned short b = 0;
  int c = 0;
  VRELString text;
  archive >> a >> b;
  EXPECT_EQ(stream.readChar(), 4);
  stream.add(Gk_String("\x04", 1));
  archive >> c;
  archive.RestoreCString(text);
  EXPECT_EQ(a, 1);
  EXPECT_EQ(b, 0x302);
  EXPECT_EQ(c, 4);
  EXPECT_EQ(text.toUtf8(), "hi");
  EXPECT_EQ(archive.GetBytesRead(), 10);
  EXPECT_EQ(Thrown([&] { archive >> b; }), 1);
  EXPECT_EQ(archive.GetBytesRead(), 11);
  EXPECT_EQ(stream.readChar(), -1);  // the last byte was consumed
}

TEST(VRELArchiveTest, DerivedMemoryStreamIsCalled) {
  struct Rotated : VRELStringInputStream {
    using VRELStringInputStream::VRELStringInputStream;
    int read(char* buffer, int count) override {
      int const taken = VRELStringInputStream::read(buffer, count);
      for (int i = 0; i < taken; ++i) ++buffer[i];
      return taken;
    }
  };
  Rotated stream(Gk_String("AB"));
  VRELArchive archive(&stream);
  char a = 0;
  char b = 0;
  archive >> a >> b;
  EXPECT_EQ(a, 'B');
  EXPECT_EQ(b, 'C');
}

TEST(VRELArchiveTest, NanDoubleThrows) {
  Bytes stream("\x00\x00\x00\x00\x00\x00\xF8\x7F\x01\x00\x00\x00\x00\x00\xF0\xFF\x00\x00\x00\x00\x00\x00\xF0\xFF"s);
  VRELArchive archive(&stream);
  double value = 5;
  EXPECT_EQ(Thrown([&] { archive >> value; }), 2);
  EXPECT_TRUE(std::isnan(value));
  value = 5;
  EXPECT_EQ(Thrown([&] { archive >> value; }), 2);
  EXPECT_TRUE(std::isnan(value));
  EXPECT_EQ(Thrown([&] { archive >> value; }), 0);
  EXPECT_EQ(value, -std::numeric_limits<double>::infinity());
  EXPECT_EQ(archive.GetBytesRead(), 24);
}

TEST(VRELArchiveTest, NanFloatIsRead) {
  EXPECT_TRUE(std::isnan(Read<float>("\x00\x00\xC0\x7F"s)));
  EXPECT_TRUE(std::isnan(Read<float>("\x01\x00\x80\x7F"s)));
}

template <class T>
void ExpectEndInside(std::string const& bytes) {
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    SCOPED_TRACE(length);
    Bytes stream(bytes.substr(0, length));
    VRELArchive archive(&stream);
    T value = 3;
    EXPECT_EQ(Thrown([&] { archive >> value; }), 1);
    EXPECT_EQ(value, T(3));
    EXPECT_EQ(stream.Left(), 0U);
    EXPECT_EQ(archive.GetBytesRead(), static_cast<long>(length));
  }
}

TEST(VRELArchiveTest, TruncatedValueThrows) {
  ExpectEndInside<unsigned char>("a");
  ExpectEndInside<char>("a");
  ExpectEndInside<unsigned short>("ab");
  ExpectEndInside<short>("ab");
  ExpectEndInside<unsigned int>("abcd");
  ExpectEndInside<int>("abcd");
  ExpectEndInside<long>("abcd");
  ExpectEndInside<float>("abcd");
  ExpectEndInside<double>("abcdefgh");
}

TEST(VRELArchiveTest, ReadIsExact) {
  Bytes stream("abcdef");
  VRELArchive archive(&stream);
  char buffer[8] = {};
  EXPECT_EQ(archive.Read(buffer, 4), 4);
  EXPECT_STREQ(buffer, "abcd");
  EXPECT_EQ(archive.Read(buffer, 0), 0);
  EXPECT_EQ(Thrown([&] { archive.Read(buffer, 3); }), 1);
  EXPECT_EQ(std::string(buffer), "efcd");
  EXPECT_EQ(archive.GetBytesRead(), 6);
  EXPECT_EQ(Thrown([&] { archive.Read(buffer, -5); }), 1);
}

TEST(VRELArchiveTest, FailedReadIsCounted) {
  Bytes stream("abcdef");
  VRELArchive archive(&stream);
  unsigned short value = 7;
  archive >> value;
  stream.mustFail = true;
  EXPECT_EQ(Thrown([&] { archive >> value; }), 1);
  EXPECT_EQ(archive.GetBytesRead(), 1);
  EXPECT_EQ(value, 0x6261);
}

TEST(VRELArchiveTest, NullStreamThrows) {
  VRELArchive archive(nullptr);
  char byte = 0;
  double number = 0;
  VRELString text(L"kept");
  EXPECT_EQ(archive.Read(&byte, 0), 0);
  EXPECT_EQ(Thrown([&] { archive.Read(&byte, 1); }), 1);
  EXPECT_EQ(Thrown([&] { archive >> byte; }), 1);
  EXPECT_EQ(Thrown([&] { archive >> number; }), 1);
  EXPECT_EQ(Thrown([&] { archive.RestoreCount(); }), 1);
  EXPECT_EQ(Thrown([&] { archive.GetCStringLength(); }), 1);
  EXPECT_EQ(Thrown([&] { archive.RestoreCString(text); }), 1);
  EXPECT_EQ(Thrown([&] { archive.RestoreClassObject(text, nullptr); }), 1);
  EXPECT_EQ(text.toUtf8(), "kept");
  EXPECT_EQ(archive.GetBytesRead(), 0);
}

TEST(VRELArchiveTest, RestoreCount) {
  struct {
    std::string bytes;
    long count;
  } const cases[] = {{"\x00\x00"s, 0},
                     {"\x05\x00"s, 5},
                     {"\xFE\xFF", 65534},
                     {"\xFF\xFF\x10\x00\x00\x00"s, 16},
                     {"\xFF\xFF\x00\x00\x01\x00"s, 65536},
                     {"\xFF\xFF\xFF\xFF\xFF\xFF", 4294967295}};
  for (auto const& row : cases) {
    SCOPED_TRACE(row.count);
    Bytes stream(row.bytes);
    VRELArchive archive(&stream);
    EXPECT_EQ(archive.RestoreCount(), row.count);
    EXPECT_EQ(stream.Left(), 0U);
    Bytes cut(row.bytes.substr(0, row.bytes.size() - 1));
    VRELArchive cutArchive(&cut);
    EXPECT_EQ(Thrown([&] { cutArchive.RestoreCount(); }), 1);
  }
}

TEST(VRELArchiveTest, GetCStringLength) {
  struct {
    std::string bytes;
    long length;
  } const cases[] = {{"\x00"s, 0},
                     {"\x01", 1},
                     {"\xFE", 254},
                     {"\xFF\x00\x01"s, 256},
                     {"\xFF\x03\x00"s, 3},
                     {"\xFF\xFD\xFF", 65533},
                     {"\xFF\xFE\xFF", -1},
                     {"\xFF\xFF\xFF\x04\x00\x00\x00"s, 4},
                     {"\xFF\xFF\xFF\x00\x00\x00\x80"s, 2147483648},
                     {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 4294967295}};
  for (auto const& row : cases) {
    SCOPED_TRACE(row.length);
    Bytes stream(row.bytes);
    VRELArchive archive(&stream);
    EXPECT_EQ(archive.GetCStringLength(), row.length);
    EXPECT_EQ(stream.Left(), 0U);
    for (std::size_t cut = 0; cut < row.bytes.size(); ++cut) {
      Bytes cutStream(row.bytes.substr(0, cut));
      VRELArchive cutArchive(&cutStream);
      EXPECT_EQ(Thrown([&] { cutArchive.GetCStringLength(); }), 1);
    }
  }
}

// Returns the string of an archive with one string.
VRELString Restored(std::string const& bytes) {
  Bytes stream(bytes);
  VRELArchive archive(&stream);
  VRELString text(L"before");
  archive.RestoreCString(text);
  EXPECT_EQ(stream.Left(), 0U);
  return text;
}

std::string Wide(std::u32string const& text) {
  return std::string(reinterpret_cast<char const*>(text.data()), text.size() * 4);
}

TEST(VRELArchiveTest, NarrowStrings) {
  EXPECT_EQ(Restored("\x00"s).length(), 0);
  EXPECT_EQ(Restored("\x04"
                     "bolt")
                .toUtf8(),
            "bolt");
  std::string const longer(256, 'x');
  EXPECT_EQ(Restored("\xFF\x00\x01"s + longer).toUtf8(), longer);
  EXPECT_EQ(Restored("\xFF\xFF\xFF\x02\x00\x00\x00no"s).toUtf8(), "no");
  // The string ends at its first zero; the bytes after it are read nevertheless.
  EXPECT_EQ(Restored("\x05"
                     "ab\0cd"s)
                .toUtf8(),
            "ab");
}

TEST(VRELArchiveTest, LongStrings) {
  for (std::size_t const length : {4095U, 4096U, 4097U, 8191U, 8192U, 8193U, 65533U, 200000U}) {
    SCOPED_TRACE(length);
    std::string text(length, ' ');
    for (std::size_t i = 0; i < length; ++i) text[i] = static_cast<char>('a' + i % 26);
    std::string size(4, '\0');
    for (std::size_t i = 0; i < 4; ++i) size[i] = static_cast<char>(length >> (8 * i));
    EXPECT_EQ(Restored("\xFF\xFF\xFF" + size + text).toUtf8(), text);
    EXPECT_EQ(Restored("\xFF\xFE\xFF\xFF\xFF\xFF" + size + Wide(std::u32string(text.begin(), text.end()))).toUtf8(),
              text);
  }
}

TEST(VRELArchiveTest, WideStrings) {
  EXPECT_EQ(Restored("\xFF\xFE\xFF\x02"s + Wide(U"Zo")).view(), u"Zo");
  EXPECT_EQ(Restored("\xFF\xFE\xFF\x02"s + Wide(U"\u00D6\U0001F529")).view(), u"\u00D6\U0001F529");
  EXPECT_EQ(Restored("\xFF\xFE\xFF\x00"s).length(), 0);
  EXPECT_EQ(Restored("\xFF\xFE\xFF\x03"s + Wide(U"a\0b"s)).view(), u"a");
}

TEST(VRELArchiveTest, WideStringsWithInvalidUnits) {
  for (unsigned const unit : {0xD800U, 0xDFFFU, 0x110000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(unit);
    std::u32string text = U"ab?c";
    text[2] = static_cast<char32_t>(unit);
    VRELString const restored = Restored("\xFF\xFE\xFF\x04"s + Wide(text));
    EXPECT_TRUE(restored.getBadConversion());
    EXPECT_EQ(restored.length(), 0);
  }
}

// A second mark is not a length.
TEST(VRELArchiveTest, SecondWideMarkThrows) {
  Bytes stream("\xFF\xFE\xFF\xFF\xFE\xFF\x01" + Wide(U"a"));
  VRELArchive archive(&stream);
  VRELString text(L"kept");
  EXPECT_EQ(Thrown([&] { archive.RestoreCString(text); }), 1);
  EXPECT_EQ(text.toUtf8(), "kept");
}

TEST(VRELArchiveTest, EmptyStringAtEnd) {
  VRELStringInputStream underlying(Gk_String("\0\0", 2));
  Gk_PacketInputStream stream(&underlying, 16);  // returns -1 for 0 bytes at its end
  VRELArchive archive(&stream);
  VRELString text(L"before");
  archive.RestoreCString(text);
  EXPECT_EQ(text.length(), 0);
}

TEST(VRELArchiveTest, TruncatedStringThrows) {
  std::string const narrow =
      "\x04"
      "bolt";
  std::string const wide = "\xFF\xFE\xFF\x02" + Wide(U"Zo");
  std::string const longer = "\xFF\x00\x20"s + std::string(8192, 'x');
  for (std::string const& bytes : {narrow, wide, longer}) {
    for (std::size_t cut = 0; cut < bytes.size(); cut += cut < 20 ? 1 : 100) {
      SCOPED_TRACE(cut);
      Bytes stream(bytes.substr(0, cut));
      VRELArchive archive(&stream);
      VRELString text(L"kept");
      EXPECT_EQ(Thrown([&] { archive.RestoreCString(text); }), 1);
      EXPECT_EQ(text.toUtf8(), "kept");
      EXPECT_EQ(stream.Left(), 0U);
    }
  }
}

// Pages of the process that are in memory, in bytes.
long ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  long total = 0;
  long resident = 0;
  statm >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

TEST(VRELArchiveTest, StringIsReadInOneCall) {
  struct {
    std::string mark;
    std::vector<int> requests;
  } const rows[] = {
      {"\x04", {1, 4}},
      {"\xFF\xFF\xFF\x40\x42\x0F\x00"s, {1, 2, 4, 1000000}},
      {"\xFF\xFF\xFF\xFF\xFF\xFF\x7F"s, {1, 2, 4, 0x7FFFFFFF}},
      {"\xFF\xFE\xFF\x03", {1, 2, 1, 12}},
      {"\xFF\xFE\xFF\xFF\x10\x27"s, {1, 2, 1, 2, 40000}},
      {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x1F"s, {1, 2, 1, 2, 4, 0x7FFFFFFC}},
  };
  for (auto const& row : rows) {
    for (std::size_t const arriving : {0U, 3U, 5000U, 100000U}) {
      int const bytes = row.requests.back();
      if (arriving >= static_cast<std::size_t>(bytes)) continue;
      SCOPED_TRACE(std::to_string(arriving) + " of " + std::to_string(bytes));
      VRELString text(L"kept");
      Bytes stream(row.mark + std::string(arriving, 'x'));
      VRELArchive archive(&stream);
      long const resident = ResidentBytes();
      EXPECT_EQ(Thrown([&] { archive.RestoreCString(text); }), 1);
      EXPECT_EQ(text.toUtf8(), "kept");
      EXPECT_EQ(archive.GetBytesRead(), static_cast<long>(row.mark.size() + arriving));
      EXPECT_EQ(stream.requests, row.requests);
      EXPECT_LE(stream.heap, 1024);
      EXPECT_LE(ResidentBytes() - resident, 1 << 20);
    }
  }
}

TEST(VRELArchiveTest, StringAboveIntMaxThrows) {
  for (std::string const& mark :
       {"\xFF\xFF\xFF\x00\x00\x00\x80"s, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\xFF\xFE\xFF\xFF\xFF\xFF\x00\x00\x00\x20"s,
        "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}) {
    VRELString text(L"kept");
    Bytes stream(mark + std::string(100, 'x'));
    VRELArchive archive(&stream);
    EXPECT_EQ(Thrown([&] { archive.RestoreCString(text); }), 1);
    EXPECT_EQ(text.toUtf8(), "kept");
    EXPECT_EQ(stream.Left(), 100U);
  }
}

TEST(VRELArchiveTest, StringWithoutAddressSpaceThrows) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "AddressSanitizer needs the address space";
#endif
  ChildResult const child = RunInChildWithoutTeardown([] {
    rlimit const limit = {1UL << 30, 1UL << 30};
    setrlimit(RLIMIT_AS, &limit);
    Bytes stream("\xFF\xFF\xFF\xFF\xFF\xFF\x7F" + std::string(100, 'x'));
    VRELArchive archive(&stream);
    VRELString text;
    return Thrown([&] { archive.RestoreCString(text); }) == 1 ? 0 : 1;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.output;
}

struct ClassRecord {
  VRINResult result = VREL_E_FAIL;
  unsigned short tag = 0;
  std::string name;
  std::size_t left = 0;
};

ClassRecord RestoreClass(std::string const& bytes, std::string const& name) {
  Bytes stream(bytes);
  VRELArchive archive(&stream);
  ClassRecord record;
  VRELString text(name);
  record.result = archive.RestoreClassObject(text, &record.tag);
  record.name = text.toUtf8();
  record.left = stream.Left();

  // The overload with an expected name, without a tag.
  Bytes again(bytes);
  VRELArchive other(&again);
  EXPECT_EQ(other.RestoreClassObject(name.c_str(), nullptr), record.result);
  EXPECT_EQ(again.Left(), record.left);
  return record;
}

std::string NewClass(std::string const& name) {
  return "\xFF\xFF\x01\x00"s + static_cast<char>(name.size()) + '\0' + name;
}

TEST(VRELArchiveTest, NewClassStoresName) {
  ClassRecord const record = RestoreClass(NewClass("Foo") + "rest", "");
  EXPECT_EQ(record.result, 0);
  EXPECT_EQ(record.tag, 0xFFFF);
  EXPECT_EQ(record.name, "Foo");
  EXPECT_EQ(record.left, 4U);
}

TEST(VRELArchiveTest, NewClassMustMatchName) {
  ClassRecord const same = RestoreClass(NewClass("Foo") + "rest", "Foo");
  EXPECT_EQ(same.result, 0);
  EXPECT_EQ(same.name, "Foo");
  EXPECT_EQ(same.left, 4U);
  for (std::string const& other : {"Bar"s, "foo"s, "Fo"s, "Fooo"s}) {
    ClassRecord const record = RestoreClass(NewClass("Foo") + "rest", other);
    EXPECT_EQ(record.result, 0x1000001);
    EXPECT_EQ(record.tag, 0xFFFF);
    EXPECT_EQ(record.name, other);
    EXPECT_EQ(record.left, 4U);  // the name was read
  }
}

TEST(VRELArchiveTest, ClassWithoutName) {
  EXPECT_EQ(RestoreClass(NewClass(""), "").result, 0);
  EXPECT_EQ(RestoreClass(NewClass(""), "Foo").result, 0x1000001);
}

TEST(VRELArchiveTest, LongClassNameFails) {
  std::string const longest(63, 'N');
  ClassRecord const good = RestoreClass(NewClass(longest) + "rest", "");
  EXPECT_EQ(good.result, 0);
  EXPECT_EQ(good.name, longest);
  EXPECT_EQ(good.left, 4U);
  EXPECT_EQ(RestoreClass(NewClass(longest), longest).result, 0);
  for (std::string const& bytes :
       {NewClass(std::string(64, 'N')), "\xFF\xFF\x01\x00\xFF\xFF"s + std::string(64, 'N')}) {
    ClassRecord const record = RestoreClass(bytes, "");
    EXPECT_EQ(record.result, 0x1000001);
    EXPECT_EQ(record.tag, 0xFFFF);
    EXPECT_EQ(record.name, "");
    EXPECT_EQ(record.left, 64U);
  }
}

TEST(VRELArchiveTest, ObjectTags) {
  struct {
    std::string bytes;
    long result;
    unsigned short tag;
  } const cases[] = {{"\x01\x80"s, 0, 0x8001},          // a class read before
                     {"\xFE\xFF"s, 0, 0xFFFE},          //
                     {"\x00\x80"s, 0, 0x8000},          //
                     {"\x05\x00"s, 0x1000001, 5},       // an object
                     {"\xFE\x7F"s, 0x1000001, 0x7FFE},  //
                     {"\x00\x00"s, 0x1000001, 0},
                     {"\xFF\x7F\x01\x00\x00\x80"s, 0, 0x7FFF},  // the same with four bytes
                     {"\xFF\x7F\xFF\xFF\x00\x80"s, 0, 0x7FFF},
                     {"\xFF\x7F\xFF\xFF\xFF\xFF"s, 0, 0x7FFF},
                     {"\xFF\x7F\x01\x00\x00\x00"s, 0x1000001, 0x7FFF},
                     {"\xFF\x7F\xFF\xFF\xFF\x7F"s, 0x1000001, 0x7FFF},
                     {"\xFF\x7F\x00\x00\x00\x00"s, 0x1000001, 0x7FFF}};
  for (auto const& row : cases) {
    SCOPED_TRACE(testing::PrintToString(row.bytes));
    for (std::string const& name : {""s, "Foo"s}) {
      ClassRecord const record = RestoreClass(row.bytes + "rest", name);
      EXPECT_EQ(record.result, row.result);
      EXPECT_EQ(record.tag, row.tag);
      EXPECT_EQ(record.name, name);
      EXPECT_EQ(record.left, 4U);
    }
  }
}

TEST(VRELArchiveTest, TruncatedRecordThrows) {
  for (std::string const& bytes : {NewClass("Foo"), "\xFF\x7F\x01\x00\x00\x80"s}) {
    for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
      SCOPED_TRACE(cut);
      Bytes stream(bytes.substr(0, cut));
      VRELArchive archive(&stream);
      VRELString name;
      unsigned short tag = 0x1234;
      EXPECT_EQ(Thrown([&] { archive.RestoreClassObject(name, &tag); }), 1);
      EXPECT_EQ(name.length(), 0);
      // The tag is stored once both tags are read.
      bool const isTagRead = cut >= 2 && bytes[1] != '\x7F';
      EXPECT_EQ(tag, isTagRead ? 0xFFFF : 0x1234);
    }
  }
}

TEST(VRELArchiveTest, NullNameMatchesAny) {
  Bytes stream(NewClass("Foo") + NewClass("Bar"));
  VRELArchive archive(&stream);
  EXPECT_EQ(archive.RestoreClassObject(nullptr, nullptr), 0);
  EXPECT_EQ(archive.RestoreClassObject("", nullptr), 0);
}

// Reads a small model like a format module.
void ReadModel(VRELArchive& archive) {
  VRELString name;
  unsigned short tag = 0;
  if (archive.RestoreClassObject(name, &tag).IsFailure()) return;
  for (long n = archive.RestoreCount(); n > 0; --n) {
    VRELString text;
    archive.RestoreCString(text);
    double x = 0;
    float y = 0;
    long id = 0;
    archive >> id >> x >> y;
  }
}

std::string Model() {
  return NewClass("Part") + "\x02\x00"s + "\x03hub"s + "\x01\x00\x00\x00"s + std::string(12, '\0') +
         "\xFF\xFE\xFF\x02"s + Wide(U"Zo") + "\x02\x00\x00\x00"s + std::string(12, '\0');
}

TEST(VRELArchiveTest, EveryPrefixThrows) {
  std::string const model = Model();
  for (std::size_t cut = 0; cut <= model.size(); ++cut) {
    SCOPED_TRACE(cut);
    Bytes stream(model.substr(0, cut));
    VRELArchive archive(&stream);
    EXPECT_EQ(Thrown([&] { ReadModel(archive); }), cut < model.size() ? 1 : 0);
  }
}

TEST(VRELArchiveTest, RandomBytes) {
  std::mt19937 random(31);
  int ends = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string bytes = i % 2 == 0 ? std::string(random() % 200, '\0') : Model();
    if (i % 2 == 0) {
      for (char& byte : bytes) byte = random() % 3 == 0 ? '\xFF' : static_cast<char>(random());
    } else {
      for (int j = 0; j < 3; ++j)
        bytes[random() % bytes.size()] = random() % 2 == 0 ? '\xFF' : static_cast<char>(random());
    }
    std::size_t const size = bytes.size();
    Bytes stream(bytes);
    VRELArchive archive(&stream);
    int const code = Thrown([&] {
      while (stream.Left() > 0) ReadModel(archive);
    });
    ASSERT_TRUE(code >= 0 && code <= 2);
    ASSERT_LE(archive.GetBytesRead(), static_cast<long>(size));
    ends += code == 1;
  }
  EXPECT_GT(ends, 1000);
}

TEST(VRELArchiveTest, IsnanTestsExponent) {
  struct {
    std::string bytes;
    std::uint32_t result;
  } const cases[] = {
      {"\x00\x00\x00\x00"s, 0},          {"\x00\x00\x80\x3F"s, 0},          {"\xFF\xFF\x7F\x7F"s, 0},
      {"\xFF\xFF\x7F\xFF"s, 0},          {"\x00\x00\x80\x7F"s, 0x7FFFFFFF}, {"\x00\x00\x80\xFF"s, 0xFFFFFFFF},
      {"\x00\x00\xC0\x7F"s, 0x7FFFFFFF}, {"\x01\x00\x80\xFF"s, 0xFFFFFFFF}, {"\xFF\xFF\xFF\x7F"s, 0x7FFFFFFF}};
  for (auto const& row : cases) {
    std::string bytes = row.bytes;
    EXPECT_EQ(VRELIsnan(bytes.data()), static_cast<int>(row.result));
  }
}

}  // namespace
