// Product models of STEP files for tests.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ProductModel.h"
#include "StepFixture.h"

// Two contexts: #1 in millimetres and radians, #2 in inches and degrees. Ids up to #20 are used.
constexpr char kContexts[] =
    "#1=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((#5))"
    "GLOBAL_UNIT_ASSIGNED_CONTEXT((#3,#4))REPRESENTATION_CONTEXT('',''));\n"
    "#2=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#6,#8))REPRESENTATION_CONTEXT('',''));\n"
    "#3=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
    "#4=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n"
    "#5=UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.005),#3,'distance_accuracy_value','');\n"
    "#6=(CONVERSION_BASED_UNIT('INCH',#7)LENGTH_UNIT()NAMED_UNIT(#10));\n"
    "#7=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#3);\n"
    "#8=(CONVERSION_BASED_UNIT('DEGREE',#9)NAMED_UNIT(#10)PLANE_ANGLE_UNIT());\n"
    "#9=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.0174532925199433),#4);\n"
    "#10=DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.);\n"
    "#11=CARTESIAN_POINT('',(0.,0.,0.));\n"
    "#12=AXIS2_PLACEMENT_3D('',#11,$,$);\n";

// A product with the given base id: #b PRODUCT, #b+1 formation, #b+2 definition, #b+3 shape, #b+5 representation.
inline std::string ProductText(int base, std::string const& name, std::string const& items, int context = 1) {
  auto const id = [base](int i) { return "#" + std::to_string(base + i); };
  return id(0) + "=PRODUCT('" + name + "','" + name + "','',());\n" + id(1) + "=PRODUCT_DEFINITION_FORMATION('v1',''," +
         id(0) + ");\n" + id(2) + "=PRODUCT_DEFINITION('design',''," + id(1) + ",$);\n" + id(3) +
         "=PRODUCT_DEFINITION_SHAPE('',''," + id(2) + ");\n" + id(4) + "=SHAPE_DEFINITION_REPRESENTATION(" + id(3) +
         "," + id(5) + ");\n" + id(5) + "=SHAPE_REPRESENTATION('',(" + items + "),#" + std::to_string(context) + ");\n";
}

// An occurrence of the product of base `child` in that of base `parent`, named "n" and its id.
inline std::string UsageText(int id, int parent, int child) {
  std::string const number = std::to_string(id);
  return "#" + number + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('" + number + "','n" + number + "','',#" +
         std::to_string(parent + 2) + ",#" + std::to_string(child + 2) + ",$);\n";
}

// Places an occurrence: from `childItem` of `childShape` to `parentItem` of `parentShape`. Uses four ids.
inline std::string PlacementText(int id, int usage, int childShape, int parentShape, int childItem, int parentItem) {
  auto const name = [](int number) { return "#" + std::to_string(number); };
  return name(id) + "=ITEM_DEFINED_TRANSFORMATION('',''," + name(childItem) + "," + name(parentItem) + ");\n" +
         name(id + 1) + "=(REPRESENTATION_RELATIONSHIP('',''," + name(childShape) + "," + name(parentShape) +
         ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + name(id) + ")SHAPE_REPRESENTATION_RELATIONSHIP());\n" +
         name(id + 2) + "=PRODUCT_DEFINITION_SHAPE('',''," + name(usage) + ");\n" + name(id + 3) +
         "=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + name(id + 1) + "," + name(id + 2) + ");\n";
}

inline std::string PointText(int id, std::string const& coordinates) {
  return "#" + std::to_string(id) + "=CARTESIAN_POINT('',(" + coordinates + "));\n";
}

// The model of a document with the contexts and these instances.
class ReadModel {
 public:
  explicit ReadModel(std::string const& data, bool geometry = false)
      : document(DocumentText(kContexts + data), "part.stp", false) {
    Progress progress;
    model = document->GetModel(geometry, progress);
    EXPECT_NE(model, nullptr);
  }

  ProductModel const* operator->() const { return model; }
  ProductModel const& operator*() const { return *model; }

 private:
  ReadDocument document;
  ProductModel const* model = nullptr;
};

inline void ExpectBox(ModelBox const& box, std::vector<double> const& expected) {
  ASSERT_FALSE(box.isEmpty);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(box.low[i], expected[i], 1e-9) << i;
    EXPECT_NEAR(box.high[i], expected[i + 3], 1e-9) << i;
  }
}
