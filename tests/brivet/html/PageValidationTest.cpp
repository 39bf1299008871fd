#include "PageValidation.h"

#include <gtest/gtest.h>

#include <string>

#include "MeshFixture.h"
#include "VRELOptions.h"

namespace {

// The plate with a computed volume of 2, area of 8 and centroid (1, 2, 3), and the property #7 with the stored ones.
ProductModel ComputedModel(double storedVolume) {
  ProductModel model = PlateModel();
  ModelComputed computed;
  computed.volume = 2;
  computed.area = 8;
  for (int i = 0; i < 3; ++i) computed.centroid[i] = i + 1;
  double const high[3] = {10, 10, 10};
  computed.extent.Extend(computed.centroid);
  computed.extent.Extend(high);
  model.products[0].computed = computed;
  ModelProperty property;
  property.instance = "#7";
  property.product = "#3";
  property.name = "geometric validation property";
  property.kind = ModelProperty::Validation;
  property.values.resize(3);
  property.values[0].name = "volume measure";
  property.values[0].number = storedVolume;
  property.values[0].unit = "half^3";
  property.values[0].siFactor = 0.125;
  property.values[1].name = "other";
  property.values[1].number = 1;
  property.values[2].name = "centre point";
  property.values[2].point = {1, 2, 3};
  model.properties = {property};
  return model;
}

std::string Lines(PageValidation const& validation) {
  std::string lines;
  for (PageSummary::Row const& row : validation.SummaryRows()) {
    lines += std::string(row.differs ? "! " : "") + row.key + ": " + row.value + "\n";
  }
  return lines;
}

}  // namespace

TEST(PageValidationTest, ShowsAgreement) {
  ProductModel const model = ComputedModel(2);
  PageValidation const validation(&model, nullptr);
  EXPECT_EQ(Lines(validation),
            "Volume: 2 half^3 computed; 2 half^3 stored, agrees within 0.1 %\nSurface area: 8 half^2 computed\n"
            "Centroid: (1, 2, 3) half computed; (1, 2, 3) stored, agrees within 0.1 %\n"
            "Validation: 2 stored values agree with the computed shape\n");
  ASSERT_NE(validation.Find(0, 0), nullptr);
  EXPECT_EQ(validation.Find(0, 0)->quantity, ValidationCheck::Volume);
  EXPECT_EQ(validation.Find(0, 1), nullptr);
  ASSERT_NE(validation.Find(0, 2), nullptr);
  EXPECT_EQ(validation.Find(0, 2)->quantity, ValidationCheck::Centroid);
  EXPECT_EQ(validation.Find(1, 0), nullptr);
}

TEST(PageValidationTest, MarksDifference) {
  ProductModel const model = ComputedModel(2.5);
  EXPECT_EQ(Lines(PageValidation(&model, nullptr)),
            "! Volume: 2 half^3 computed; 2.5 half^3 stored, differs by 20 %, more than 0.1 %\n"
            "Surface area: 8 half^2 computed\n"
            "Centroid: (1, 2, 3) half computed; (1, 2, 3) stored, agrees within 0.1 %\n"
            "! Validation: 1 of 2 stored values differ from the computed shape; see the properties\n");
}

TEST(PageValidationTest, UsesToleranceOption) {
  ProductModel const model = ComputedModel(2.5);
  VRELOptions options;
  options.AddOption(L"Html.*.Writer.Tolerance", 0.25);
  PageValidation const validation(&model, &options);
  EXPECT_EQ(validation.Tolerance(), 0.25);
  ASSERT_NE(validation.Find(0, 0), nullptr);
  EXPECT_EQ(validation.Find(0, 0)->verdict, ValidationCheck::Agrees);
}

TEST(PageValidationTest, IsEmptyWithoutComputedShape) {
  EXPECT_EQ(Lines(PageValidation(nullptr, nullptr)), "");
  ProductModel model = ComputedModel(2);
  model.products[0].computed.reset();
  EXPECT_EQ(Lines(PageValidation(&model, nullptr)), "");
}

TEST(PageValidationTest, LeavesOutVolumeOfSurfaces) {
  ProductModel model = ComputedModel(2);
  model.products[0].computed->volume = 0;
  model.properties.clear();
  EXPECT_EQ(Lines(PageValidation(&model, nullptr)),
            "Surface area: 8 half^2 computed\nCentroid: (1, 2, 3) half computed\n");
}
