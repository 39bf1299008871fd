#include "ValidationChecks.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

constexpr double kTolerance = 0.001;

// A geometric validation property of the product of base 100: the ids are `id` to `id` + 2.
std::string PropertyText(int id, std::string const& item, int context = 1) {
  auto const name = [id](int i) { return "#" + std::to_string(id + i); };
  return name(0) + "=PROPERTY_DEFINITION('geometric validation property','',#102);\n" + name(1) +
         "=REPRESENTATION('',(" + name(3) + "),#" + std::to_string(context) + ");\n" + name(2) +
         "=PROPERTY_DEFINITION_REPRESENTATION(" + name(0) + "," + name(1) + ");\n" + name(3) + "=" + item + ";\n";
}

std::string MeasureItem(std::string const& name, std::string const& type, std::string const& number, int unit) {
  return "MEASURE_REPRESENTATION_ITEM('" + name + "'," + type + "(" + number + "),#" + std::to_string(unit) + ")";
}

// Units: #50 cubic and #51 square millimetres, #52 cubic inches, #53 cubic centimetres.
constexpr char kUnits[] =
    "#50=DERIVED_UNIT((#54));\n#51=DERIVED_UNIT((#55));\n#52=DERIVED_UNIT((#56));\n#53=DERIVED_UNIT((#57));\n"
    "#54=DERIVED_UNIT_ELEMENT(#3,3.);\n#55=DERIVED_UNIT_ELEMENT(#3,2.);\n#56=DERIVED_UNIT_ELEMENT(#6,3.);\n"
    "#57=DERIVED_UNIT_ELEMENT(#58,3.);\n#58=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.CENTI.,.METRE.));\n";

// A box of 2 by 3 by 4.
ModelComputed Box(double scale = 1.0) {
  ModelComputed box;
  box.volume = 24 * scale * scale * scale;
  box.area = 52 * scale * scale;
  double const low[3] = {0, 0, 0};
  double const high[3] = {2 * scale, 3 * scale, 4 * scale};
  for (int i = 0; i < 3; ++i) box.centroid[i] = high[i] / 2;
  box.extent.Extend(low);
  box.extent.Extend(high);
  return box;
}

// The comparisons of a document with a product in millimetres whose shape is the box.
std::vector<ValidationCheck> ChecksOf(std::string const& data, int context = 1, bool isComputed = true) {
  ReadModel const read(kUnits + ProductText(100, "box", "#12", context) + data);
  ProductModel model = *read;
  if (isComputed) model.products.at(0).computed = Box();
  ComputedTotals totals(model);
  return ValidationCheck::Of(model, totals, kTolerance);
}

ValidationCheck CheckOf(std::string const& item, int context = 1, int itemContext = 1) {
  std::vector<ValidationCheck> const checks = ChecksOf(PropertyText(300, item, itemContext), context);
  if (checks.size() != 1) {
    ADD_FAILURE() << checks.size() << " checks";
    return {};
  }
  return checks[0];
}

}  // namespace

TEST(ValidationChecksTest, AcceptsMatchingValues) {
  ValidationCheck const volume = CheckOf(MeasureItem("volume measure", "VOLUME_MEASURE", "24.", 50));
  EXPECT_EQ(volume.quantity, ValidationCheck::Volume);
  EXPECT_EQ(volume.verdict, ValidationCheck::Agrees);
  EXPECT_DOUBLE_EQ(volume.computed[0], 24);
  EXPECT_EQ(volume.unit, "millimetre^3");
  EXPECT_EQ(volume.product, 0);
  EXPECT_EQ(volume.Text(kTolerance), "agrees within 0.1 %");
  ValidationCheck const area = CheckOf(MeasureItem("surface area measure", "AREA_MEASURE", "52.04", 51));
  EXPECT_EQ(area.quantity, ValidationCheck::Area);
  EXPECT_EQ(area.verdict, ValidationCheck::Agrees);
  EXPECT_NEAR(area.difference, 0.04 / 52.04, 1e-12);
  ValidationCheck const centroid = CheckOf("CARTESIAN_POINT('centre point',(1.,1.5,2.))");
  EXPECT_EQ(centroid.quantity, ValidationCheck::Centroid);
  EXPECT_EQ(centroid.verdict, ValidationCheck::Agrees);
  EXPECT_EQ(centroid.difference, 0);
}

// 24 of 24.5: 2.04 %. The diagonal of the box is the root of 29, 5.385: a distance of 0.5 is 9.28 %.
TEST(ValidationChecksTest, MarksDifferences) {
  ValidationCheck const volume = CheckOf(MeasureItem("volume measure", "VOLUME_MEASURE", "24.5", 50));
  EXPECT_EQ(volume.verdict, ValidationCheck::Differs);
  EXPECT_NEAR(volume.difference, 0.5 / 24.5, 1e-12);
  EXPECT_EQ(volume.Text(kTolerance), "differs by 2.04 %, more than 0.1 %");
  ValidationCheck const centroid = CheckOf("CARTESIAN_POINT('centre point',(1.,1.5,2.5))");
  EXPECT_EQ(centroid.verdict, ValidationCheck::Differs);
  EXPECT_EQ(centroid.Text(kTolerance), "differs by 9.28 % of the diagonal, more than 0.1 %");
  ValidationCheck const area = CheckOf(MeasureItem("surface area measure", "AREA_MEASURE", "0.", 51));
  EXPECT_EQ(area.verdict, ValidationCheck::Differs);
  EXPECT_EQ(area.difference, 1);
}

TEST(ValidationChecksTest, ConvertsUnits) {
  // 24 cubic millimetres are 0.024 cubic centimetres.
  ValidationCheck const volume = CheckOf(MeasureItem("volume measure", "VOLUME_MEASURE", "0.024", 53));
  EXPECT_EQ(volume.verdict, ValidationCheck::Agrees);
  EXPECT_NEAR(volume.computed[0], 0.024, 1e-15);
  EXPECT_EQ(volume.unit, "centimetre^3");
  // The product in inches, the volume in cubic millimetres: 24 * 25.4^3 = 393289.536.
  ValidationCheck const inches = CheckOf(MeasureItem("volume measure", "VOLUME_MEASURE", "393289.536", 50), 2);
  EXPECT_EQ(inches.verdict, ValidationCheck::Agrees);
  EXPECT_NEAR(inches.computed[0], 393289.536, 1e-6);
  // The point in millimetres.
  ValidationCheck const point = CheckOf("CARTESIAN_POINT('centre point',(25.4,38.1,50.8))", 2, 1);
  EXPECT_EQ(point.verdict, ValidationCheck::Agrees);
  EXPECT_NEAR(point.computed[1], 38.1, 1e-9);
}

TEST(ValidationChecksTest, MarksOtherUnits) {
  // A number of cubic millimetres with the unit of cubic inches.
  ValidationCheck const inches = CheckOf(MeasureItem("volume measure", "VOLUME_MEASURE", "24.", 52));
  EXPECT_EQ(inches.verdict, ValidationCheck::Differs);
  EXPECT_EQ(inches.unit, "INCH^3");
  ValidationCheck const squares = CheckOf(MeasureItem("volume measure", "VOLUME_MEASURE", "24.", 51));
  EXPECT_EQ(squares.verdict, ValidationCheck::OtherUnit);
  EXPECT_EQ(squares.Text(kTolerance), "the stored unit is not one of volume");
  EXPECT_EQ(squares.unit, "millimetre^3");
  EXPECT_DOUBLE_EQ(squares.computed[0], 24);
  ValidationCheck const lengths = CheckOf(MeasureItem("surface area measure", "AREA_MEASURE", "52.", 3));
  EXPECT_EQ(lengths.verdict, ValidationCheck::OtherUnit);
  EXPECT_EQ(lengths.Text(kTolerance), "the stored unit is not one of area");
}

// Without a unit the number is in that of the product.
TEST(ValidationChecksTest, AcceptsValueWithoutUnit) {
  ValidationCheck const check = CheckOf("MEASURE_REPRESENTATION_ITEM('volume measure',VOLUME_MEASURE(24.),$)", 2);
  EXPECT_EQ(check.verdict, ValidationCheck::Agrees);
  EXPECT_EQ(check.unit, "INCH^3");
}

TEST(ValidationChecksTest, SkipsOtherValues) {
  EXPECT_TRUE(ChecksOf("").empty());
  std::string const volume = MeasureItem("volume measure", "VOLUME_MEASURE", "24.", 50);
  EXPECT_TRUE(ChecksOf(PropertyText(300, volume), 1, false).empty());
  EXPECT_TRUE(ChecksOf(PropertyText(300, MeasureItem("independent curve length", "LENGTH_MEASURE", "3.", 3))).empty());
  EXPECT_TRUE(ChecksOf(PropertyText(300, "CARTESIAN_POINT('centre point',(1.,2.))")).empty());
  EXPECT_TRUE(ChecksOf(PropertyText(300, "CARTESIAN_POINT('volume measure',(1.,2.,3.))")).empty());
  std::string other = PropertyText(300, volume);
  other.replace(other.find("geometric"), 9, "assembly");
  EXPECT_TRUE(ChecksOf(other).empty());
}

TEST(ValidationChecksTest, SurvivesExtremeNumbers) {
  for (char const* number : {"1.E+308", "-1.E+308", "1.E-320", "-0.", "1.E+999"}) {
    for (ValidationCheck const& each :
         ChecksOf(PropertyText(300, MeasureItem("volume measure", "VOLUME_MEASURE", number, 50)))) {
      EXPECT_EQ(each.verdict, ValidationCheck::Differs) << number;
      EXPECT_FALSE(each.Text(kTolerance).empty());
    }
  }
  ValidationCheck const point = CheckOf("CARTESIAN_POINT('centre point',(1.E+300,0.,-1.E+300))");
  EXPECT_EQ(point.verdict, ValidationCheck::Differs);
  ValidationCheck unknown;
  unknown.verdict = ValidationCheck::Differs;
  unknown.difference = std::numeric_limits<double>::infinity();
  EXPECT_EQ(unknown.Text(kTolerance), "differs");
}

namespace {

// A root with a box of twice the size and two uses of the box: moved by 10 along x, and mirrored at x = 0.
ProductModel Assembly() {
  ProductModel model;
  model.products.resize(2);
  model.products[0].faces = 6;
  model.products[0].computed = Box(2);
  model.products[0].occurrences = {0, 1};
  model.products[1].faces = 6;
  model.products[1].computed = Box();
  model.occurrences.resize(2);
  for (ModelOccurrence& each : model.occurrences) {
    each.parent = 0;
    each.child = 1;
  }
  model.occurrences[0].placement = Placement::Translation(10, 0, 0);
  model.occurrences[1].placement = Placement({-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0});
  model.roots = {0};
  return model;
}

}  // namespace

// Volume 192 + 2 * 24 = 240, area 208 + 2 * 52 = 312; centroid x = (192 * 2 + 24 * 11 + 24 * -1) / 240 = 2.6.
TEST(ComputedTotalsTest, AddsChildren) {
  ProductModel const model = Assembly();
  ComputedTotals totals(model);
  ModelComputed const* const all = totals.Of(0);
  ASSERT_NE(all, nullptr);
  EXPECT_DOUBLE_EQ(all->volume, 240);
  EXPECT_DOUBLE_EQ(all->area, 312);
  EXPECT_DOUBLE_EQ(all->centroid[0], 2.6);
  EXPECT_DOUBLE_EQ(all->centroid[1], (192 * 3 + 48 * 1.5) / 240);
  EXPECT_EQ(all->extent.low[0], -2);
  EXPECT_EQ(all->extent.high[0], 12);
  EXPECT_EQ(all->extent.high[2], 8);
}

TEST(ComputedTotalsTest, RoundsCentroidNextToZero) {
  ProductModel model;
  model.products.resize(1);
  model.products[0].faces = 6;
  model.products[0].computed = Box();
  model.products[0].computed->centroid[0] = -1.3e-16;
  model.products[0].computed->centroid[1] = 1e-9;
  ComputedTotals totals(model);
  ASSERT_NE(totals.Of(0), nullptr);
  EXPECT_EQ(totals.Of(0)->centroid[0], 0);
  EXPECT_DOUBLE_EQ(totals.Of(0)->centroid[1], 1e-9);
}

// A child in metres in a parent in millimetres: 24 * 1000^3, 52 * 1000^2.
TEST(ComputedTotalsTest, ScalesChildren) {
  ProductModel model = Assembly();
  model.products[0].faces = 0;
  model.products[0].computed.reset();
  model.products[0].occurrences = {0};
  model.occurrences[0].placement = Placement::Scaling(1000);
  ComputedTotals totals(model);
  ASSERT_NE(totals.Of(0), nullptr);
  EXPECT_DOUBLE_EQ(totals.Of(0)->volume, 24e9);
  EXPECT_NEAR(totals.Of(0)->area, 52e6, 1e-3);
  EXPECT_DOUBLE_EQ(totals.Of(0)->centroid[2], 2000);
}

TEST(ComputedTotalsTest, NeedsAllShapes) {
  ProductModel model = Assembly();
  model.products[1].computed.reset();
  ComputedTotals incomplete(model);
  EXPECT_EQ(incomplete.Of(1), nullptr);
  EXPECT_EQ(incomplete.Of(0), nullptr);
  // A product without a shape adds nothing.
  model.products[1].faces = 0;
  ComputedTotals complete(model);
  EXPECT_EQ(complete.Of(1), nullptr);
  ASSERT_NE(complete.Of(0), nullptr);
  EXPECT_DOUBLE_EQ(complete.Of(0)->volume, 192);
  EXPECT_EQ(complete.Of(-1), nullptr);
  EXPECT_EQ(complete.Of(2), nullptr);
}

// 2^40 uses of one box by forty levels, and a chain of 200,000 products.
TEST(ComputedTotalsTest, AddsEachProductOnce) {
  ProductModel model;
  model.products.resize(41);
  for (int i = 0; i < 40; ++i) {
    for (int k = 0; k < 2; ++k) {
      ModelOccurrence use;
      use.parent = i;
      use.child = i + 1;
      model.products[static_cast<std::size_t>(i)].occurrences.push_back(static_cast<int>(model.occurrences.size()));
      model.occurrences.push_back(use);
    }
  }
  model.products[40].computed = Box();
  ComputedTotals totals(model);
  ASSERT_NE(totals.Of(0), nullptr);
  EXPECT_DOUBLE_EQ(totals.Of(0)->volume, 24 * 1099511627776.0);

  ProductModel chain;
  chain.products.resize(200000);
  chain.occurrences.resize(199999);
  for (int i = 0; i < 199999; ++i) {
    chain.occurrences[static_cast<std::size_t>(i)].parent = i;
    chain.occurrences[static_cast<std::size_t>(i)].child = i + 1;
    chain.products[static_cast<std::size_t>(i)].occurrences = {i};
  }
  chain.products.back().computed = Box();
  ComputedTotals deep(chain);
  ASSERT_NE(deep.Of(0), nullptr);
  EXPECT_EQ(deep.Of(0)->volume, 24);
}
