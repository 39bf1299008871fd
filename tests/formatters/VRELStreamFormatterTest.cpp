#include "VRELStreamFormatter.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "Gk_ROString.h"
#include "Gk_String.h"
#include "StreamText.h"
#include "TurkishLocale.h"
#include "VRELOutputStream.h"
#include "VRELString.h"
#include "VRELValue.h"
#include "VirtualSlot.h"

namespace {

bool hasNoDecimalPoint = false;

}  // namespace

// Replaces localeconv of the C library, which always has a decimal point.
extern "C" VREL_EXPORT lconv* localeconv() noexcept {
  static lconv withoutPoint = {};
  if (hasNoDecimalPoint) return &withoutPoint;
  static auto* const inLibrary = reinterpret_cast<lconv* (*)()>(dlsym(RTLD_NEXT, "localeconv"));
  return inLibrary();
}

namespace {

using Object = VRELStreamFormatter::VRELStreamFormatterObject;
using ObjectHandle = VRELStreamFormatter::VRELStreamFormatterObjectHandle;
using Margin = VRELStreamFormatter::VRELStreamFormatterMargin;
using MarginHandle = VRELStreamFormatter::VRELStreamFormatterMarginHandle;

constexpr auto mode1 = static_cast<VRELRealTrailingZerosRemovalFormat>(1);

// Records each call.
class RecordingStream : public VRELOutputStream {
 public:
  explicit RecordingStream(std::vector<std::string>& record) : calls(record) {}

  int write(char const* buffer, int count) override {
    calls.push_back("write " + std::string(buffer, static_cast<std::size_t>(count)));
    return -1;
  }
  int writeChar(char c) override {
    calls.push_back(std::string("writeChar ") + c);
    return -1;
  }
  void flush() override { calls.emplace_back("flush"); }
  void close() override { calls.emplace_back("close"); }

 private:
  std::vector<std::string>& calls;
};

// Records which dump is called for each value.
class RecordingFormatter : public VRELStreamFormatter {
 public:
  explicit RecordingFormatter(VRELOutputStream* stream = nullptr) : VRELStreamFormatter(stream) {}

  void dump(char) override { calls += "char "; }
  void dump(int value) override { calls += "int:" + std::to_string(value) + " "; }
  void dump(unsigned int) override { calls += "unsigned "; }
  void dump(long value) override { calls += "long:" + std::to_string(value) + " "; }
  void dump(unsigned long) override { calls += "ulong "; }
  void dump(double) override { calls += "double "; }
  void dump(char const* text) override { calls += "text:" + std::string(text) + " "; }
  void dump(void const*) override { calls += "address "; }
  void dump(Object const* object) override {
    calls += "object ";
    VRELStreamFormatter::dump(object);
  }
  void dump(VRELString const&) override { calls += "string "; }
  void dump(VRELValue const& value) override {
    calls += "value ";
    value.Dump(*this);
  }

  std::string calls;
};

// Returns the output of a formatter with default settings.
template <class T>
std::string Dumped(T const& value) {
  return TextOf([&](VRELOutputStream* stream) { VRELStreamFormatter(stream).dump(value); });
}

// Returns the output of a double in mode 1.
std::string Shortened(char const* format, double value) {
  return TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out.setDoubleFormat(format, false, 0);
    out.SetTrailingZerosRemovalFormat(mode1);
    out << value;
  });
}

std::string Truncated(char const* number) {
  VRELString out("untouched");
  EXPECT_EQ(VRELStreamFormatter::TruncateTrailingZeroesKeepingDecimalAndOneZero(VRELString(number), out), 0);
  return out.toUtf8();
}

TEST(VRELStreamFormatterTest, DefaultFormats) {
  EXPECT_EQ(Dumped('x'), "x");
  EXPECT_EQ(Dumped(-12), "-12");
  EXPECT_EQ(Dumped(INT_MIN), "-2147483648");
  EXPECT_EQ(Dumped(4294967295U), "4294967295");
  EXPECT_EQ(Dumped(-9000000000L), "-9000000000");
  EXPECT_EQ(Dumped(1.5), "1.500000");
  EXPECT_EQ(Dumped(-0.0), "-0.000000");
  EXPECT_EQ(Dumped("text"), "text");
  EXPECT_EQ(Dumped(VRELString("wide")), "wide");
  EXPECT_EQ(Dumped(VRELValue(true)), "1");
}

TEST(VRELStreamFormatterTest, UnsignedLongHasLetter) {
  EXPECT_EQ(Dumped(7UL), "7l");
  EXPECT_EQ(Dumped(12UL), "12l");
  // Only the low 32 bits.
  EXPECT_EQ(Dumped(4294967296UL + 12), "12l");
  EXPECT_EQ(Dumped(ULONG_MAX), "4294967295l");
}

TEST(VRELStreamFormatterTest, AddressesAreHexadecimal) {
  EXPECT_EQ(Dumped(static_cast<void const*>(nullptr)), "0");
  EXPECT_EQ(Dumped(reinterpret_cast<void const*>(0x10)), "0x10");
  EXPECT_EQ(Dumped(reinterpret_cast<void const*>(0xFFFFFFFF)), "0xffffffff");
  EXPECT_EQ(Dumped(reinterpret_cast<void const*>(0x1234567890)), "0x34567890");
}

// The int format is not used.
TEST(VRELStreamFormatterTest, AddressFormatIsFixed) {
  std::string const text = TextOf([](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out.setIntFormat("[%d]");
    out.setUIntFormat("[%u]");
    out.dump(reinterpret_cast<void const*>(0xAB));
  });
  EXPECT_EQ(text, "0xab");
}

TEST(VRELStreamFormatterTest, OneWritePerValue) {
  std::vector<std::string> calls;
  RecordingStream stream(calls);
  {
    VRELStreamFormatter out(&stream);
    out << 'c' << 1 << 2U << 3L << 4UL << 0.5 << ""
        << "t" << VRELString(L"w") << VRELString() << VRELValue();
    out << VRELString(std::string(300, 'm'));
    out << static_cast<char const*>(nullptr) << static_cast<Object const*>(nullptr);
    EXPECT_EQ(calls,
              (std::vector<std::string>{"writeChar c", "write 1", "write 2", "write 3", "write 4l", "write 0.500000",
                                        "write ", "write t", "write w", "write " + std::string(300, 'm')}));
    calls.clear();
  }
  // Flushed but not closed.
  EXPECT_EQ(calls, std::vector<std::string>{"flush"});
}

TEST(VRELStreamFormatterTest, NullStreamWritesNothing) {
  std::vector<std::string> calls;
  RecordingStream stream(calls);
  VRELStreamFormatter out(nullptr);
  out << 'c' << 1 << 2U << 3L << 4UL << 0.5 << "t" << VRELString(L"w") << VRELValue(1) << out.space() << out.define(3L)
      << out.format("%d", 1);
  out.dump(reinterpret_cast<void const*>(0x10));
  // Nothing was buffered for the new stream.
  EXPECT_EQ(out.getOutputStream(), nullptr);
  EXPECT_EQ(out.installOutputStream(&stream), nullptr);
  EXPECT_EQ(out.getOutputStream(), &stream);
  EXPECT_TRUE(calls.empty());
}

// Objects are called without a stream too, and call the other operations.
TEST(VRELStreamFormatterTest, NullStreamCallsObjects) {
  struct Counting : Object {
    void dump(VRELStreamFormatter& formatter) const override {
      ++count;
      formatter << "nowhere";
    }
    mutable int count = 0;
  };
  Counting const object;
  VRELStreamFormatter out(nullptr);
  out << &object;
  out.dump(&object);
  EXPECT_EQ(object.count, 2);
}

TEST(VRELStreamFormatterTest, InstallOutputStream) {
  VRELStringOutputStream first;
  VRELStringOutputStream second;
  VRELStreamFormatter out(&first);
  out << "1";
  EXPECT_EQ(out.installOutputStream(&second), &first);
  out << "2";
  EXPECT_EQ(out.installOutputStream(nullptr), &second);
  out << "3";
  EXPECT_EQ(TakeText(first), "1");
  EXPECT_EQ(TakeText(second), "2");
}

TEST(VRELStreamFormatterTest, OperatorsCallDump) {
  RecordingFormatter out;
  VRELStreamFormatter& base = out;
  ObjectHandle const number = out.define(8L);
  VRELStreamFormatter& result = base << 'c' << 1 << 2U << 3L << 4UL << 0.5 << "t" << VRELString(L"w") << VRELValue(6)
                                     << number << out.space();
  EXPECT_EQ(&result, &out);
  EXPECT_EQ(out.calls,
            "char int:1 unsigned long:3 ulong double text:t string value int:6 object long:8 object text:  ");
}

template <class T, class = void>
struct IsWritable : std::false_type {};
template <class T>
struct IsWritable<T, std::void_t<decltype(std::declval<VRELStreamFormatter&>() << std::declval<T>())>>
    : std::true_type {};

TEST(VRELStreamFormatterTest, NoOperatorForAddresses) {
  EXPECT_FALSE((IsWritable<void const*>::value));
  EXPECT_FALSE((IsWritable<std::vector<int>*>::value));
  EXPECT_TRUE((IsWritable<char*>::value));
  EXPECT_TRUE((IsWritable<MarginHandle>::value));
}

TEST(VRELStreamFormatterTest, WritesNarrowStrings) {
  RecordingFormatter recording;
  recording << Gk_String("bolt") << Gk_ROString("m8");
  EXPECT_EQ(recording.calls, "text:bolt text:m8 ");

  std::string const text = TextOf([](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    Gk_ROString moved("xm8");
    moved.offset(1);
    // Without a terminator, with a zero inside, and empty.
    out << Gk_String("bolts", 4) << '|' << Gk_String("a\0b", 3) << '|' << moved << '|' << Gk_ROString("m8x40", 2) << '|'
        << Gk_String() << Gk_ROString() << Gk_String("");
  });
  EXPECT_EQ(text, "bolt|a|m8|m8|");
}

TEST(VRELStreamFormatterTest, StringsAreAscii) {
  EXPECT_EQ(Dumped(VRELString(L"a\u00D6b")),
            "a\x1A"
            "b");
  std::string const longText(1000, 'x');
  EXPECT_EQ(Dumped(VRELString(longText)), longText);
  EXPECT_EQ(Dumped(VRELString(longText + "\u00D6")), longText + "\x1A");
  // Every ASCII character is written.
  for (int c = 1; c < 128; ++c) {
    SCOPED_TRACE(c);
    EXPECT_EQ(Dumped(VRELString(c)), std::string(1, static_cast<char>(c)));
  }
}

// A surrogate pair is one byte, and nothing is written for its second unit.
TEST(VRELStreamFormatterTest, StringWritesAtMostItsLength) {
  std::vector<std::string> calls;
  RecordingStream stream(calls);
  VRELStreamFormatter out(&stream);
  out << VRELString(L"\U0001F600") << VRELString(L"a\U0001F600\U0001F601\U0001F602\U0001F603z");
  EXPECT_EQ(calls, (std::vector<std::string>{"write \x1A", "write a\x1A\x1A\x1A\x1Az"}));
}

TEST(VRELStreamFormatterTest, StringEndsAtZero) {
  std::vector<std::string> calls;
  RecordingStream stream(calls);
  VRELStreamFormatter out(&stream);
  // A concatenation keeps a zero inside.
  out << VRELString(L"a-b").replace('-', 0);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].substr(0, 7), "write a");
  EXPECT_LE(calls[0].size(), 9U);
}

TEST(VRELStreamFormatterTest, SetFormats) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  EXPECT_STREQ(out.setIntFormat("%04d"), "%d");
  EXPECT_STREQ(out.setUIntFormat("%x"), "%u");
  EXPECT_STREQ(out.setLongFormat("%+ld"), "%ld");
  EXPECT_STREQ(out.setULongFormat("%lu"), "%ul");
  EXPECT_STREQ(out.setDoubleFormat("%.2e", false, 3), "%lf");
  out << 5 << '|' << 255U << '|' << 6L << '|' << 9000000000UL << '|' << 1500.0;
  EXPECT_STREQ(out.setIntFormat("%d"), "%04d");
  EXPECT_STREQ(out.setUIntFormat("%d"), "%x");
  EXPECT_STREQ(out.setLongFormat("%d"), "%+ld");
  EXPECT_STREQ(out.setULongFormat("%d"), "%lu");
  EXPECT_STREQ(out.setDoubleFormat("%d", false, 3), "%.2e");
  EXPECT_EQ(TakeText(stream), "0005|ff|+6|9000000000|1.50e+03");
}

// Restoring the previous format restores the default.
TEST(VRELStreamFormatterTest, RestoresUnsignedLongFormat) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  std::string const remembered = out.setULongFormat("%lu");
  out << ULONG_MAX << '|';
  out.setULongFormat(remembered.c_str());
  out << 12UL;
  EXPECT_EQ(TakeText(stream), "18446744073709551615|12l");
}

TEST(VRELStreamFormatterTest, Precision) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out.setDoubleFormat("%.*f", true, 2);
  out << 1.23456 << '|';
  out.setDoubleFormat("%.*g", true, 10);
  out << 1.0 / 3 << '|';
  out.setDoubleFormat("%f", false, 2);
  out << 0.25;
  EXPECT_EQ(TakeText(stream), "1.23|0.3333333333|0.250000");
}

// The precision and its flag are kept.
TEST(VRELStreamFormatterTest, ResetFormat) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out.setIntFormat("i");
  out.setUIntFormat("u");
  out.setLongFormat("l");
  out.setULongFormat("m");
  out.setDoubleFormat("d", false, 4);
  out.SetTrailingZerosRemovalFormat(mode1);
  out << 1 << 2U << 3L << 4UL << 5.0 << ' ';
  out.resetFormat();
  out << 1 << ' ' << 2U << ' ' << 3L << ' ' << 4UL << ' ' << 5.0 << ' ';
  out.setDoubleFormat("%.*f", true, 1);
  out.resetFormat();
  EXPECT_STREQ(out.setIntFormat(""), "%d");
  EXPECT_STREQ(out.setUIntFormat(""), "%u");
  EXPECT_STREQ(out.setLongFormat(""), "%ld");
  EXPECT_STREQ(out.setULongFormat(""), "%ul");
  EXPECT_STREQ(out.setDoubleFormat("%.*f", true, 1), "%lf");
  out << 2.25;
  EXPECT_EQ(TakeText(stream), "iulmd 1 2 3 4l 5.000000 2.2");
}

TEST(VRELStreamFormatterTest, NullFormatWritesNothing) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out << 0.25;
  out.setIntFormat(nullptr);
  out.setUIntFormat(nullptr);
  out.setLongFormat(nullptr);
  out.setULongFormat(nullptr);
  out.setDoubleFormat(nullptr, false, 0);
  out << 1 << 2U << 3L << 4UL << 0.5;
  out.setDoubleFormat(nullptr, true, 0);
  out << 0.5;
  // The previous number is not written again.
  EXPECT_EQ(TakeText(stream), "0.250000");
}

TEST(VRELStreamFormatterTest, NumbersAreBounded) {
  EXPECT_EQ(Dumped(1e300).size(), 127U);
  std::string const text = TextOf([](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out.setIntFormat("%200d");
    out << 7;
  });
  EXPECT_EQ(text, std::string(127, ' '));
}

TEST(VRELStreamFormatterTest, RemovesTrailingZeros) {
  EXPECT_EQ(Shortened("%lf", 1.5), "1.5");
  EXPECT_EQ(Shortened("%lf", 3.0), "3.0");
  EXPECT_EQ(Shortened("%lf", 2.0), "2.0");
  EXPECT_EQ(Shortened("%lf", 100.0), "100.0");
  EXPECT_EQ(Shortened("%lf", -0.25), "-0.25");
  EXPECT_EQ(Shortened("%lf", 10.050), "10.05");
  EXPECT_EQ(Shortened("%.1f", 1.0), "1.0");
  EXPECT_EQ(Shortened("%.0f", 10.0), "10");
  EXPECT_EQ(Shortened("%#.0f", 10.0), "10.");
  EXPECT_EQ(Shortened("%e", 1200.0), "1.2e+03");
  EXPECT_EQ(Shortened("%e", 1.5e12), "1.5e+12");
  EXPECT_EQ(Shortened("%E", 1200.0), "1.2E+03");
  EXPECT_EQ(Shortened("%e", 1e100), "1.0e+100");
  EXPECT_EQ(Shortened("%.0e", 2e10), "2e+10");
  EXPECT_EQ(Shortened("%lf", 1.0 / 0.0), "inf");
  // The first e begins the exponent, wherever it is.
  EXPECT_EQ(Shortened("%.3f e", 1.5), "1.500 e");
  EXPECT_EQ(Shortened("%.3fe", 1.5), "1.5e");
  EXPECT_EQ(Shortened("e%.3f", 1.5), "e1.500");
  EXPECT_EQ(Shortened("%.3fE10e00", 1.5), "1.500E1e00");
  EXPECT_EQ(Shortened("", 1.5), "");
}

TEST(VRELStreamFormatterTest, OtherModesKeepZeros) {
  for (int const mode : {0, 2, -1, 99}) {
    SCOPED_TRACE(mode);
    VRELStringOutputStream stream;
    VRELStreamFormatter out(&stream);
    out.SetTrailingZerosRemovalFormat(static_cast<VRELRealTrailingZerosRemovalFormat>(mode));
    out << 1.5;
    EXPECT_EQ(TakeText(stream), "1.500000");
  }
}

// The mode applies to doubles only; both operations can be called at any time.
TEST(VRELStreamFormatterTest, RemovesZerosOfDoublesOnly) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out.RemoveTrailingZeros();
  out.KeepDecimalAndOneZeroForTrailingZeros();
  out.SetTrailingZerosRemovalFormat(mode1);
  out.setIntFormat("%d.100");
  out << 1;
  out.RemoveTrailingZeros();
  out.KeepDecimalAndOneZeroForTrailingZeros();
  EXPECT_EQ(TakeText(stream), "1.100");
}

TEST(VRELStreamFormatterTest, TruncateTrailingZeroes) {
  EXPECT_EQ(Truncated("1.500000"), "1.5");
  EXPECT_EQ(Truncated("2.000000"), "2.0");
  EXPECT_EQ(Truncated("1.0"), "1.0");
  EXPECT_EQ(Truncated("1."), "1.");
  EXPECT_EQ(Truncated("."), ".");
  EXPECT_EQ(Truncated(".00"), ".0");
  EXPECT_EQ(Truncated("10"), "10");
  EXPECT_EQ(Truncated(""), "");
  EXPECT_EQ(Truncated("1.00x0"), "1.00x");
  EXPECT_EQ(Truncated("1.2.300"), "1.2.3");
  // Exponents are not treated specially.
  EXPECT_EQ(Truncated("1.500000e+12"), "1.500000e+12");
  EXPECT_EQ(Truncated("1.500000e+10"), "1.500000e+1");
  EXPECT_EQ(Truncated("1,500"), "1,500");
}

TEST(VRELStreamFormatterTest, TruncateInPlace) {
  VRELString number("2.500");
  EXPECT_EQ(VRELStreamFormatter::TruncateTrailingZeroesKeepingDecimalAndOneZero(number, number), VREL_S_OK);
  EXPECT_EQ(number.toUtf8(), "2.5");
  EXPECT_EQ(VRELStreamFormatter::TruncateTrailingZeroesKeepingDecimalAndOneZero(number, number), VREL_S_OK);
  EXPECT_EQ(number.toUtf8(), "2.5");
}

TEST(VRELStreamFormatterTest, DecimalPointOfLocale) {
  ChildResult const result = RunInTurkishLocale([] {
    bool const isRight = Shortened("%lf", 1.5) == "1,5" && Shortened("%lf", 2.0) == "2,0" &&
                         Shortened("%e", 1200.0) == "1,2e+03" && Truncated("1,500000") == "1,5" &&
                         Truncated("1.500000") == "1.500000";
    return isRight ? 0 : 1;
  });
  if (result.exitStatus == noTurkishLocale) GTEST_SKIP() << "localedef cannot make tr_TR.UTF-8 here";
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
}

TEST(VRELStreamFormatterTest, LocaleWithoutDecimalPoint) {
  hasNoDecimalPoint = true;
  VRELString out("untouched");
  VRINResult const result =
      VRELStreamFormatter::TruncateTrailingZeroesKeepingDecimalAndOneZero(VRELString("1.500"), out);
  std::string const shortened = Shortened("%lf", 1.5);
  hasNoDecimalPoint = false;
  EXPECT_EQ(result, 0x1000001);
  EXPECT_EQ(out.toUtf8(), "1.500");
  EXPECT_EQ(shortened, "1.500000");
  EXPECT_EQ(Truncated("1.500"), "1.5");
}

TEST(VRELStreamFormatterTest, FormatObjects) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out << out.margin() << "a" << out.space() << "b" << out.empty() << out.endline();
  out.margin()->incr();
  out << out.margin() << "c" << out.endline();
  out.margin()->incr();
  out << out.margin() << "d" << out.endline();
  out.margin()->decr();
  out << out.margin() << "e" << out.endline();
  EXPECT_EQ(TakeText(stream), "a b\n    c\n        d\n    e\n");
}

TEST(VRELStreamFormatterTest, MarginHasNoLowerLimit) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out.margin()->decr();
  out.margin()->decr();
  out << out.margin() << "a";
  out.margin()->incr();
  out.margin()->incr();
  out << out.margin() << "b";
  out.margin()->incr();
  out << out.margin() << "c";
  EXPECT_EQ(TakeText(stream), "ab    c");
}

TEST(VRELStreamFormatterTest, ObjectsCanBeReplaced) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out.space() = new Object("_");
  out.endline() = ObjectHandle();
  out << "a" << out.space() << "b" << out.endline();
  EXPECT_EQ(TakeText(stream), "a_b");
}

TEST(VRELStreamFormatterTest, MarginOutlivesFormatter) {
  MarginHandle margin;
  {
    VRELStreamFormatter out(nullptr);
    margin = out.margin();
  }
  EXPECT_TRUE(margin.IsLastCall());
  margin->incr();
  std::string const text = TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out << margin << "x";
  });
  EXPECT_EQ(text, "    x");
}

TEST(VRELStreamFormatterTest, DefineAndRefer) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  void const* const address = reinterpret_cast<void const*>(0x10);
  out << out.define(123L) << '|' << out.refer(-9000000000L) << '|' << out.define(address) << '|' << out.refer(address)
      << '|' << out.define(reinterpret_cast<void const*>(0x7FFFFFFFFFFF)) << '|';
  out.setIntFormat("<%d>");
  out.setLongFormat("(%ld)");
  out << out.define(123L) << out.refer(address);
  EXPECT_EQ(TakeText(stream), "123|-9000000000|16|16|-1|(123)<16>");
}

// Objects write numbers, addresses and strings through the operations of the formatter.
TEST(VRELStreamFormatterTest, ObjectsWriteThroughFormatter) {
  RecordingFormatter out;
  out.margin()->incr();
  out << out.define(5L) << out.define(reinterpret_cast<void const*>(6)) << out.margin() << out.space() << out.endline()
      << out.empty();
  EXPECT_EQ(out.calls, "object long:5 object int:6 object text:     object text:  object text:\n object text: ");
}

TEST(VRELStreamFormatterTest, FormatSharesBuffer) {
  VRELStringOutputStream stream;
  VRELStreamFormatter out(&stream);
  out << out.format("%d-%s", 5, "x") << '|';
  ObjectHandle const first = out.format("first %d", 1);
  ObjectHandle const second = out.format("second %d", 2);
  EXPECT_NE(first, second);
  out << first << '|' << second << '|';
  // All formatters share one buffer.
  VRELStreamFormatter other(nullptr);
  ObjectHandle const third = other.format("third");
  out << first << '|';
  ObjectHandle const none = out.format(static_cast<char const*>(nullptr));
  out << none;
  EXPECT_EQ(TakeText(stream), "5-x|second 2|second 2|third|");
}

TEST(VRELStreamFormatterTest, FormatIsBounded) {
  std::string const longText(600, 'y');
  std::string const text = TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out << out.format("%s", longText.c_str());
  });
  EXPECT_EQ(text, std::string(511, 'y'));
}

TEST(VRELStreamFormatterTest, ObjectRefersToString) {
  char word[] = "ab";
  Object const object(word);
  Object const nothing(nullptr);
  word[0] = 'x';
  std::string const text = TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out << &object << &nothing;
  });
  // Not copied.
  EXPECT_EQ(text, "xb");
}

TEST(VRELStreamFormatterTest, Fields) {
  struct Fields {
    void* table;
    VRELOutputStream* output;
    char const* formats[5];
    bool flag;
    int precision;
    int trailingZeros;
    char number[128];
    MarginHandle margin;
    ObjectHandle objects[3];
  };
  EXPECT_EQ(sizeof(VRELStreamFormatter), sizeof(Fields));
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELStreamFormatter>);
}

template <class Argument>
std::size_t DumpSlot() {
  return SlotOf(static_cast<void (VRELStreamFormatter::*)(Argument)>(&VRELStreamFormatter::dump));
}

template <class Argument>
using Naming = ObjectHandle (VRELStreamFormatter::*)(Argument);

TEST(VRELStreamFormatterTest, VirtualSlots) {
  EXPECT_EQ(DumpSlot<char>(), 0U);
  EXPECT_EQ(DumpSlot<int>(), 1U);
  EXPECT_EQ(DumpSlot<unsigned int>(), 2U);
  EXPECT_EQ(DumpSlot<long>(), 3U);
  EXPECT_EQ(DumpSlot<unsigned long>(), 4U);
  EXPECT_EQ(DumpSlot<double>(), 5U);
  EXPECT_EQ(DumpSlot<char const*>(), 6U);
  EXPECT_EQ(DumpSlot<void const*>(), 7U);
  EXPECT_EQ(DumpSlot<Object const*>(), 8U);
  EXPECT_EQ(DumpSlot<VRELString const&>(), 9U);
  EXPECT_EQ(DumpSlot<VRELValue const&>(), 10U);
  // The destructor has two slots.
  EXPECT_EQ(SlotOf(static_cast<Naming<void const*>>(&VRELStreamFormatter::define)), 13U);
  EXPECT_EQ(SlotOf(static_cast<Naming<void const*>>(&VRELStreamFormatter::refer)), 14U);
  EXPECT_EQ(SlotOf(static_cast<Naming<long>>(&VRELStreamFormatter::define)), 15U);
  EXPECT_EQ(SlotOf(static_cast<Naming<long>>(&VRELStreamFormatter::refer)), 16U);
  EXPECT_EQ(SlotOf(&VRELStreamFormatter::format), 17U);
}

// After the destructor, RaiseReference, LowerReference and GetName.
TEST(VRELStreamFormatterTest, VirtualSlotsOfObjects) {
  EXPECT_EQ(SlotOf(&Object::dump), 5U);
  EXPECT_EQ(SlotOf(&Margin::incr), 6U);
  EXPECT_EQ(SlotOf(&Margin::decr), 7U);
}

}  // namespace
