#include "StepUnits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ModelFixture.h"

TEST(StepUnitsTest, ReadsUnitsOfContexts) {
  ReadModel const model(ProductText(100, "a", "", 1) + ProductText(200, "b", "", 2));
  ASSERT_EQ(model->units.size(), 2U);
  ModelUnits const& metric = model->units[0];
  EXPECT_EQ(metric.lengthName, "millimetre");
  EXPECT_EQ(metric.metres, 0.001);
  EXPECT_EQ(metric.angleName, "radian");
  EXPECT_EQ(metric.radians, 1.0);
  EXPECT_EQ(metric.uncertainty, 0.005);
  EXPECT_EQ(metric.contexts, std::vector<std::string>{"#1"});
  ModelUnits const& inches = model->units[1];
  EXPECT_EQ(inches.lengthName, "INCH");
  EXPECT_EQ(inches.metres, 0.0254);
  EXPECT_EQ(inches.angleName, "DEGREE");
  EXPECT_EQ(inches.radians, 0.0174532925199433);
  EXPECT_EQ(inches.uncertainty, std::nullopt);
}

TEST(StepUnitsTest, JoinsContextsWithEqualUnits) {
  ReadModel const model(
      "#30=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((#5))"
      "GLOBAL_UNIT_ASSIGNED_CONTEXT((#3,#4))REPRESENTATION_CONTEXT('',''));\n" +
      ProductText(100, "a", "", 1) + ProductText(200, "b", "", 30));
  ASSERT_EQ(model->units.size(), 1U);
  EXPECT_EQ(model->units[0].contexts, (std::vector<std::string>{"#1", "#30"}));
}

TEST(StepUnitsTest, WarnsAboutBadConversion) {
  ReadModel const model(
      "#30=(CONVERSION_BASED_UNIT('BAD',#31)LENGTH_UNIT()NAMED_UNIT(#10));\n"
      "#31=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(-1.),#3);\n"
      "#32=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#30))REPRESENTATION_CONTEXT('',''));\n" +
      ProductText(100, "a", "", 32));
  EXPECT_TRUE(model->units.empty());
  EXPECT_EQ(model->warnings,
            std::vector<std::string>{"#30: the conversion factor is not a positive number with a unit"});
}

// A unit that is converted to itself.
TEST(StepUnitsTest, EndsAtCycle) {
  ReadModel const model(
      "#30=(CONVERSION_BASED_UNIT('LOOP',#31)LENGTH_UNIT()NAMED_UNIT(#10));\n"
      "#31=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(2.),#30);\n"
      "#32=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#30))REPRESENTATION_CONTEXT('',''));\n" +
      ProductText(100, "a", "", 32));
  EXPECT_TRUE(model->units.empty());
}

TEST(StepUnitsTest, ReadsSolidAngle) {
  ReadModel const model(
      "#20=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#3,#4,#21))"
      "REPRESENTATION_CONTEXT('',''));\n#21=(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT());\n" +
      ProductText(100, "a", "", 20));
  ASSERT_EQ(model->units.size(), 1U);
  EXPECT_EQ(model->units[0].solidAngleName, "steradian");
  EXPECT_EQ(model->units[0].steradians, 1.0);
}
