#include "VRELWildcardChain.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "VRELOption.h"
#include "VRELOptionName.h"

namespace {

std::string TextOf(VRELOption const& option) {
  VRELValue::VRELValueType type = VRELValue::UnknownType;
  VRELString name;
  VRELString value;
  option.GetValueType(type);
  option.GetName(name);
  option.GetValue(value);
  return name.toUtf8() + "=" + value.toUtf8() + " " + VRELValue::VRELValueTypeNames[type];
}

TEST(VRELWildcardChainTest, ParsesOptionAtFirstRequest) {
  struct {
    char const* name;
    char const* value;
    char const* option;
  } const rows[] = {
      {"Step.Reader.X", "12", "Step.Reader.X=12 int"},
      {"X", "off", "X=false bool"},
      {"X", "\"off\"", "X=off string"},
      {"X", "a, b ,,", "X=a, b ,, string"},
      {"X", ",", "X=, string"},
      {"X", "1e2", "X=100.000000 double"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.value);
    std::unique_ptr<VRELWildcardChain> const chain = VRELWildcardChain::Make(3, row.name, row.value);
    EXPECT_EQ(chain->Levels(), 3);
    EXPECT_TRUE(chain->IsDeferred());
    EXPECT_EQ(chain->NameBytes(), row.name);
    EXPECT_EQ(chain->ValueBytes(), row.value);
    EXPECT_EQ(TextOf(chain->Parse()), row.option);
    EXPECT_TRUE(chain->IsDeferred());
    VRELOption* const option = chain->Option();
    EXPECT_EQ(TextOf(*option), row.option);
    EXPECT_FALSE(chain->IsDeferred());
    EXPECT_EQ(chain->Option(), option);
  }
}

TEST(VRELWildcardChainTest, ReleasesOption) {
  auto option = std::make_unique<VRELOption>(VRELOptionName(L"X"), 3, false);
  VRELOption* const expected = option.get();
  std::unique_ptr<VRELWildcardChain> const chain = VRELWildcardChain::Make(6, std::move(option));
  EXPECT_FALSE(chain->IsDeferred());
  chain->RemoveLevel();
  EXPECT_EQ(chain->Levels(), 5);
  std::unique_ptr<VRELOption> const released(chain->ReleaseOption());
  EXPECT_EQ(released.get(), expected);
}

// The decimal point of strtod depends on the locale.
TEST(VRELWildcardChainTest, NumbersWithPointAreNotDeferred) {
  EXPECT_TRUE(VRELWildcardChain::CanDefer("X", "12"));
  EXPECT_TRUE(VRELWildcardChain::CanDefer("X", "v1.5"));
  EXPECT_FALSE(VRELWildcardChain::CanDefer("X", "1.5"));
  EXPECT_FALSE(VRELWildcardChain::CanDefer("X", "-.5e+3"));
  EXPECT_FALSE(VRELWildcardChain::CanDefer("", "12"));
  EXPECT_FALSE(VRELWildcardChain::CanDefer("X", std::string(65536, 'v')));
}

}  // namespace
