// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "Gk_Source.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>

#include "Declaration.h"
#include "VRELStringInputStream.h"

namespace {

static_assert(IsDeclared<void (Gk_Source::*)(VRELInputStream*)>(&Gk_Source::install));
static_assert(IsDeclared<VRELInputStream* (Gk_Source::*)() const>(&Gk_Source::top));
static_assert(
    IsDeclared<Gk_Source::WhiteSpace (Gk_Source::*)(Gk_Source::WhiteSpace const&)>(&Gk_Source::setWhiteSpace));
static_assert(IsDeclared<Gk_String (Gk_Source::*)()>(&Gk_Source::next));
static_assert(IsDeclared<Gk_String (Gk_Source::*)()>(&Gk_Source::nextString));
static_assert(IsDeclared<Gk_String (Gk_Source::*)()>(&Gk_Source::nextLine));
static_assert(IsDeclared<Gk_String (Gk_Source::*)()>(&Gk_Source::peek));
static_assert(IsDeclared<void (Gk_Source::*)()>(&Gk_Source::skipWhite));
static_assert(IsDeclared<bool (Gk_Source::*)()>(&Gk_Source::isEmpty));
static_assert(IsDeclared<Gk_ROString (Gk_Source::*)(Gk_ROString const&)>(&Gk_Source::matchPattern));
static_assert(IsDeclared<bool (Gk_Source::WhiteSpace::*)(char) const>(&Gk_Source::WhiteSpace::isSpace));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, char&)>(&operator>>));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, char*&)>(&operator>>));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, int&)>(&operator>>));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, long&)>(&operator>>));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, unsigned int&)>(&operator>>));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, unsigned long&)>(&operator>>));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, float&)>(&operator>>));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, double&)>(&operator>>));
static_assert(std::is_constructible_v<Gk_Source, VRELInputStream*, bool>);
static_assert(std::is_constructible_v<Gk_Source::WhiteSpace, char const*>);
static_assert(std::is_base_of_v<Gk_String, Gk_Source::WhiteSpace>);
static_assert(!std::is_polymorphic_v<Gk_Source>);

TEST(SourceDeclarationsTest, FieldsByOffset) {
  VRELStringInputStream stream(Gk_String("ab c"));
  Gk_Source source(&stream, true);
  source.setWhiteSpace(" \t");
  auto const* const bytes = reinterpret_cast<char const*>(&source);
  EXPECT_EQ(*reinterpret_cast<VRELInputStream* const*>(bytes), &stream);
  EXPECT_EQ(reinterpret_cast<Gk_String const*>(bytes + 8)->len(), 2);
  // The mask: 0x20 | 0x09.
  EXPECT_EQ(*reinterpret_cast<int const*>(bytes + 8 + sizeof(Gk_String)), 0x29);
  std::size_t const token = 8 + sizeof(Gk_Source::WhiteSpace);
  Gk_String const first = source.next();
  EXPECT_EQ(reinterpret_cast<Gk_String const*>(bytes + token)->len(), 3);
  EXPECT_TRUE(*reinterpret_cast<bool const*>(bytes + token + sizeof(Gk_String)));
}

}  // namespace
