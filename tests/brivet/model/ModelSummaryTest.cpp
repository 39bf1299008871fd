#include "ModelSummary.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ProductModel.h"

namespace {

// Adds a product and returns its index.
int AddProduct(ProductModel& model, std::string const& name) {
  ModelProduct product;
  product.name = name;
  model.products.push_back(product);
  return static_cast<int>(model.products.size()) - 1;
}

void AddUse(ProductModel& model, int parent, int child, std::string const& name = "") {
  ModelOccurrence occurrence;
  occurrence.parent = parent;
  occurrence.child = child;
  occurrence.name = name;
  model.products[static_cast<std::size_t>(parent)].occurrences.push_back(static_cast<int>(model.occurrences.size()));
  model.occurrences.push_back(occurrence);
}

std::vector<std::string> RowsOf(ProductModel const& model) {
  std::vector<std::string> rows;
  for (ModelSummary::Row const& row : ModelSummary::Of(model, 24, 56).rows) rows.push_back(row.key + ": " + row.value);
  return rows;
}

}  // namespace

TEST(ModelSummaryTest, EmptyModelHasEmptySummary) {
  ModelSummary const summary = ModelSummary::Of(ProductModel(), 24, 56);
  EXPECT_TRUE(summary.rows.empty());
  EXPECT_TRUE(summary.tree.empty());
}

TEST(ModelSummaryTest, CountsEqualChildren) {
  ProductModel model;
  int const top = AddProduct(model, "top");
  int const nut = AddProduct(model, "nut");
  int const pair = AddProduct(model, "pair");
  model.roots = {top};
  AddUse(model, top, nut, "n1");
  AddUse(model, top, pair, "p1");
  AddUse(model, top, nut, "n2");
  AddUse(model, pair, nut, "only");
  EXPECT_EQ(ModelSummary::Of(model, 24, 56).tree, (std::vector<std::string>{"top",
                                                                            "  nut \xC3\x97"
                                                                            "2",
                                                                            "  p1", "    only"}));
  // One row and three lines are left: the level of pair is cut.
  EXPECT_EQ(ModelSummary::Of(model, 4, 56).tree, (std::vector<std::string>{"top",
                                                                           "  nut \xC3\x97"
                                                                           "2",
                                                                           "  p1 (1 part)"}));
}

TEST(ModelSummaryTest, CutsManyChildrenAndRoots) {
  ProductModel model;
  int const top = AddProduct(model, "top");
  model.roots = {top};
  for (int i = 0; i < 1000; ++i) AddUse(model, top, AddProduct(model, "part"));
  EXPECT_EQ(ModelSummary::Of(model, 24, 56).tree, std::vector<std::string>{"top (1000 parts)"});
  for (int i = 1; i < 100; ++i) model.roots.push_back(i);
  std::vector<std::string> const tree = ModelSummary::Of(model, 5, 56).tree;
  EXPECT_EQ(tree, (std::vector<std::string>{"top (1000 parts)", "part", "part", "and 97 more"}));
}

TEST(ModelSummaryTest, DescribesContents) {
  ProductModel model;
  AddProduct(model, "a");
  model.products[0].solids = 2;
  model.products[0].faces = 7;
  ModelUnits units;
  units.lengthName = "inch";
  units.angleName = "degree";
  model.units = {units};
  double const low[3] = {0, 0, 0};
  double const high[3] = {1.5, 2, 3};
  model.extent.Extend(low);
  model.extent.Extend(high);
  model.extentUnits = 0;
  model.colours = {{{1, 0, 0, 0}, 3}, {{0, 1, 0, 0}, 0}};
  ModelLayer layer;
  layer.name = "l\n";
  layer.items = {"#1"};
  model.layers = {layer};
  ModelProperty property;
  property.kind = ModelProperty::Validation;
  ModelPropertyValue value;
  value.name = "volume";
  value.number = 12.5;
  value.unit = "inch^3";
  property.values = {value};
  model.properties = {property};
  ModelAnnotation note;
  note.kind = ModelAnnotation::Note;
  model.annotations = {note, note};
  ModelView view;
  view.name = "front";
  model.views = {view};
  EXPECT_EQ(RowsOf(model), (std::vector<std::string>{"unit: inch and degree", "extent: 1.5 x 2 x 3 inch",
                                                     "contents: 1 product, 2 solids, 7 faces", "colours: #ff0000",
                                                     "layers: 'l<U+000A>' (1 item)", "validation: volume 12.5 inch^3",
                                                     "annotations: 2 notes", "views: 'front'"}));
}

TEST(ModelSummaryTest, CountsPropertiesWithoutNames) {
  ProductModel model;
  model.properties.resize(3);
  model.properties[0].name = "finish";
  model.properties[1].name = " ";
  EXPECT_EQ(RowsOf(model), std::vector<std::string>{"properties: finish, 2 without a name"});
}
