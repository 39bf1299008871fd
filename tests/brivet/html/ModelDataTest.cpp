#include "ModelData.h"

#include <gtest/gtest.h>

#include <cmath>

#include "PageData.h"
#include "PageFixture.h"
#include "ProductModel.h"

namespace {

// A cart with two wheels; the second one is moved.
ProductModel Cart() {
  ProductModel model;
  model.units.resize(1);
  model.units[0].lengthName = "millimetre";
  model.units[0].metres = 0.001;
  model.products.resize(2);
  model.products[0].definition = "#12";
  model.products[0].instance = "#10";
  model.products[0].name = "cart \"one\"";
  model.products[0].occurrences = {0, 1};
  model.products[1].definition = "#22";
  model.products[1].instance = "#20";
  model.products[1].id = "w";
  model.products[1].shapes = {"#30", "#31"};
  model.products[1].solids = 1;
  model.products[1].faces = 6;
  model.products[1].edges = 12;
  model.products[1].units = 0;
  double const low[3] = {0.0, -1.0, 0.5};
  double const high[3] = {2.0, 1.0, 0.5};
  model.products[1].extent.Extend(low);
  model.products[1].extent.Extend(high);
  model.products[1].colours = {0};
  model.colours.push_back({{1.0, 0.0, 0.0, 0.25}, 3});
  model.occurrences.resize(2);
  model.occurrences[0].instance = "#40";
  model.occurrences[0].parent = 0;
  model.occurrences[0].child = 1;
  model.occurrences[1] = model.occurrences[0];
  model.occurrences[1].instance = "#41";
  model.occurrences[1].name = "left";
  model.occurrences[1].placement = Placement::Translation(0.5, 0.0, -3.0);
  model.roots = {0};
  return model;
}

std::string DataFor(ProductModel const* model, std::string const& text = "#1=A();\n#2=(B()C());\n#3=A();\n") {
  ReadDocument document(DocumentText(text));
  return ElementsOf([&](DataElements& elements) { ModelData(elements).Write(*document, model); });
}

}  // namespace

TEST(ModelDataTest, WritesStructure) {
  ProductModel const model = Cart();
  std::string const page = DataFor(&model);
  EXPECT_EQ(DataOf(page, "products-0"),
            R"([["#12","#10",null,"cart \"one\"",null,null,0,0,0,0,0,[],0,[],-1],)"
            R"(["#22","#20","w",null,null,null,[0,-1,0.5,2,1,0.5],1,0,6,12,["#30","#31"],2,[0],0]])");
  EXPECT_EQ(DataOf(page, "occurrences-0"),
            "[[0,1,\"#40\",null,null,0]\n,[0,1,\"#41\",\"left\",null,[1,0,0,0.5,0,1,0,0,0,0,1,-3]]\n]");
  EXPECT_EQ(DataOf(page, "colours-0"), R"([["#ff0000",0.25,3]])");
  EXPECT_EQ(DataOf(page, "model"),
            R"({"instances":3,"unit":{"name":"millimetre","metres":0.001},"units":["millimetre"],"unitMetres":[0.001],)"
            R"("roots":[0],"parts":{"products":1,"occurrences":1,"layers":0,"properties":0,"colours":1,)"
            R"("annotations":0,"views":0,"types":1}})");
}

TEST(ModelDataTest, WritesTables) {
  ProductModel model;
  model.layers.push_back({"#1", "7", std::nullopt, {"#2", "#3"}});
  ModelProperty property;
  property.instance = "#4";
  property.product = "#5";
  property.name = "volume";
  property.kind = ModelProperty::Validation;
  property.values.resize(3);
  property.values[0].name = "v";
  property.values[0].number = 12.5;
  property.values[0].unit = "millimetre^3";
  property.values[1].point = {1.0, std::nan(""), 3.0};
  property.values[2].text = "<b>";
  model.properties.push_back(property);
  ModelAnnotation annotation;
  annotation.instance = "#6";
  annotation.name = "A";
  annotation.kind = ModelAnnotation::Datum;
  annotation.form = ModelAnnotation::Tessellated;
  annotation.view = "Front";
  model.annotations.push_back(annotation);
  ModelView view;
  view.instance = "#7";
  view.name = "Front";
  view.kind = ModelView::Saved;
  model.views.push_back(view);
  std::string const page = DataFor(&model);
  EXPECT_EQ(DataOf(page, "layers-0"), R"([["#1","7",null,2]])");
  EXPECT_EQ(DataOf(page, "properties-0"),
            R"([["#4","#5","volume",null,"validation",)"
            R"([["v",12.5,"millimetre^3"],[null,[1,null,3],null],[null,"<b>",null]],3]])");
  EXPECT_EQ(DataOf(page, "annotations-0"), R"([["#6","A","datum","tessellated",null,"Front"]])");
  EXPECT_EQ(DataOf(page, "views-0"), R"([["#7","Front","saved"]])");
}

TEST(ModelDataTest, OrdersTypesByNumber) {
  std::string const page = DataFor(nullptr, "#1=B();\n#2=A();\n#3=(C()D());\n#4=A();\n");
  EXPECT_EQ(DataOf(page, "types-0"), R"json([["A",2],["B",1],["(C D)",1]])json");
  EXPECT_EQ(DataOf(page, "model"), R"({"instances":4,"parts":{"types":1}})");
  EXPECT_EQ(DataOf(page, "products-0"), "(absent)");
}

// A browser parses each part as one task.
TEST(ModelDataTest, DividesLongLists) {
  ProductModel model;
  for (int i = 0; i < 20000; ++i) model.layers.push_back({"#1", std::string(100, 'x'), std::nullopt, {}});
  std::string const page = DataFor(&model);
  // A row takes 117 bytes with its comma, so that 2241 rows exceed 262144 bytes; with brackets and without one comma:
  EXPECT_EQ(DataOf(page, "layers-0").size(), 262198U);
  EXPECT_NE(DataOf(page, "layers-8"), "(absent)");
  EXPECT_EQ(DataOf(page, "layers-9"), "(absent)");
}

TEST(ModelDataTest, CutsBeyondLimits) {
  ReadDocument document(DocumentText("#1=A();\n"));
  ProductModel model = Cart();
  EXPECT_TRUE(ModelData::LeftOut(*document, &model).empty());
  EXPECT_TRUE(ModelData::LeftOut(*document, nullptr).empty());
  model.products[0].occurrences.clear();
  model.occurrences.assign(1000001, model.occurrences[0]);
  for (int i = 0; i < 1000001; ++i) model.products[0].occurrences.push_back(i);
  model.views.resize(100002);
  EXPECT_EQ(ModelData::LeftOut(*document, &model),
            (std::vector<std::string>{"The page shows the first 1000000 of 1000001 occurrences.",
                                      "The page shows the first 100000 of 100002 views."}));
}
