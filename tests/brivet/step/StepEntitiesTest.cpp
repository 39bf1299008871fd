#include "StepEntities.h"

#include <gtest/gtest.h>

TEST(StepEntitiesTest, FindsEntitiesByName) {
  EXPECT_EQ(FindStepEntity("PRODUCT"), StepEntity::Product);
  EXPECT_EQ(FindStepEntity("COMPLEX_TRIANGULATED_SURFACE_SET"), StepEntity::ComplexTriangulatedSurfaceSet);
  EXPECT_EQ(FindStepEntity("product"), StepEntity::None);
  EXPECT_EQ(FindStepEntity(""), StepEntity::None);
  for (std::size_t i = 1; i < kStepEntityCount; ++i) {
    EXPECT_EQ(FindStepEntity(kStepEntities[i].name), static_cast<StepEntity>(i)) << kStepEntities[i].name;
    EXPECT_LT(static_cast<std::size_t>(kStepEntities[i].supertype), i) << kStepEntities[i].name;
  }
}

TEST(StepEntitiesTest, IsAFollowsSupertypes) {
  EXPECT_TRUE(IsA(StepEntity::AdvancedFace, StepEntity::Face));
  EXPECT_TRUE(IsA(StepEntity::NextAssemblyUsageOccurrence, StepEntity::ProductDefinitionRelationship));
  EXPECT_FALSE(IsA(StepEntity::Face, StepEntity::AdvancedFace));
  EXPECT_FALSE(IsA(StepEntity::None, StepEntity::Face));
}

// Positions in ISO 10303-21 internal mapping: inherited attributes first.
TEST(StepEntitiesTest, AttributesFollowInheritedOnes) {
  EXPECT_EQ(STEP_ATTRIBUTE(Product, "id").position, 0);
  EXPECT_EQ(STEP_ATTRIBUTE(EdgeCurve, "edge_geometry").position, 3);
  EXPECT_EQ(STEP_ATTRIBUTE(EdgeCurve, "same_sense").own, 1);
  EXPECT_EQ(STEP_ATTRIBUTE(OrientedEdge, "edge_element").position, 3);
  EXPECT_EQ(STEP_ATTRIBUTE(BSplineCurveWithKnots, "knots").position, 7);
  EXPECT_EQ(STEP_ATTRIBUTE(AssemblyComponentUsage, "reference_designator").position, 5);
  EXPECT_EQ(STEP_ATTRIBUTE(ComplexTriangulatedFace, "triangle_fans").position, 7);
  EXPECT_EQ(STEP_ATTRIBUTE(TrimmedCurve, "sense_agreement").position, 4);
}
