// Declarations, field offsets and sizes of the string classes, which clients compile against.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "Declaration.h"
#include "VRELString.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELStringConversions.h"
#include "VRELStringISO1030321Reader.h"
#include "VRELStringISO1030321Writer.h"
#include "VRELStringISO10646Reader.h"
#include "VRELStringISO10646Writer.h"
#include "VRELStringISO8859Reader.h"
#include "VRELStringTokenizer.h"
#include "VRELStringUnicodeWCharUtil.h"

namespace {

using S = VRELString;

static_assert(std::is_convertible_v<int, S> && std::is_convertible_v<unsigned short, S>);
static_assert(std::is_convertible_v<int const*, S> && std::is_convertible_v<wchar_t const*, S>);
static_assert(std::is_convertible_v<unsigned short const*, S> && std::is_convertible_v<char const*, S>);
static_assert(std::is_constructible_v<S, char const*, char const*>);

static_assert(IsDeclared<S& (S::*)(S const&)>(&S::operator=));
static_assert(IsDeclared<bool (S::*)() const>(&S::getBadConversion));
static_assert(IsDeclared<bool (S::*)() const>(&S::getIsInitialized));
static_assert(IsDeclared<int (S::*)() const>(&S::length));
static_assert(IsDeclared<unsigned short (S::*)(int) const>(&S::charAt));
static_assert(IsDeclared<int (S::*)() const>(&S::hashCode));
static_assert(IsDeclared<int (S::*)(S const&) const>(&S::compareTo));
static_assert(IsDeclared<int (S::*)(S const&) const>(&S::compareToIgnoreCase));
static_assert(IsDeclared<bool (S::*)(S const&) const>(&S::equals));
static_assert(IsDeclared<bool (S::*)(S const&) const>(&S::equalsIgnoreCase));
static_assert(IsDeclared<bool (S::*)(S const&) const>(&S::operator>));
static_assert(IsDeclared<bool (S::*)(S const&) const>(&S::operator<));
static_assert(IsDeclared<bool (S::*)(S const&) const>(&S::operator<=));
static_assert(IsDeclared<bool (S::*)(S const&) const>(&S::startsWith));
static_assert(IsDeclared<bool (S::*)(S const&) const>(&S::endsWith));
static_assert(IsDeclared<int (*)(char const*)>(&S::getStringLength));
static_assert(IsDeclared<int (*)(unsigned short const*)>(&S::getStringLength));
static_assert(IsDeclared<int (*)(wchar_t const*)>(&S::getStringLength));
static_assert(IsDeclared<int (*)(int const*)>(&S::getStringLength));
static_assert(IsDeclared<int (S::*)(unsigned short) const>(&S::indexOf));
static_assert(IsDeclared<int (S::*)(unsigned short, int) const>(&S::indexOf));
static_assert(IsDeclared<int (S::*)(S const&, int) const>(&S::indexOf));
static_assert(IsDeclared<int (S::*)(unsigned short) const>(&S::lastIndexOf));
static_assert(IsDeclared<int (S::*)(unsigned short, int) const>(&S::lastIndexOf));
static_assert(IsDeclared<int (S::*)(S const&, int) const>(&S::lastIndexOf));
static_assert(IsDeclared<S (S::*)(S const&) const>(&S::operator+));
static_assert(IsDeclared<S (S::*)(int, int) const>(&S::substring));
static_assert(IsDeclared<S (S::*)(int) const>(&S::substring));
static_assert(IsDeclared<S (S::*)(unsigned short, unsigned short) const>(&S::replace));
static_assert(IsDeclared<int (S::*)() const>(&S::getConvertToUTF8Size));
static_assert(IsDeclared<int (S::*)() const>(&S::getConvertToUTF16Size));
static_assert(IsDeclared<int (S::*)() const>(&S::getConvertToUTF32Size));
static_assert(IsDeclared<int (S::*)() const>(&S::getConvertToWideCharacterSize));
static_assert(IsDeclared<int (S::*)(char const*) const>(&S::getConvertToMBCSSize));
static_assert(IsDeclared<int (S::*)() const>(&S::getConvertToRestrictedASCIISize));
static_assert(IsDeclared<VRINResult (S::*)(char*, int) const>(&S::convertToUTF8));
static_assert(IsDeclared<VRINResult (S::*)(unsigned short*, int) const>(&S::convertToUTF16));
static_assert(IsDeclared<VRINResult (S::*)(int*, int) const>(&S::convertToUTF32));
static_assert(IsDeclared<VRINResult (S::*)(wchar_t*, int) const>(&S::convertToWideCharacter));
static_assert(IsDeclared<VRINResult (S::*)(char*, int, char const*, bool) const>(&S::convertToMBCS));
static_assert(IsDeclared<VRINResult (S::*)(char*, int) const>(&S::convertToRestrictedASCII));

static_assert(IsDeclared<VRINResult (*)(S const&, char*&)>(&VRELStringToChars));
static_assert(IsDeclared<VRINResult (*)(S const&, wchar_t*&)>(&VRELStringToWideChars));
static_assert(IsDeclared<VRINResult (*)(char*&)>(&VRELReleaseChars));
static_assert(IsDeclared<VRINResult (*)(wchar_t*&)>(&VRELReleaseWideChars));
static_assert(IsDeclared<S (*)(double)>(&VRELStringFromDouble));
static_assert(IsDeclared<S (*)(unsigned long)>(&VRELStringFromULong));
static_assert(IsDeclared<S (*)(int)>(&VRELStringFromInteger));
static_assert(IsDeclared<S (*)(bool)>(&VRELStringFromBool));
static_assert(IsDeclared<S (*)(wchar_t const*)>(&VRELStringFromUnicodeWChars));
static_assert(IsDeclared<VRINResult (*)(S const&, bool&)>(&VRELStringToBool));
static_assert(IsDeclared<VRINResult (*)(S const&, double&)>(&VRELStringToDouble));
static_assert(IsDeclared<VRINResult (*)(S const&, int&)>(&VRELStringToInteger));
static_assert(IsDeclared<S (*)(S const&)>(&VRELStringGetTrimmedString));
static_assert(IsDeclared<bool (*)(S const&)>(&VRELStringCheckIfWhiteSpace));
static_assert(IsDeclared<S (*)(S const&)>(&VRELStringConvertToLowerCase));
static_assert(IsDeclared<S (*)(S const&)>(&VRELStringConvertToUpperCase));
static_assert(IsDeclared<S (*)(S const&, wchar_t)>(&VRELStringReplaceNonASCIICharsWith));
static_assert(IsDeclared<VRINResult (*)(S const&, S&)>(&RemoveDoubleQuotesAtStartAndEndOf));

using Tokenizer = VRELStringTokenizer;
static_assert(std::is_constructible_v<Tokenizer, S const&, wchar_t>);
static_assert(std::is_constructible_v<Tokenizer, char const*, wchar_t>);
static_assert(IsDeclared<int (Tokenizer::*)() const>(&Tokenizer::GetTokenCount));
static_assert(IsDeclared<VRINResult (Tokenizer::*)(int, S&) const>(&Tokenizer::GetToken));
static_assert(!std::is_polymorphic_v<Tokenizer>);

using Converter = VRELStringISO1030321Converter;
static_assert(IsDeclared<void (Converter::*)(char const*)>(&Converter::ResetUSAsciiString));
static_assert(IsDeclared<void (Converter::*)()>(&Converter::ReleaseUSAsciiString));
using StepReader = VRELStringISO1030321Reader;
static_assert(IsDeclared<VRINResult (StepReader::*)(char const*, S&)>(&StepReader::ConvertFromASCII));
using StepWriter = VRELStringISO1030321Writer;
static_assert(IsDeclared<VRINResult (StepWriter::*)(S const&, char const*&)>(&StepWriter::ConvertToASCII));
static_assert(std::is_base_of_v<Converter, StepReader> && std::is_base_of_v<Converter, StepWriter>);

using PageReader = VRELStringISO8859Reader;
static_assert(std::is_constructible_v<PageReader, char*>);
static_assert(IsDeclared<void (PageReader::*)()>(&PageReader::DetermineEncoding));
static_assert(IsDeclared<VRINResult (PageReader::*)(S&)>(&PageReader::GetResult));
using UnitReader = VRELStringISO10646Reader;
static_assert(std::is_constructible_v<UnitReader, char const*>);
static_assert(IsDeclared<void (UnitReader::*)()>(&UnitReader::DetermineEncoding));
static_assert(IsDeclared<VRINResult (UnitReader::*)(S&)>(&UnitReader::GetResult));
static_assert(IsDeclared<int (UnitReader::*)() const>(&UnitReader::GetNumberOfQuadruplets));
static_assert(IsDeclared<void (UnitReader::*)(int, char*) const>(&UnitReader::GetQuadrupletAt));
static_assert(IsDeclared<unsigned short (*)(char const*)>(&UnitReader::GetUChar));
static_assert(IsDeclared<bool (*)(unsigned short)>(&UnitReader::IsLeadSurrogate));
static_assert(IsDeclared<bool (*)(unsigned short)>(&UnitReader::IsTrailSurrogate));
using UnitWriter = VRELStringISO10646Writer;
static_assert(std::is_constructible_v<UnitWriter, S const&>);
static_assert(IsDeclared<VRINResult (UnitWriter::*)(S&)>(&UnitWriter::GetResult));
static_assert(IsDeclared<bool (*)(unsigned short const&)>(&UnitWriter::IsUSAscii));
static_assert(IsDeclared<VRINResult (*)(S const&, int&, int&)>(&UnitWriter::GetFirstNonAsciiSubstring));
static_assert(IsDeclared<VRINResult (*)(unsigned short, S&)>(&UnitWriter::GetQuadrupletAsciiString));
static_assert(IsDeclared<VRINResult (*)(S const&, S&)>(&UnitWriter::GetEncodedAsciiString));

static_assert(std::is_constructible_v<VRELStringAsciiCharUtil, S const&, bool>);
static_assert(std::is_convertible_v<VRELStringAsciiCharUtil const&, char const*>);
static_assert(std::is_constructible_v<VRELStringUnicodeWCharUtil, S const&>);
static_assert(std::is_convertible_v<VRELStringUnicodeWCharUtil const&, wchar_t const*>);

static_assert(std::has_virtual_destructor_v<Converter> && std::has_virtual_destructor_v<PageReader>);
static_assert(std::has_virtual_destructor_v<UnitReader> && std::has_virtual_destructor_v<UnitWriter>);
static_assert(std::has_virtual_destructor_v<VRELStringAsciiCharUtil>);
static_assert(std::has_virtual_destructor_v<VRELStringUnicodeWCharUtil>);

static_assert(sizeof(S) == 24 && sizeof(Tokenizer) == 8 && sizeof(Converter) == 16);
static_assert(sizeof(StepReader) == 16 && sizeof(StepWriter) == 16 && sizeof(UnitWriter) == 56);
static_assert(sizeof(VRELStringAsciiCharUtil) == 16 && sizeof(VRELStringUnicodeWCharUtil) == 16);

TEST(StringDeclarationsTest, StringFieldsKeepOffsets) {
  S text(L"bolt");
  S const flagged("bolt");
  EXPECT_FALSE(FieldAt<bool>(text, 8));
  EXPECT_TRUE(FieldAt<bool>(flagged, 8));
  EXPECT_NE(FieldAt<void*>(text, 16), nullptr);
  S const taken(std::move(text));
  EXPECT_EQ(FieldAt<void*>(text, 16), nullptr);
}

TEST(StringDeclarationsTest, ReaderFieldsKeepOffsets) {
  S out;
  PageReader page("\\S\\A");
  EXPECT_STREQ(FieldAt<char const*>(page, 8), "\\S\\A");
  EXPECT_EQ(FieldAt<std::int32_t>(page, 16), -1);
  page.GetResult(out);
  EXPECT_EQ(FieldAt<std::int32_t>(page, 16), 1);
  EXPECT_EQ(reinterpret_cast<S const*>(reinterpret_cast<char const*>(&page) + 24)->charAt(0), 0xC1);

  UnitReader units("\\X2\\00E9\\X0\\");
  EXPECT_STREQ(FieldAt<char const*>(units, 8), "\\X2\\00E9\\X0\\");
  EXPECT_EQ(FieldAt<std::int32_t>(units, 16), -1);
  units.GetResult(out);
  EXPECT_EQ(FieldAt<std::int32_t>(units, 16), 2);
  EXPECT_EQ(reinterpret_cast<S const*>(reinterpret_cast<char const*>(&units) + 24)->charAt(0), 0xE9);
  EXPECT_EQ(FieldAt<char const*>(UnitReader(nullptr), 8), nullptr);
}

TEST(StringDeclarationsTest, WriterAndConverterFieldsKeepOffsets) {
  UnitWriter writer(L"\u00E9");
  S out;
  writer.GetResult(out);
  EXPECT_EQ(reinterpret_cast<S const*>(reinterpret_cast<char const*>(&writer) + 8)->length(), 1);
  EXPECT_EQ(reinterpret_cast<S const*>(reinterpret_cast<char const*>(&writer) + 32)->length(), 12);
  StepReader reader;
  EXPECT_EQ(FieldAt<char const*>(reader, 8), nullptr);
  reader.ResetUSAsciiString("bolt");
  EXPECT_STREQ(FieldAt<char const*>(reader, 8), "bolt");
  EXPECT_STREQ(FieldAt<char const*>(VRELStringAsciiCharUtil(L"bolt", false), 8), "bolt");
  EXPECT_STREQ(FieldAt<wchar_t const*>(VRELStringUnicodeWCharUtil(L"bolt"), 8), L"bolt");
}

// The first two entries of a virtual table are the complete and the deleting destructor.
TEST(StringDeclarationsTest, DestructorHasFirstTwoSlots) {
  auto* const text = new S(L"bolt");
  void** const table = FieldAt<void**>(*text, 0);
  EXPECT_NE(table[0], nullptr);
  EXPECT_NE(table[0], table[1]);
  reinterpret_cast<void (*)(S*)>(table[1])(text);
}

}  // namespace
