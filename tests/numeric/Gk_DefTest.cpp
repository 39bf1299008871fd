#include "Gk_Def.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "DoubleBits.h"

namespace {

TEST(Gk_DefTest, Tolerances) {
  EXPECT_EQ(Gk_Def::FuzzReal, 1e-10);
  EXPECT_EQ(Gk_Def::FuzzKnot, 1e-10);
  EXPECT_EQ(Gk_Def::FuzzPos, 1e-6);
  EXPECT_EQ(Gk_Def::FuzzSnap, 0.001);
  EXPECT_EQ(Gk_Def::errorLevel, 1);
  static_assert(std::is_same_v<decltype(Gk_Def::errorLevel), std::int32_t const>);
  static_assert(std::is_same_v<decltype(Gk_Def::FuzzReal), double const>);
}

// Nearest doubles, computed from pi with 60 digits.
TEST(Gk_DefTest, Angles) {
  struct Row {
    char const* name;
    double value;
    std::uint64_t bits;
  };
  for (Row const& row :
       {Row{"Gk_Def::VRELPI", Gk_Def::VRELPI, 0x400921FB54442D18}, Row{"VRELPI", VRELPI, 0x400921FB54442D18},
        Row{"VREL2PI", VREL2PI, 0x401921FB54442D18}, Row{"VREL3PI", VREL3PI, 0x4022D97C7F3321D2},
        Row{"VRELPIBY2", VRELPIBY2, 0x3FF921FB54442D18}, Row{"VREL3PIBY2", VREL3PIBY2, 0x4012D97C7F3321D2},
        Row{"VRELPIBY4", VRELPIBY4, 0x3FE921FB54442D18}, Row{"VREL3PIBY4", VREL3PIBY4, 0x4002D97C7F3321D2},
        Row{"VRELINVPI", VRELINVPI, 0x3FD45F306DC9C883}, Row{"VRELINV2PI", VRELINV2PI, 0x3FC45F306DC9C883}}) {
    EXPECT_EQ(Bits(row.value), row.bits) << row.name;
  }
}

}  // namespace
