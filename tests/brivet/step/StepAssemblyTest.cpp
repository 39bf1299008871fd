#include "StepAssembly.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "ModelFixture.h"
#include "ModelSummary.h"

namespace {

// A placement item at a point, with the axes of the context. Uses two ids.
std::string AxesText(int id, std::string const& origin) {
  return PointText(id, origin) + "#" + std::to_string(id + 1) + "=AXIS2_PLACEMENT_3D('',#" + std::to_string(id) +
         ",$,$);\n";
}

// One point of a curve set as an item: it determines the extent. Uses two ids.
std::string ItemText(int id, std::string const& point) {
  return PointText(id, point) + "#" + std::to_string(id + 1) + "=GEOMETRIC_SET('',(#" + std::to_string(id) + "));\n";
}

std::array<double, 12> Moved(double x, double y, double z, double scale = 1.0) {
  return {scale, 0, 0, x, 0, scale, 0, y, 0, 0, scale, z};
}

void ExpectPlacement(Placement const& placement, std::array<double, 12> const& expected) {
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(placement.Numbers()[i], expected[i], 1e-12) << i;
}

}  // namespace

TEST(StepAssemblyTest, ReadsProduct) {
  ReadModel const model(
      "#100=PRODUCT('id','name','text',());\n#101=PRODUCT_DEFINITION_FORMATION_WITH_SPECIFIED_SOURCE('B','',#100,.MADE."
      ");\n"
      "#102=PRODUCT_DEFINITION('design','',#101,$);\n#103=PRODUCT('x',$,$,());\n"
      "#104=PRODUCT_DEFINITION_FORMATION($,'',#103);\n#105=PRODUCT_DEFINITION('design','',#104,$);\n");
  ASSERT_EQ(model->products.size(), 2U);
  ModelProduct const& product = model->products[0];
  EXPECT_EQ(product.instance, "#100");
  EXPECT_EQ(product.definition, "#102");
  EXPECT_EQ(product.id, "id");
  EXPECT_EQ(product.name, "name");
  EXPECT_EQ(product.description, "text");
  EXPECT_EQ(product.version, "B");
  EXPECT_TRUE(product.shapes.empty());
  EXPECT_TRUE(product.extent.isEmpty);
  EXPECT_EQ(model->products[1].name, std::nullopt);
  EXPECT_EQ(model->products[1].version, std::nullopt);
  EXPECT_EQ(model->roots, (std::vector<int>{0, 1}));
  EXPECT_TRUE(model->warnings.empty());
}

TEST(StepAssemblyTest, PlacesRepeatedChildren) {
  ReadModel const model(ProductText(100, "top", "#12,#21,#23") + ProductText(200, "part", "#12,#31") +
                        ItemText(30, "1.,2.,3.") + AxesText(20, "10.,0.,0.") + AxesText(22, "0.,20.,0.") +
                        UsageText(300, 100, 200) + UsageText(301, 100, 200) +
                        PlacementText(310, 300, 205, 105, 12, 21) + PlacementText(320, 301, 205, 105, 12, 23));
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ASSERT_EQ(model->occurrences.size(), 2U);
  EXPECT_EQ(model->roots, std::vector<int>{0});
  EXPECT_EQ(model->occurrences[0].instance, "#300");
  EXPECT_EQ(model->occurrences[0].name, "n300");
  ExpectPlacement(model->occurrences[0].placement, Moved(10, 0, 0));
  ExpectPlacement(model->occurrences[1].placement, Moved(0, 20, 0));
  ExpectBox(model->products[1].extent, {1, 2, 3, 1, 2, 3});
  ExpectBox(model->extent, {1, 2, 3, 11, 22, 3});
  EXPECT_EQ(model->extentUnits, 0);
}

// The relationship names the parent first, and the items are in that order or in the other.
TEST(StepAssemblyTest, PlacesByReversedRelationship) {
  for (bool const swapped : {false, true}) {
    ReadModel const model(ProductText(100, "top", "#12,#21") + ProductText(200, "part", "#25,#31") +
                          ItemText(30, "1.,2.,3.") + AxesText(20, "10.,0.,0.") + AxesText(24, "1.,1.,1.") +
                          UsageText(300, 100, 200) +
                          PlacementText(310, 300, 105, 205, swapped ? 25 : 21, swapped ? 21 : 25));
    ExpectPlacement(model->occurrences[0].placement, Moved(9, -1, -1));
    ExpectBox(model->extent, {10, 1, 2, 10, 1, 2});
  }
}

TEST(StepAssemblyTest, PlacesWithSwappedItems) {
  ReadModel const model(ProductText(100, "top", "#12,#21") + ProductText(200, "part", "#25,#31") +
                        ItemText(30, "1.,2.,3.") + AxesText(20, "10.,0.,0.") + AxesText(24, "1.,1.,1.") +
                        UsageText(300, 100, 200) + PlacementText(310, 300, 205, 105, 21, 25));
  ExpectPlacement(model->occurrences[0].placement, Moved(9, -1, -1));
}

// The part is in inches; 25.4 millimetres to the inch.
TEST(StepAssemblyTest, ConvertsUnitsOfChildren) {
  ReadModel const model(ProductText(100, "top", "#12,#21", 1) + ProductText(200, "part", "#12,#31", 2) +
                        ItemText(30, "1.,2.,3.") + AxesText(20, "10.,0.,0.") + UsageText(300, 100, 200) +
                        PlacementText(310, 300, 205, 105, 12, 21) + UsageText(301, 100, 200));
  ExpectPlacement(model->occurrences[0].placement, Moved(10, 0, 0, 25.4));
  // Without a placement the factor remains.
  ExpectPlacement(model->occurrences[1].placement, Moved(0, 0, 0, 25.4));
  ExpectBox(model->products[1].extent, {1, 2, 3, 1, 2, 3});
  ExpectBox(model->extent, {25.4, 50.8, 76.2, 35.4, 50.8, 76.2});
}

TEST(StepAssemblyTest, PlacesByMappedItemWithScale) {
  ReadModel const model(
      ProductText(100, "top", "#12,#42") + ProductText(200, "part", "#12,#31") + ItemText(30, "1.,2.,3.") +
      PointText(20, "10.,0.,0.") +
      "#40=CARTESIAN_TRANSFORMATION_OPERATOR_3D('',$,$,#20,2.,$);\n#41=REPRESENTATION_MAP(#12,#205);\n"
      "#42=MAPPED_ITEM('',#41,#40);\n" +
      UsageText(300, 100, 200));
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ExpectPlacement(model->occurrences[0].placement, Moved(10, 0, 0, 2));
  ExpectBox(model->extent, {12, 4, 6, 12, 4, 6});
}

TEST(StepAssemblyTest, MultipliesPlacementsOfNestedAssemblies) {
  ReadModel const model(ProductText(100, "top", "#12,#21") + ProductText(200, "middle", "#12,#23") +
                        ProductText(400, "part", "#12,#31") + ItemText(30, "1.,2.,3.") + AxesText(20, "10.,0.,0.") +
                        AxesText(22, "0.,20.,0.") + UsageText(300, 100, 200) + UsageText(301, 200, 400) +
                        PlacementText(310, 300, 205, 105, 12, 21) + PlacementText(320, 301, 405, 205, 12, 23));
  ExpectBox(model->products[1].extent, {1, 22, 3, 1, 22, 3});
  ExpectBox(model->extent, {11, 22, 3, 11, 22, 3});
  EXPECT_EQ(model->CountNodes(0), 3);
}

TEST(StepAssemblyTest, CutsCycles) {
  ReadModel const model(ProductText(100, "a", "") + ProductText(200, "b", "") + UsageText(300, 100, 200) +
                        UsageText(301, 200, 100) + UsageText(302, 200, 200));
  EXPECT_EQ(model->warnings, (std::vector<std::string>{"#301: the occurrence closes a cycle and is skipped",
                                                       "#302: the occurrence closes a cycle and is skipped"}));
  EXPECT_EQ(model->roots, std::vector<int>{0});
  EXPECT_EQ(model->CountNodes(0), 2);
}

TEST(StepAssemblyTest, WarnsAboutBadReferences) {
  ReadModel const model(ProductText(100, "a", "") +
                        "#300=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#102,#999,$);\n"
                        "#301=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#100,#102,$);\n"
                        "#302=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','','x',$,$);\n"
                        "#303=SHAPE_DEFINITION_REPRESENTATION(#103,#304);\n#304=STRANGE('',());\n");
  EXPECT_EQ(model->warnings,
            (std::vector<std::string>{
                "#303: attribute used_representation: expected REPRESENTATION, found #304 of type STRANGE",
                "#300: attribute related_product_definition: expected PRODUCT_DEFINITION, found #999, which the file "
                "does not contain",
                "#301: attribute relating_product_definition: expected PRODUCT_DEFINITION, found #100 of type PRODUCT",
                "#302: attribute relating_product_definition: expected PRODUCT_DEFINITION, found a string",
                "#302: attribute related_product_definition: expected PRODUCT_DEFINITION, found $"}));
  EXPECT_TRUE(model->occurrences.empty());
}

TEST(StepAssemblyTest, SkipsUsagesThatMakeNoNodes) {
  ReadModel const model(ProductText(100, "a", "") + ProductText(200, "b", "") +
                        "#300=PROMISSORY_USAGE_OCCURRENCE('','','',#102,#202,$);\n"
                        "#301=MAKE_FROM_USAGE_OPTION('','','',#102,#202,1,'',$);\n" +
                        UsageText(302, 100, 200) +
                        "#303=SPECIFIED_HIGHER_USAGE_OCCURRENCE('','','',#102,#202,$,#302,#302);\n");
  ASSERT_EQ(model->occurrences.size(), 1U);
  EXPECT_EQ(model->occurrences[0].instance, "#302");
}

TEST(StepAssemblyTest, DocumentsAreNoRoots) {
  ReadModel const model(ProductText(100, "a", "") + ProductText(200, "b", "") +
                        "#300=PRODUCT_RELATED_PRODUCT_CATEGORY('document',$,(#200));\n");
  EXPECT_EQ(model->products.size(), 2U);
  EXPECT_EQ(model->roots, std::vector<int>{0});
}

TEST(StepAssemblyTest, JoinsExtentsOfRootsInUnitOfFirst) {
  ReadModel const model(ProductText(100, "a", "#31", 1) + ProductText(200, "b", "#33", 2) + ItemText(30, "1.,1.,1.") +
                        ItemText(32, "1.,1.,1."));
  ExpectBox(model->extent, {1, 1, 1, 25.4, 25.4, 25.4});
}

TEST(StepAssemblyTest, FollowsShapeRelationships) {
  ReadModel const model(
      ProductText(100, "a", "#12") + ItemText(30, "4.,5.,6.") +
      "#300=SHAPE_REPRESENTATION('',(#31),#1);\n#301=SHAPE_REPRESENTATION_RELATIONSHIP('','',#300,#105);\n");
  EXPECT_EQ(model->products[0].shapes, (std::vector<std::string>{"#105", "#300"}));
  ExpectBox(model->extent, {4, 5, 6, 4, 5, 6});
}

TEST(StepAssemblyTest, AcceptsDeepStructure) {
  constexpr int kDepth = 100000;
  std::string data = "#20=PRODUCT('p','p','',());\n#21=PRODUCT_DEFINITION_FORMATION('','',#20);\n";
  for (int i = 0; i <= kDepth; ++i) {
    data += "#" + std::to_string(1000 + i) + "=PRODUCT_DEFINITION('','',#21,$);\n";
  }
  for (int i = 0; i < kDepth; ++i) {
    data += "#" + std::to_string(500000 + i) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#" + std::to_string(1000 + i) +
            ",#" + std::to_string(1001 + i) + ",$);\n";
  }
  ReadModel const model(data);
  EXPECT_EQ(model->roots, std::vector<int>{0});
  EXPECT_EQ(model->CountNodes(0), kDepth + 1);
}

// 30 levels of two uses each are a billion nodes.
TEST(StepAssemblyTest, AcceptsExponentialStructure) {
  std::string data;
  for (int i = 0; i < 30; ++i) data += ProductText(1000 + 10 * i, "p", i == 29 ? "#31" : "");
  for (int i = 0; i < 29; ++i) {
    data += UsageText(5000 + 2 * i, 1000 + 10 * i, 1010 + 10 * i);
    data += UsageText(5001 + 2 * i, 1000 + 10 * i, 1010 + 10 * i);
  }
  ReadModel const model(data + ItemText(30, "1.,2.,3."));
  EXPECT_EQ(model->CountNodes(0), ProductModel::kNodeLimit + 1);
  ExpectBox(model->extent, {1, 2, 3, 1, 2, 3});
}

// A node takes an occurrence, not a copy of the shape.
TEST(StepAssemblyTest, AcceptsMillionOccurrences) {
  constexpr std::size_t kCount = 1000000;
  std::string data = ProductText(100, "top", "#12") + ProductText(200, "bolt", "#31") + PointText(30, "1.,2.,3.") +
                     "#31=GEOMETRIC_CURVE_SET('',(#32));\n#32=POLYLINE('',(#11,#30));\n";
  for (std::size_t i = 0; i < kCount; ++i) {
    data += "#" + std::to_string(1000 + i) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#102,#202,$);\n";
  }
  ReadModel const model(data, true);
  EXPECT_EQ(model->products.size(), 2U);
  EXPECT_EQ(model->occurrences.size(), kCount);
  EXPECT_EQ(model->products[0].occurrences.size(), kCount);
  EXPECT_EQ(model->products[1].polylines.size(), 1U);
  EXPECT_TRUE(model->products[0].polylines.empty());
  EXPECT_EQ(model->CountNodes(0), static_cast<long>(kCount) + 1);
  EXPECT_LE(sizeof(ModelOccurrence), 320U);
  ExpectBox(model->extent, {0, 0, 0, 1, 2, 3});
  ModelSummary const summary = ModelSummary::Of(*model, 24, 60);
  ASSERT_EQ(summary.tree.size(), 2U);
  EXPECT_EQ(summary.tree[1],
            "  bolt \xC3\x97"
            "1000000");
}

TEST(StepAssemblyTest, FindsTwoRoots) {
  ReadModel const model(ProductText(100, "a", "") + ProductText(200, "b", "") + ProductText(300, "c", "") +
                        UsageText(400, 200, 100));
  EXPECT_EQ(model->roots, (std::vector<int>{1, 2}));
}

// The geometry of an external part is in another file: its product has no shape, and the document is no root.
TEST(StepAssemblyTest, ReadsExternalReferences) {
  ReadModel const model(
      ProductText(100, "top", "#12") + ProductText(200, "nut", "#12") + UsageText(300, 100, 200) +
      PlacementText(310, 300, 205, 105, 12, 12) +
      "#400=DOCUMENT_FILE('nut.stp','','',#401,'',$);\n#401=DOCUMENT_TYPE('geometry');\n"
      "#402=APPLIED_DOCUMENT_REFERENCE(#400,'',(#202));\n"
      "#403=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('nut.stp',#404,#405,(#400));\n"
      "#404=IDENTIFICATION_ROLE('external document id and location',$);\n#405=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
      "#406=DOCUMENT_REPRESENTATION_TYPE('digital',#400);\n#407=PROPERTY_DEFINITION('external definition','',#400);\n"
      "#408=PROPERTY_DEFINITION_REPRESENTATION(#203,#205);\n#409=PRODUCT('doc','doc','',());\n"
      "#410=PRODUCT_DEFINITION_FORMATION('','',#409);\n"
      "#411=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('','',#410,$,(#400));\n"
      "#412=PRODUCT_RELATED_PRODUCT_CATEGORY('document','',(#409));\n"
      "#413=APPLIED_DOCUMENT_USAGE_CONSTRAINT_ASSIGNMENT(#414,$,(#202));\n#414=DOCUMENT_USAGE_CONSTRAINT(#400,'','');"
      "\n");
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ASSERT_EQ(model->products.size(), 3U);
  EXPECT_EQ(model->products[1].name, "nut");
  EXPECT_TRUE(model->products[1].extent.isEmpty);
  EXPECT_EQ(model->products[2].name, "doc");
  EXPECT_EQ(model->roots, std::vector<int>{0});
  EXPECT_EQ(model->occurrences.size(), 1U);
}

TEST(StepAssemblyTest, WarnsOfDanglingReferenceOfAnyType) {
  ReadModel const model("#20=STYLED_ITEM('',(),#99);\n#21=PRESENTATION_LAYER_ASSIGNMENT('','',(#11,#98));\n");
  EXPECT_EQ(model->warnings,
            (std::vector<std::string>{"#21: attribute assigned_items: found #98, which the file does not contain"}));
  ReadModel const styled(
      "#20=STYLED_ITEM('',(#21),#99);\n#21=PRESENTATION_STYLE_ASSIGNMENT((#22));\n"
      "#22=CURVE_STYLE('',$,$,#23);\n#23=COLOUR_RGB('',1.,1.,1.);\n");
  EXPECT_EQ(styled->warnings,
            (std::vector<std::string>{"#20: attribute item: found #99, which the file does not contain"}));
}
