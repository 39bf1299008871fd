#include "VRELLayerFilterC.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "VRELString.h"

namespace {

// All values that a filter returns.
struct Content {
  bool named = false;
  std::string name;
  bool current = false;
  int type = -1;
  bool all = false;
  std::vector<int> layers;

  bool operator==(Content const& other) const {
    return named == other.named && name == other.name && current == other.current && type == other.type &&
           all == other.all && layers == other.layers;
  }
};

Content ContentOf(VRELLayerFilterC const& filter) {
  Content content;
  VRELString name(L"untouched");
  content.named = filter.GetName(name) == VREL_S_OK;
  content.name = name.toUtf8();
  EXPECT_EQ(filter.IsCurrent(content.current), VREL_S_OK);
  eLayerFilterType type = eLayerFilterAll;
  EXPECT_EQ(filter.GetLayerFilterType(type), VREL_S_OK);
  content.type = type;
  EXPECT_EQ(filter.IsALLLayerFilter(content.all), VREL_S_OK);
  int count = -1;
  EXPECT_EQ(filter.GetNumLayers(count), VREL_S_OK);
  for (int i = 0; i < count; ++i) {
    int layer = -2;
    EXPECT_EQ(filter.GetLayerAt(i, layer), VREL_S_OK);
    content.layers.push_back(layer);
  }
  return content;
}

constexpr auto type5 = static_cast<eLayerFilterType>(5);
int const someLayers[] = {7, -3, 7};
Content const some = {true, "some", true, 5, false, {7, -3, 7}};
Content const fresh = {false, "untouched", false, 2, false, {}};

VRELLayerFilterC Some() {
  return {3, someLayers, L"some", true, type5};
}

TEST(VRELLayerFilterCTest, IsPlainClass) {
  EXPECT_FALSE(std::is_polymorphic_v<VRELLayerFilterC>);
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<eLayerFilterType>, int>));
  EXPECT_TRUE((std::is_convertible_v<eLayerFilterType, int>));
  EXPECT_EQ(eLayerFilterAll, 0);
  EXPECT_EQ(eLayerFilterDefault, 2);
}

TEST(VRELLayerFilterCTest, DefaultIsEmpty) {
  EXPECT_EQ(ContentOf(VRELLayerFilterC()), fresh);
}

TEST(VRELLayerFilterCTest, KeepsOrderAndDuplicates) {
  EXPECT_EQ(ContentOf(Some()), some);
}

TEST(VRELLayerFilterCTest, GetNameWithoutNameFails) {
  VRELString name(L"mine");
  EXPECT_EQ(VRELLayerFilterC().GetName(name), 0x1000001);
  EXPECT_EQ(name.toUtf8(), "mine");
}

TEST(VRELLayerFilterCTest, SetReplacesEverything) {
  VRELLayerFilterC filter = Some();
  int const layers[] = {1};
  EXPECT_EQ(filter.Set(1, layers, L"one", false, eLayerFilterDefault), VREL_S_OK);
  EXPECT_EQ(ContentOf(filter), (Content{true, "one", false, 2, false, {1}}));
}

TEST(VRELLayerFilterCTest, SetOfEmptyList) {
  VRELLayerFilterC filter = Some();
  EXPECT_EQ(filter.Set(0, nullptr, "", false, static_cast<eLayerFilterType>(0)), 0);
  EXPECT_EQ(ContentOf(filter), (Content{false, "untouched", false, 0, true, {}}));
}

TEST(VRELLayerFilterCTest, SetFailsIfCountAndArrayDisagree) {
  struct {
    int count;
    int const* layers;
  } const refused[] = {{0, someLayers},  {1, nullptr},  {2, nullptr},
                       {-1, someLayers}, {-1, nullptr}, {std::numeric_limits<int>::min(), someLayers}};
  for (auto const& each : refused) {
    SCOPED_TRACE(each.count);
    VRELLayerFilterC filter = Some();
    EXPECT_EQ(filter.Set(each.count, each.layers, L"other", false, eLayerFilterAll), 0x1000001);
    EXPECT_EQ(ContentOf(filter), some);
    // The constructor ignores that result.
    EXPECT_EQ(ContentOf(VRELLayerFilterC(each.count, each.layers, L"other", true, eLayerFilterAll)), fresh);
  }
}

TEST(VRELLayerFilterCTest, SetCopiesArray) {
  std::vector<int> layers = {4, 5};
  VRELLayerFilterC const filter(2, layers.data(), L"", false, eLayerFilterAll);
  layers.assign(2, 0);
  EXPECT_EQ(ContentOf(filter).layers, (std::vector<int>{4, 5}));
}

TEST(VRELLayerFilterCTest, SetNameFailsIfEmpty) {
  VRELLayerFilterC filter = Some();
  EXPECT_EQ(filter.SetName(L""), 0x1000001);
  EXPECT_EQ(ContentOf(filter), some);
}

TEST(VRELLayerFilterCTest, SetNameChangesNameOnly) {
  VRELLayerFilterC filter = Some();
  EXPECT_EQ(filter.SetName(L"first"), VREL_S_OK);
  EXPECT_EQ(filter.SetName(L"second"), VREL_S_OK);
  Content expected = some;
  expected.name = "second";
  EXPECT_EQ(ContentOf(filter), expected);
  VRELLayerFilterC bare;
  EXPECT_EQ(bare.SetName(L"n"), VREL_S_OK);
  EXPECT_EQ(ContentOf(bare), (Content{true, "n", false, 2, false, {}}));
}

TEST(VRELLayerFilterCTest, IndexOutOfRangeIsMinusOne) {
  VRELLayerFilterC const filter = Some();
  for (int index : {-1, 3, 4, 10, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    SCOPED_TRACE(index);
    int layer = 77;
    EXPECT_EQ(filter.GetLayerAt(index, layer), 0x1000001);
    EXPECT_EQ(layer, -1);
  }
  int layer = 77;
  EXPECT_EQ(VRELLayerFilterC().GetLayerAt(0, layer), 0x1000001);
  EXPECT_EQ(layer, -1);
}

TEST(VRELLayerFilterCTest, SetsFlagAndType) {
  VRELLayerFilterC filter;
  EXPECT_EQ(filter.SetCurrent(true), VREL_S_OK);
  EXPECT_EQ(filter.SetLayerFilterType(eLayerFilterAll), VREL_S_OK);
  EXPECT_EQ(ContentOf(filter), (Content{false, "untouched", true, 0, true, {}}));
  EXPECT_EQ(filter.SetCurrent(false), VREL_S_OK);
  EXPECT_EQ(filter.SetLayerFilterType(type5), VREL_S_OK);
  EXPECT_EQ(ContentOf(filter), (Content{false, "untouched", false, 5, false, {}}));
}

TEST(VRELLayerFilterCTest, CopyIsDeep) {
  VRELLayerFilterC source = Some();
  VRELLayerFilterC const copy(source);
  VRELLayerFilterC assigned(1, someLayers, L"before", false, eLayerFilterAll);
  EXPECT_EQ(&(assigned = source), &assigned);
  EXPECT_EQ(ContentOf(copy), some);
  EXPECT_EQ(ContentOf(assigned), some);
  source.Set(0, nullptr, L"", false, eLayerFilterAll);
  EXPECT_EQ(ContentOf(copy), some);
  EXPECT_EQ(ContentOf(assigned), some);
  // A missing name is copied, too.
  assigned = source;
  EXPECT_EQ(ContentOf(assigned), (Content{false, "untouched", false, 0, true, {}}));
}

TEST(VRELLayerFilterCTest, SelfAssignment) {
  VRELLayerFilterC filter = Some();
  VRELLayerFilterC const& same = filter;
  filter = same;
  EXPECT_EQ(ContentOf(filter), some);
}

}  // namespace
