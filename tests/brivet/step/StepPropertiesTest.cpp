#include "StepProperties.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

// A property of the product of base 100 with the items of its representation. Uses three ids.
std::string PropertyText(int id, std::string const& name, std::string const& items) {
  std::string const base = std::to_string(id);
  return "#" + base + "=PROPERTY_DEFINITION('" + name + "','',#102);\n#" + std::to_string(id + 1) +
         "=REPRESENTATION('',(" + items + "),#1);\n#" + std::to_string(id + 2) +
         "=PROPERTY_DEFINITION_REPRESENTATION(#" + base + ",#" + std::to_string(id + 1) + ");\n";
}

}  // namespace

TEST(StepPropertiesTest, ReadsLayers) {
  ReadModel const model(
      "#20=PRESENTATION_LAYER_ASSIGNMENT('outline','lines',(#11,#12));\n#21=PRESENTATION_LAYER_ASSIGNMENT('',$,());\n");
  ASSERT_EQ(model->layers.size(), 2U);
  EXPECT_EQ(model->layers[0].instance, "#20");
  EXPECT_EQ(model->layers[0].name, "outline");
  EXPECT_EQ(model->layers[0].description, "lines");
  EXPECT_EQ(model->layers[0].items, (std::vector<std::string>{"#11", "#12"}));
  EXPECT_EQ(model->layers[1].name, "");
  EXPECT_EQ(model->layers[1].description, std::nullopt);
}

TEST(StepPropertiesTest, ReadsValidationProperties) {
  ReadModel const model(ProductText(100, "a", "") +
                        "#20=DERIVED_UNIT((#21));\n#21=DERIVED_UNIT_ELEMENT(#3,3.);\n"
                        "#22=MEASURE_REPRESENTATION_ITEM('volume measure',VOLUME_MEASURE(12.5),#20);\n" +
                        PointText(23, "1.,2.,3.") + PropertyText(30, "geometric validation property", "#22,#23"));
  ASSERT_EQ(model->properties.size(), 1U);
  ModelProperty const& property = model->properties[0];
  EXPECT_EQ(property.instance, "#30");
  EXPECT_EQ(property.product, "#102");
  EXPECT_EQ(property.kind, ModelProperty::Validation);
  ASSERT_EQ(property.values.size(), 2U);
  EXPECT_EQ(property.values[0].name, "volume measure");
  EXPECT_EQ(property.values[0].number, 12.5);
  EXPECT_EQ(property.values[0].unit, "millimetre^3");
  EXPECT_EQ(property.values[1].point, (std::vector<double>{1, 2, 3}));
}

TEST(StepPropertiesTest, DeterminesKinds) {
  ReadModel const model(ProductText(100, "a", "") + PropertyText(30, "geometric_validation_property", "") +
                        PropertyText(40, "Density", "") + PropertyText(50, "material property", "") +
                        PropertyText(60, "user defined attribute", "") + PropertyText(70, "x", ""));
  std::vector<ModelProperty::Kind> kinds;
  for (ModelProperty const& each : model->properties) kinds.push_back(each.kind);
  EXPECT_EQ(kinds, (std::vector<ModelProperty::Kind>{ModelProperty::Validation, ModelProperty::Material,
                                                     ModelProperty::Material, ModelProperty::Attribute,
                                                     ModelProperty::Other}));
  EXPECT_TRUE(model->properties[4].values.empty());
}

TEST(StepPropertiesTest, ReadsUserDefinedAttributes) {
  ReadModel const model(ProductText(100, "a", "") +
                        "#20=DESCRIPTIVE_REPRESENTATION_ITEM('colour','red');\n"
                        "#21=(INTEGER_REPRESENTATION_ITEM(3)REPRESENTATION_ITEM('count'));\n"
                        "#22=VALUE_REPRESENTATION_ITEM('ratio',COUNT_MEASURE(4.));\n" +
                        PropertyText(30, "user defined attribute", "#20,#22"));
  ASSERT_EQ(model->properties.size(), 1U);
  ASSERT_EQ(model->properties[0].values.size(), 2U);
  EXPECT_EQ(model->properties[0].values[0].text, "red");
  EXPECT_EQ(model->properties[0].values[1].number, 4.0);
  EXPECT_EQ(model->properties[0].values[1].unit, std::nullopt);
}
