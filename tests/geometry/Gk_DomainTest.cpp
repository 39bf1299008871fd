#include "Gk_Domain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "StreamText.h"
#include "VRELStreamFormatter.h"

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double denormal = std::numeric_limits<double>::denorm_min();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double fuzz = 1e-10;

void ExpectDomain(Gk_Domain const& domain, int ends, double low, double high, double tolerance = fuzz) {
  EXPECT_EQ(domain.endCondition(), ends);
  EXPECT_EQ(domain.low(), low);
  EXPECT_EQ(domain.high(), high);
  EXPECT_EQ(domain.fuzz(), tolerance);
}

Gk_Domain const unset(Gk_Domain::Unset, 0, 0, fuzz);
Gk_Domain const fromOne(Gk_Domain::LowBounded, 1, 2, fuzz);
Gk_Domain const toTwo(Gk_Domain::HighBounded, 1, 2, fuzz);
Gk_Domain const oneToTwo(1, 2, fuzz);

TEST(Gk_DomainTest, IsPlainClassOfFourFields) {
  EXPECT_FALSE(std::is_polymorphic_v<Gk_Domain>);
  EXPECT_EQ(sizeof(Gk_Domain), 32U);
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Gk_Domain::EndCondn>, int>));
  EXPECT_TRUE((std::is_convertible_v<Gk_Domain::EndCondn, int>));
}

TEST(Gk_DomainTest, ConstructorsStoreArguments) {
  ExpectDomain(Gk_Domain(Gk_Domain::HighBounded, -1.5, 2.5, 0.25), 2, -1.5, 2.5, 0.25);
  ExpectDomain(Gk_Domain(static_cast<Gk_Domain::EndCondn>(1), -1.5, 2.5, 0.25), 1, -1.5, 2.5, 0.25);
  ExpectDomain(Gk_Domain(-1.5, 2.5, 0.25), 3, -1.5, 2.5, 0.25);
  ExpectDomain(Gk_Domain(), 0, 0, 0, 1e-10);
  Gk_Domain const copy(toTwo);
  ExpectDomain(copy, 2, 1, 2);
}

TEST(Gk_DomainTest, IsFiniteWithBothEndsBounded) {
  EXPECT_TRUE(oneToTwo.isFinite());
  EXPECT_FALSE(unset.isFinite());
  EXPECT_FALSE(fromOne.isFinite());
  EXPECT_FALSE(toTwo.isFinite());
  EXPECT_EQ(Gk_Domain(1, 3.5, fuzz).length(), 2.5);
  EXPECT_EQ(fromOne.length(), 1.0);
  EXPECT_EQ(Gk_Domain(3, 1, fuzz).length(), -2.0);
}

TEST(Gk_DomainTest, IsDegenerateBelowFuzz) {
  EXPECT_TRUE(Gk_Domain(1, 1.25, 0.5).isDegenerate());
  EXPECT_FALSE(Gk_Domain(1, 1.5, 0.5).isDegenerate());
  EXPECT_FALSE(Gk_Domain(1, 1.75, 0.5).isDegenerate());
  EXPECT_FALSE(Gk_Domain(Gk_Domain::LowBounded, 1, 1.25, 0.5).isDegenerate());
  EXPECT_FALSE(Gk_Domain(notANumber, 1, 0.5).isDegenerate());
}

TEST(Gk_DomainTest, NegationMirrors) {
  ExpectDomain(-Gk_Domain(0, 1, fuzz), 3, -1, 0);
  ExpectDomain(-fromOne, 2, -2, -1);
  ExpectDomain(-toTwo, 1, -2, -1);
  ExpectDomain(-Gk_Domain(Gk_Domain::Unset, 1, 2, 0.5), 0, -2, -1, 0.5);
}

TEST(Gk_DomainTest, ExpandMovesBoundedEnds) {
  struct {
    Gk_Domain domain;
    double low;
    double high;
  } cases[] = {{oneToTwo, 0.5, 2.5}, {fromOne, 0.5, 2}, {toTwo, 1, 2.5}, {unset, 0, 0}};
  for (auto& each : cases) {
    int const ends = each.domain.endCondition();
    EXPECT_TRUE(each.domain.expand(0.5));
    ExpectDomain(each.domain, ends, each.low, each.high);
  }
  Gk_Domain shrunk = oneToTwo;
  EXPECT_TRUE(shrunk.expand(-0.75));
  ExpectDomain(shrunk, 3, 1.75, 1.25);
}

TEST(Gk_DomainTest, LocateInterpolates) {
  Gk_Domain const domain(2, 10, fuzz);
  EXPECT_EQ(domain.locate(0.0), 2.0);
  EXPECT_EQ(domain.locate(1.0), 10.0);
  EXPECT_EQ(domain.locate(0.25), 4.0);
  EXPECT_EQ(domain.locate(-1.0), -6.0);
  // high t + (1 - t) low, and not low + t length, which is not exact at the upper end.
  EXPECT_EQ(Gk_Domain(1e16, 1.0, fuzz).locate(1.0), 1.0);
}

TEST(Gk_DomainTest, IsLowAndIsHighUseFuzz) {
  // None of these tests whether the end is bounded.
  for (int ends = 0; ends <= 3; ++ends) {
    Gk_Domain const domain(static_cast<Gk_Domain::EndCondn>(ends), 1, 2, 0.25);
    EXPECT_TRUE(domain.isLow(1.25));
    EXPECT_TRUE(domain.isLow(0.75));
    EXPECT_FALSE(domain.isLow(1.26));
    EXPECT_FALSE(domain.isLow(0.74));
    EXPECT_TRUE(domain.isHigh(1.75));
    EXPECT_TRUE(domain.isHigh(2.25));
    EXPECT_FALSE(domain.isHigh(1.74));
    EXPECT_FALSE(domain.isHigh(2.26));
    EXPECT_TRUE(domain.isBoundary(1.25));
    EXPECT_TRUE(domain.isBoundary(1.75));
    EXPECT_FALSE(domain.isBoundary(1.5));
    EXPECT_FALSE(domain.isBoundary(notANumber));
    EXPECT_TRUE(domain.isAbove(2.26));
    EXPECT_FALSE(domain.isAbove(2.25));
    EXPECT_TRUE(domain.isBelow(0.74));
    EXPECT_FALSE(domain.isBelow(0.75));
    EXPECT_TRUE(domain.isAbove(notANumber));
    EXPECT_TRUE(domain.isBelow(notANumber));
  }
}

TEST(Gk_DomainTest, IsContainedIncludesBoundary) {
  struct {
    double v;
    bool within[4];  // by end condition
  } const cases[] = {{0.74, {true, false, true, false}},       {0.75, {true, true, true, true}},
                     {1.0, {true, true, true, true}},          {1.5, {true, true, true, true}},
                     {2.25, {true, true, true, true}},         {2.26, {true, true, false, false}},
                     {infinity, {true, true, false, false}},   {-infinity, {true, false, true, false}},
                     {notANumber, {true, false, false, false}}};
  for (auto const& each : cases) {
    SCOPED_TRACE(each.v);
    for (int ends = 0; ends <= 3; ++ends) {
      EXPECT_EQ(Gk_Domain(static_cast<Gk_Domain::EndCondn>(ends), 1, 2, 0.25).isContained(each.v), each.within[ends]);
    }
  }
}

TEST(Gk_DomainTest, IsInsideExcludesBoundary) {
  struct {
    double v;
    bool inside[4];  // by end condition
  } const cases[] = {{0.5, {true, false, true, false}},      {1.0, {true, false, true, false}},
                     {1.25, {true, false, true, false}},     {1.26, {true, true, true, true}},
                     {1.74, {true, true, true, true}},       {1.75, {true, true, false, false}},
                     {2.0, {true, true, false, false}},      {2.5, {true, true, false, false}},
                     {infinity, {true, true, false, false}}, {notANumber, {true, false, false, false}}};
  for (auto const& each : cases) {
    SCOPED_TRACE(each.v);
    for (int ends = 0; ends <= 3; ++ends) {
      EXPECT_EQ(Gk_Domain(static_cast<Gk_Domain::EndCondn>(ends), 1, 2, 0.25).isInside(each.v), each.inside[ends]);
    }
  }
  EXPECT_TRUE(oneToTwo.isContained(2.0 + fuzz / 2));
  EXPECT_FALSE(oneToTwo.isInside(2.0 + fuzz / 2));
}

TEST(Gk_DomainTest, ContainmentOfDomainTestsBothEnds) {
  EXPECT_TRUE(oneToTwo.isContained(oneToTwo));
  EXPECT_FALSE(oneToTwo.isInside(oneToTwo));
  EXPECT_TRUE(oneToTwo.isContained(Gk_Domain(1.25, 1.5, fuzz)));
  EXPECT_TRUE(oneToTwo.isInside(Gk_Domain(1.25, 1.5, fuzz)));
  EXPECT_FALSE(oneToTwo.isContained(Gk_Domain(0.5, 1.5, fuzz)));
  EXPECT_FALSE(oneToTwo.isContained(Gk_Domain(1.5, 2.5, fuzz)));
  EXPECT_FALSE(oneToTwo.isInside(Gk_Domain(1, 1.5, fuzz)));
  EXPECT_FALSE(oneToTwo.isInside(Gk_Domain(1.5, 2, fuzz)));
  // Both ends are compared, also if they are unbounded.
  EXPECT_FALSE(oneToTwo.isContained(Gk_Domain(Gk_Domain::Unset, 0, 1.5, fuzz)));
  EXPECT_TRUE(fromOne.isContained(Gk_Domain(1, 100, fuzz)));
}

TEST(Gk_DomainTest, IsSameUsesTolerance) {
  Gk_Domain const domain(1, 2, 0.25);
  EXPECT_TRUE(domain.isSame(Gk_Domain(1.5, 1.5, 9), 0.5));
  EXPECT_FALSE(domain.isSame(Gk_Domain(1.5, 2, 9), 0.4));
  EXPECT_FALSE(domain.isSame(Gk_Domain(1, 1.5, 9), 0.4));
  EXPECT_FALSE(domain.isSame(Gk_Domain(1, 2, 9), -0.5));
  EXPECT_FALSE(domain.isSame(domain, notANumber));
}

TEST(Gk_DomainTest, IsSameAcceptsMinusOneAsFuzz) {
  Gk_Domain const domain(1, 2, 0.25);
  EXPECT_TRUE(domain.isSame(Gk_Domain(1.25, 1.75, 0), -1.0));
  EXPECT_FALSE(domain.isSame(Gk_Domain(1.26, 2, 5), -1.0));
  EXPECT_TRUE(Gk_Domain(1.26, 2, 5).isSame(domain, -1.0));
}

TEST(Gk_DomainTest, IsSameWithZeroIsExact) {
  EXPECT_TRUE(oneToTwo.isSame(Gk_Domain(1, 2, 5), 0.0));
  EXPECT_FALSE(oneToTwo.isSame(Gk_Domain(1, std::nextafter(2.0, 3.0), 5), 0.0));
}

TEST(Gk_DomainTest, IsSameComparesEndConditions) {
  for (int a = 0; a <= 3; ++a) {
    for (int b = 0; b <= 3; ++b) {
      Gk_Domain const first(static_cast<Gk_Domain::EndCondn>(a), 1, 2, 1e9);
      EXPECT_EQ(first.isSame(Gk_Domain(static_cast<Gk_Domain::EndCondn>(b), 1, 2, 1e9), -1.0), a == b);
    }
  }
}

TEST(Gk_DomainTest, IsSameIgnoresUnboundedEnds) {
  EXPECT_TRUE(fromOne.isSame(Gk_Domain(Gk_Domain::LowBounded, 1, 77, fuzz), 0.0));
  EXPECT_FALSE(fromOne.isSame(Gk_Domain(Gk_Domain::LowBounded, 77, 2, fuzz), 0.0));
  EXPECT_TRUE(toTwo.isSame(Gk_Domain(Gk_Domain::HighBounded, 77, 2, fuzz), 0.0));
  EXPECT_FALSE(toTwo.isSame(Gk_Domain(Gk_Domain::HighBounded, 1, 77, fuzz), 0.0));
  EXPECT_TRUE(unset.isSame(Gk_Domain(Gk_Domain::Unset, 5, 77, fuzz), 0.0));
}

TEST(Gk_DomainTest, StickClampsAndSnaps) {
  // Whether the ends are bounded is not tested.
  for (int ends = 0; ends <= 3; ++ends) {
    Gk_Domain const domain(static_cast<Gk_Domain::EndCondn>(ends), 1, 2, 0.25);
    EXPECT_EQ(domain.stick(-5), 1.0);
    EXPECT_EQ(domain.stick(0.75), 1.0);
    EXPECT_EQ(domain.stick(1.25), 1.0);
    EXPECT_EQ(domain.stick(1.26), 1.26);
    EXPECT_EQ(domain.stick(1.5), 1.5);
    EXPECT_EQ(domain.stick(1.74), 1.74);
    EXPECT_EQ(domain.stick(1.75), 2.0);
    EXPECT_EQ(domain.stick(2.5), 2.0);
    EXPECT_EQ(domain.stick(infinity), 2.0);
    EXPECT_EQ(domain.stick(-infinity), 1.0);
    EXPECT_TRUE(std::isnan(domain.stick(notANumber)));
  }
  // The low end is tested first.
  EXPECT_EQ(Gk_Domain(1, 1.125, 0.25).stick(1.125), 1.0);
}

TEST(Gk_DomainTest, PrincipalParamReducesToInterval) {
  Gk_Domain const turn(0, VREL2PI, fuzz);
  EXPECT_EQ(turn.principalParam(7), 7 - VREL2PI);
  EXPECT_EQ(turn.principalParam(-1), -1 + VREL2PI);
  EXPECT_EQ(turn.principalParam(0), 0.0);
  EXPECT_EQ(turn.principalParam(3), 3.0);
  EXPECT_EQ(turn.principalParam(VREL2PI), VREL2PI);
  Gk_Domain const quarter(1, 1.25, fuzz);
  EXPECT_EQ(quarter.principalParam(3.125), 1.125);
  EXPECT_EQ(quarter.principalParam(-3.125), 1.125);
  EXPECT_EQ(quarter.principalParam(3.25), 1.25);
}

TEST(Gk_DomainTest, PrincipalParamSnapsToLowEnd) {
  Gk_Domain const turn(0, 1, 0.5);
  EXPECT_EQ(turn.principalParam(-1e-10), 0.0);
  EXPECT_EQ(turn.principalParam(-5e-11), 0.0);
  // The fuzz of the domain is not used: this number is one period away.
  EXPECT_EQ(turn.principalParam(-2e-10), 1.0 - 2e-10);
}

TEST(Gk_DomainTest, PrincipalParamRoundsEachPeriod) {
  double stepped = 1000.3;
  while (stepped > 0.1) stepped -= 0.1;
  EXPECT_EQ(Gk_Domain(0, 0.1, fuzz).principalParam(1000.3), stepped);
}

TEST(Gk_DomainTest, PrincipalParamKeepsIfUnbounded) {
  EXPECT_EQ(fromOne.principalParam(7), 7.0);
  EXPECT_EQ(toTwo.principalParam(7), 7.0);
  EXPECT_EQ(unset.principalParam(-7), -7.0);
}

TEST(Gk_DomainTest, PrincipalParamEndsWithoutPeriod) {
  EXPECT_EQ(Gk_Domain(1, 1, fuzz).principalParam(7), 1.0);
  EXPECT_EQ(Gk_Domain(1, 1, fuzz).principalParam(-7), 1.0);
  EXPECT_EQ(Gk_Domain(1, 1, fuzz).principalParam(1), 1.0);
  EXPECT_EQ(Gk_Domain(2, 1, fuzz).principalParam(7), 2.0);
  EXPECT_EQ(oneToTwo.principalParam(infinity), 1.0);
  EXPECT_EQ(oneToTwo.principalParam(-infinity), 1.0);
  EXPECT_TRUE(std::isnan(oneToTwo.principalParam(notANumber)));
  EXPECT_EQ(Gk_Domain(0, infinity, fuzz).principalParam(-1), 0.0);
  EXPECT_EQ(Gk_Domain(-largest, largest / 2, fuzz).principalParam(largest), -largest);
  EXPECT_TRUE(std::isnan(Gk_Domain(notANumber, 1, fuzz).principalParam(0)));
  EXPECT_EQ(Gk_Domain(0, notANumber, fuzz).principalParam(-1), 0.0);
}

TEST(Gk_DomainTest, PrincipalParamOfFarParameterEndsSoon) {
  struct {
    Gk_Domain domain;
    double v;
  } const cases[] = {{Gk_Domain(0, 1, fuzz), 1e300},
                     {Gk_Domain(0, 1, fuzz), -1e300},
                     {Gk_Domain(0, 1e-300, fuzz), 1e300},
                     {Gk_Domain(0, denormal, fuzz), largest},
                     {Gk_Domain(-1e-9, 1e-9, fuzz), 1e9},
                     {Gk_Domain(5, 5.5, fuzz), -1e17},
                     {Gk_Domain(-largest, -1e308, fuzz), largest},
                     {Gk_Domain(1, std::nextafter(1.0, 2.0), fuzz), 1e5}};
  for (auto const& each : cases) {
    SCOPED_TRACE(each.v);
    double const principal = each.domain.principalParam(each.v);
    EXPECT_GE(principal, each.domain.low());
    EXPECT_LE(principal, each.domain.high());
  }
  EXPECT_EQ(Gk_Domain(0, 3, fuzz).principalParam(3000001), 1.0);
  EXPECT_EQ(Gk_Domain(0, 3, fuzz).principalParam(-3000001), 2.0);
}

TEST(Gk_DomainTest, PrincipalParamEndsAtNearestEnd) {
  for (double turns : {1.0, 2.0, 65535.0, 65536.0, 65537.0, 1e6, 1e9}) {
    SCOPED_TRACE(turns);
    EXPECT_EQ(Gk_Domain(2, 5, fuzz).principalParam(5 + 3 * turns), 5.0);
    EXPECT_EQ(Gk_Domain(2, 5, fuzz).principalParam(2 - 3 * turns), 2.0);
  }
  // A result slightly below the low end becomes the low end, also for a far parameter.
  EXPECT_EQ(Gk_Domain(0, 1, fuzz).principalParam(-70000 - 5e-11), 0.0);
  EXPECT_NEAR(Gk_Domain(0, 1, fuzz).principalParam(-70000 - 2e-10), 1.0, 1e-9);
}

TEST(Gk_DomainTest, PrincipalParamOfFarEqualsLoop) {
  std::mt19937 random(809);
  for (int round = 0; round < 20; ++round) {
    // Adding multiples of 1/1024 does not round.
    double const v = (static_cast<double>(random() % 200000001) - 100000000.0) / 1024;
    Gk_Domain const domain(-0.125, 0.375, fuzz);
    double stepped = v;
    while (stepped > 0.375) stepped -= 0.5;
    while (stepped < -0.125) stepped += 0.5;
    EXPECT_EQ(domain.principalParam(v), stepped) << v;
  }
}

TEST(Gk_DomainTest, ExtendOfUnsetCreatesPoint) {
  Gk_Domain domain = unset;
  EXPECT_TRUE(domain.extend(5.0));
  ExpectDomain(domain, 3, 5, 5);
  EXPECT_FALSE(domain.extend(5.0));
  // Also for 0, the value of its unset ends.
  Gk_Domain other = unset;
  EXPECT_TRUE(other.extend(0.0));
  ExpectDomain(other, 3, 0, 0);
}

TEST(Gk_DomainTest, ExtendMovesBoundedEnds) {
  Gk_Domain domain = oneToTwo;
  EXPECT_TRUE(domain.extend(3.0));
  ExpectDomain(domain, 3, 1, 3);
  EXPECT_TRUE(domain.extend(-1.0));
  ExpectDomain(domain, 3, -1, 3);
  EXPECT_FALSE(domain.extend(0.0));
  domain = fromOne;
  EXPECT_FALSE(domain.extend(7.0));
  EXPECT_TRUE(domain.extend(0.0));
  ExpectDomain(domain, 1, 0, 2);
  domain = toTwo;
  EXPECT_FALSE(domain.extend(-7.0));
  EXPECT_TRUE(domain.extend(7.0));
  ExpectDomain(domain, 2, 1, 7);
}

TEST(Gk_DomainTest, ExtendKeepsEndsWithinFuzz) {
  Gk_Domain domain = oneToTwo;
  EXPECT_FALSE(domain.extend(2.0 + 1e-11));
  EXPECT_FALSE(domain.extend(1.0 - 1e-11));
  ExpectDomain(domain, 3, 1, 2);
  EXPECT_TRUE(domain.extend(2.0 + 1e-9));
  EXPECT_EQ(domain.high(), 2.0 + 1e-9);
}

TEST(Gk_DomainTest, ExtendByNaNReportsChangeOnly) {
  Gk_Domain domain = oneToTwo;
  EXPECT_TRUE(domain.extend(notANumber));
  ExpectDomain(domain, 3, 1, 2);
  EXPECT_TRUE(domain.extend(infinity));
  ExpectDomain(domain, 3, 1, infinity);
  EXPECT_TRUE(domain.extend(-infinity));
  ExpectDomain(domain, 3, -infinity, infinity);
  EXPECT_FALSE(domain.extend(largest));
  domain = unset;
  EXPECT_TRUE(domain.extend(notANumber));
  EXPECT_TRUE(std::isnan(domain.low()));
  EXPECT_TRUE(domain.isFinite());
  EXPECT_TRUE(domain.extend(1.0));
  EXPECT_TRUE(std::isnan(domain.high()));
}

TEST(Gk_DomainTest, ExtendByDomainUsesBoundedEnds) {
  Gk_Domain const wide(-5, 5, fuzz);
  Gk_Domain domain = oneToTwo;
  EXPECT_TRUE(domain.extend(wide));
  ExpectDomain(domain, 3, -5, 5);
  EXPECT_FALSE(domain.extend(wide));
  domain = oneToTwo;
  EXPECT_TRUE(domain.extend(Gk_Domain(Gk_Domain::LowBounded, -5, 5, fuzz)));
  ExpectDomain(domain, 3, -5, 2);
  domain = oneToTwo;
  EXPECT_TRUE(domain.extend(Gk_Domain(Gk_Domain::HighBounded, -5, 5, fuzz)));
  ExpectDomain(domain, 3, 1, 5);
  domain = oneToTwo;
  EXPECT_FALSE(domain.extend(Gk_Domain(Gk_Domain::Unset, -5, 5, fuzz)));
  ExpectDomain(domain, 3, 1, 2);
  // True if either end changed the domain.
  EXPECT_TRUE(domain.extend(Gk_Domain(0, 2, fuzz)));
  EXPECT_TRUE(domain.extend(Gk_Domain(0, 3, fuzz)));
  ExpectDomain(domain, 3, 0, 3);
  domain = unset;
  EXPECT_TRUE(domain.extend(wide));
  ExpectDomain(domain, 3, -5, 5);
  // The low end is added first; the high end is then within the fuzz of it.
  domain = unset;
  EXPECT_TRUE(domain.extend(Gk_Domain(1, 1 + 5e-11, fuzz)));
  ExpectDomain(domain, 3, 1, 1);
  domain = unset;
  EXPECT_FALSE(domain.extend(unset));
  ExpectDomain(domain, 0, 0, 0);
  EXPECT_FALSE(oneToTwo.isSame(unset, -1.0));
  domain = oneToTwo;
  EXPECT_FALSE(domain.extend(domain));
  ExpectDomain(domain, 3, 1, 2);
}

TEST(Gk_DomainTest, IntersectionUsesContainedEnds) {
  Gk_Domain const domain(0, 10, 0.5);
  ExpectDomain(domain.intersection(Gk_Domain(2, 5, 7)), 3, 2, 5, 0.5);
  ExpectDomain(domain.intersection(Gk_Domain(-2, 5, 7)), 3, 0, 5, 0.5);
  ExpectDomain(domain.intersection(Gk_Domain(2, 15, 7)), 3, 2, 10, 0.5);
  // Numbers within the fuzz are contained.
  ExpectDomain(domain.intersection(Gk_Domain(-0.5, 10.5, 7)), 3, -0.5, 10.5, 0.5);
  // The result is finite, also if the operands are not.
  ExpectDomain(fromOne.intersection(toTwo), 3, 1, 2);
  ExpectDomain(unset.intersection(oneToTwo), 3, 1, 2);
}

TEST(Gk_DomainTest, IntersectionOfDisjointIsFirst) {
  ExpectDomain(oneToTwo.intersection(Gk_Domain(5, 6, 9)), 3, 1, 2);
  ExpectDomain(oneToTwo.intersection(Gk_Domain(-6, -5, 9)), 3, 1, 2);
  // The same holds for a domain that contains this one, and for NaN.
  ExpectDomain(oneToTwo.intersection(Gk_Domain(-9, 9, 9)), 3, 1, 2);
  ExpectDomain(oneToTwo.intersection(Gk_Domain(notANumber, notANumber, 9)), 3, 1, 2);
}

TEST(Gk_DomainTest, ApplyMapsBoundedEnds) {
  Gk_LinMap const map(4, 10);
  Gk_Domain domain(1, 2, 0.5);
  domain.apply(map);
  ExpectDomain(domain, 3, 14, 18, 2.0);
  domain = Gk_Domain(Gk_Domain::LowBounded, 1, 2, 0.5);
  domain.apply(map);
  ExpectDomain(domain, 1, 14, 2, 2.0);
  domain = Gk_Domain(Gk_Domain::HighBounded, 1, 2, 0.5);
  domain.apply(map);
  ExpectDomain(domain, 2, 1, 18, 2.0);
  domain = Gk_Domain(Gk_Domain::Unset, 1, 2, 0.5);
  domain.apply(map);
  ExpectDomain(domain, 0, 1, 2, 2.0);
}

TEST(Gk_DomainTest, ApplyOfNegatingMapSwapsEnds) {
  Gk_LinMap const map(-4, 10);
  Gk_Domain domain(1, 2, 0.5);
  domain.apply(map);
  ExpectDomain(domain, 3, 2, 6, 2.0);
  domain = Gk_Domain(Gk_Domain::LowBounded, 1, 2, 0.5);
  domain.apply(map);
  ExpectDomain(domain, 2, 2, 6, 2.0);
  domain = Gk_Domain(Gk_Domain::HighBounded, 1, 2, 0.5);
  domain.apply(map);
  ExpectDomain(domain, 1, 2, 1, 2.0);
  domain = oneToTwo;
  domain.apply(Gk_LinMap(-1, 0));
  ExpectDomain(domain, 3, -2, -1);
}

TEST(Gk_DomainTest, ApplyOfUnitMapScalesFuzz) {
  Gk_Domain domain(1, 2, 1.0);
  double const slope = 1.0 + 5e-11;
  domain.apply(Gk_LinMap(slope, 5e-11));
  ExpectDomain(domain, 3, 1, 2, slope);
}

TEST(Gk_DomainTest, MapToMapsEndsToEnds) {
  Gk_LinMap const map = Gk_Domain(2, 4, fuzz).mapTo(Gk_Domain(10, 16, 9));
  EXPECT_EQ(map.slope(), 3.0);
  EXPECT_EQ(map.offset(), 4.0);
  Gk_LinMap const mirror = Gk_Domain(2, 4, fuzz).mapTo(Gk_Domain(16, 10, 9));
  EXPECT_EQ(mirror.slope(), -3.0);
  EXPECT_EQ(mirror.offset(), 22.0);
}

TEST(Gk_DomainTest, MapToFromEmptyDividesByZero) {
  EXPECT_EQ(Gk_Domain(2, 2, fuzz).mapTo(oneToTwo).slope(), infinity);
  EXPECT_TRUE(std::isnan(Gk_Domain(2, 2, fuzz).mapTo(Gk_Domain(1, 1, fuzz)).slope()));
}

TEST(Gk_DomainTest, DumpWritesEnds) {
  EXPECT_EQ(TextOf([](VRELOutputStream* stream) {
              VRELStreamFormatter formatter(stream);
              EXPECT_EQ(&(formatter << Gk_Domain(Gk_Domain::Unset, -1.5, 2, fuzz)), &formatter);
              formatter << '|';
              oneToTwo.dump(formatter);
            }),
            "Domain( -1.500000, 2.000000)|Domain( 1.000000, 2.000000)");
}

TEST(Gk_DomainTest, ApplyEqualsMapOfNumbers) {
  std::mt19937 random(804);
  std::uniform_real_distribution<double> number(-100, 100);
  for (int round = 0; round < 5000; ++round) {
    double const a = number(random);
    double const b = a + std::fabs(number(random)) + 0.01;
    double const slope = number(random);
    if (std::fabs(slope) < 0.01) continue;
    Gk_LinMap const map(slope, number(random));
    Gk_Domain const source(a, b, 1e-6);
    Gk_Domain image = source;
    image.apply(map);
    ASSERT_EQ(image.low(), std::fmin(map.apply(a), map.apply(b)));
    ASSERT_EQ(image.high(), std::fmax(map.apply(a), map.apply(b)));
    ASSERT_GT(image.fuzz(), 0.0);
    // Numbers clearly inside or outside stay so in the image.
    for (double ratio : {-0.5, 0.25, 0.75, 1.5}) {
      double const v = source.locate(ratio);
      ASSERT_EQ(source.isInside(v), image.isInside(map.apply(v)));
      ASSERT_EQ(source.isContained(v), image.isContained(map.apply(v)));
    }
    // The inverse map restores the domain.
    image.apply(map.inverse());
    ASSERT_TRUE(image.isSame(source, 1e-8 * (1 + 1 / std::fabs(slope))));
    // The map between two domains maps ends to ends, and mirrored domains to mirrored ones.
    Gk_Domain const target(number(random) - 300, number(random) + 300, 1e-6);
    Gk_LinMap const between = source.mapTo(target);
    ASSERT_NEAR(between.apply(a), target.low(), 1e-6);
    ASSERT_NEAR(between.apply(b), target.high(), 1e-6);
    ASSERT_TRUE((-(-source)).isSame(source, 0.0));
    Gk_Domain negated = source;
    negated.apply(Gk_LinMap(-1, 0));
    ASSERT_TRUE(negated.isSame(-source, 0.0));
  }
}

TEST(Gk_DomainTest, ExtendBoundsNumbers) {
  std::mt19937 random(805);
  std::uniform_real_distribution<double> number(-1, 1);
  for (int round = 0; round < 200; ++round) {
    Gk_Domain domain = unset;
    double low = infinity;
    double high = -infinity;
    for (int step = 0; step < 50; ++step) {
      double const v = number(random);
      bool const grows = v < low || v > high;
      // No two of these numbers are within 1e-10 of each other.
      ASSERT_EQ(domain.extend(v), grows);
      low = std::fmin(low, v);
      high = std::fmax(high, v);
      ExpectDomain(domain, 3, low, high);
    }
    // Adding a whole number of periods does not change the result.
    double const period = domain.length();
    for (int turns = -5; turns <= 5; ++turns) {
      double const v = domain.locate(0.3) + turns * period;
      ASSERT_NEAR(domain.principalParam(v), domain.locate(0.3), 1e-12);
    }
  }
}

// Reduces a parameter by the documented loop, without a limit.
double AddPeriods(double v, double low, double high) {
  double const period = high - low;
  while (v > high) v -= period;
  while (!(low - v <= Gk_Def::FuzzReal)) v += period;
  return low > v ? low : v;
}

TEST(Gk_DomainTest, PrincipalParamRounds16MillionPeriods) {
  struct {
    double low;
    double high;
    double v;
  } const cases[] = {
      {0.0, 0.1, 1677721.55},       // 2^24 - 1 periods; the sum of the roundings is 2e-4 of a period
      {0.0, 0.1, -1677721.55},      // the same from below
      {-0.3, 0.4, 70000.0 * 0.77},  // 77000 periods, above the old limit of 65536
      {100.0, 100.7, 1e7},          // 14285572 periods
  };
  for (auto const& each : cases) {
    double const expected = AddPeriods(each.v, each.low, each.high);
    double const fast = std::fmod(each.v - each.low, each.high - each.low);
    EXPECT_EQ(Gk_Domain(each.low, each.high, fuzz).principalParam(each.v), expected) << each.v;
    EXPECT_NE(expected, each.low + (fast < 0.0 ? fast + each.high - each.low : fast))
        << "the case does not distinguish the two";
  }
}

TEST(Gk_DomainTest, PrincipalParamEndsIfPeriodIsRoundedOff) {
  // At 1e17 doubles are 16 apart: adding 1 changes nothing, adding 9 adds 16.
  EXPECT_EQ(Gk_Domain(0, 1, fuzz).principalParam(1e17), 1.0);
  double const reduced = Gk_Domain(0, 9, fuzz).principalParam(1e17);
  EXPECT_GE(reduced, 0.0);
  EXPECT_LE(reduced, 9.0);
}

}  // namespace
