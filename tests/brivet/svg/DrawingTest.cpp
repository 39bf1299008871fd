#include "Drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "ProductModel.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

ModelPolyline Line(std::vector<double> coordinates, int colour = -1) {
  ModelPolyline line;
  line.coordinates = std::move(coordinates);
  line.colour = colour;
  return line;
}

// One root with these polylines, in millimetres.
ProductModel Model(std::vector<ModelPolyline> polylines) {
  ProductModel model;
  ModelUnits units;
  units.lengthName = "millimetre";
  units.metres = 0.001;
  model.units = {units};
  model.extentUnits = 0;
  ModelProduct product;
  product.units = 0;
  product.polylines = std::move(polylines);
  model.products = {product};
  model.roots = {0};
  return model;
}

void AddChild(ProductModel& model, int parent, int child, Placement const& placement) {
  ModelOccurrence occurrence;
  occurrence.parent = parent;
  occurrence.child = child;
  occurrence.placement = placement;
  model.products[static_cast<std::size_t>(parent)].occurrences.push_back(static_cast<int>(model.occurrences.size()));
  model.occurrences.push_back(occurrence);
}

// The twelve edges of a box from the origin.
std::vector<ModelPolyline> Box(double x, double y, double z) {
  std::vector<ModelPolyline> edges;
  for (double const a : {0.0, 1.0}) {
    for (double const b : {0.0, 1.0}) {
      edges.push_back(Line({0.0, a * y, b * z, x, a * y, b * z}));
      edges.push_back(Line({a * x, 0.0, b * z, a * x, y, b * z}));
      edges.push_back(Line({a * x, b * y, 0.0, a * x, b * y, z}));
    }
  }
  return edges;
}

std::string Draw(ProductModel const& model, DrawingOptions::View view = DrawingOptions::Front,
                 std::size_t limit = 1U << 20U) {
  DrawingOptions options;
  options.view = view;
  options.limit = limit;
  std::string svg;
  EXPECT_TRUE(WriteDrawing(model, options, "part", svg));
  return svg;
}

// The path data, one line for each path.
std::string Paths(std::string const& svg) {
  std::string paths;
  for (std::size_t at = svg.find(" d=\""); at != svg.npos; at = svg.find(" d=\"", at + 1)) {
    paths += svg.substr(at + 4, svg.find('"', at + 4) - at - 4) + "\n";
  }
  return paths;
}

}  // namespace

TEST(DrawingTest, WritesDocument) {
  EXPECT_EQ(Draw(Model({Line({0, 0, 0, 100, 0, 0, 100, 0, 50})})),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"-4 -4 108 58\" role=\"img\" fill=\"none\" "
            "stroke=\"currentColor\" stroke-width=\"1.2\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n"
            "<title>part</title>\n<desc>Front view; unit: millimetre</desc>\n"
            "<path vector-effect=\"non-scaling-stroke\" d=\"M0 50L100 50 100 0\"/>\n</svg>\n");
}

TEST(DrawingTest, ProjectsViews) {
  // A step from the origin along x by 10, y by 20, z by 40.
  ProductModel const model = Model({Line({0, 0, 0, 10, 0, 0, 10, 20, 0, 10, 20, 40})});
  EXPECT_EQ(Paths(Draw(model, DrawingOptions::Front)), "M0 40L10 40 10 0\n");
  EXPECT_EQ(Paths(Draw(model, DrawingOptions::Top)), "M0 20L10 20 10 0\n");
  EXPECT_EQ(Paths(Draw(model, DrawingOptions::Right)), "M0 40L20 40 20 0\n");
  // To the right (x + y) / sqrt 2, up (2 z + y - x) / sqrt 6: from (0, 0) to (7.071, -4.082), (21.213, 4.082) and
  // (21.213, 36.742); the highest is at 0.
  EXPECT_EQ(Paths(Draw(model, DrawingOptions::Isometric)), "M0 36.742L7.071 40.825 21.213 32.66 21.213 0\n");
}

TEST(DrawingTest, DrawsCoincidentLinesOnce) {
  EXPECT_EQ(Paths(Draw(Model(Box(10, 20, 40)))), "M0 40L10 40M0 40L0 0 10 0M10 40L10 0\n");
  // All twelve edges differ, and each takes two blanks.
  std::string const all = Paths(Draw(Model(Box(10, 20, 40)), DrawingOptions::Isometric));
  EXPECT_EQ(std::count(all.begin(), all.end(), ' '), 2 * 12) << all;
}

TEST(DrawingTest, DrawsOverlapOnce) {
  EXPECT_EQ(Paths(Draw(Model({Line({0, 0, 0, 60, 0, 0}), Line({40, 5, 0, 100, 5, 0})}))), "M0 0L60 0 100 0\n");
  EXPECT_EQ(Paths(Draw(Model({Line({0, 0, 0, 100, 0, 0}), Line({80, 5, 0, 20, 5, 0})}))), "M0 0L100 0\n");
  // The rest on both sides.
  EXPECT_EQ(Paths(Draw(Model({Line({40, 0, 0, 60, 0, 0}), Line({100, 0, 0, 0, 0, 0})}))),
            "M40 0L60 0M0 0L40 0M60 0L100 0\n");
  // A deviation of 0.001 of 100 is within the tolerance, one of 0.1 is not.
  EXPECT_EQ(Paths(Draw(Model({Line({0, 0, 0, 100, 0, 0}), Line({0, 0, 0.001, 100, 0, 0.001})}))),
            "M0 0.001L100 0.001\n");
  EXPECT_EQ(Paths(Draw(Model({Line({0, 0, 0, 100, 0, 0}), Line({0, 0, 0.1, 100, 0, 0.1})}))),
            "M0 0.1L100 0.1M0 0L100 0\n");
}

TEST(DrawingTest, KeepsFirstColourOfCoincidentLines) {
  ProductModel model = Model({Line({0, 0, 0, 100, 0, 0}, 1), Line({0, 9, 0, 100, 9, 0}, 0),
                              Line({0, 0, 0, 0, 0, 50}, 0), Line({0, 0, 50, 9, 0, 50}, 7)});
  ModelColourUse red;
  red.colour.red = 1.0;
  ModelColourUse blue;
  blue.colour.blue = 0.5;
  model.colours = {red, blue};
  std::string const svg = Draw(model);
  EXPECT_THAT(svg, HasSubstr("<path stroke=\"#000080\" vector-effect=\"non-scaling-stroke\" d=\"M0 50L100 50\"/>\n"
                             "<path stroke=\"#ff0000\" vector-effect=\"non-scaling-stroke\" d=\"M0 50L0 0\"/>\n"
                             "<path vector-effect=\"non-scaling-stroke\" d=\"M0 0L9 0\"/>\n"));
}

TEST(DrawingTest, ArrangesAllViews) {
  std::string const svg = Draw(Model(Box(10, 20, 40)), DrawingOptions::All);
  // The isometric view is 30 / sqrt 2 = 21.213 wide and (30 + 80) / sqrt 6 = 44.907 high, the largest size; the gap is
  // 4.491 and the upper row 44.907 high. Top view: 20 high.
  EXPECT_THAT(svg, HasSubstr("<g aria-label=\"isometric\" transform=\"translate(14.491 0)\">"));
  EXPECT_THAT(svg,
              HasSubstr("<g aria-label=\"front\" transform=\"translate(0 49.398)\">\n"
                        "<path vector-effect=\"non-scaling-stroke\" d=\"M0 40L10 40M0 40L0 0 10 0M10 40L10 0\"/>"));
  EXPECT_THAT(svg, HasSubstr("<g aria-label=\"top\" transform=\"translate(0 24.907)\">"));
  EXPECT_THAT(svg, HasSubstr("<g aria-label=\"right\" transform=\"translate(14.491 49.398)\">"));
  // 14.491 + 21.213 and 49.398 + 40, with a margin of 3.576 on each side.
  EXPECT_THAT(svg, HasSubstr(" viewBox=\"-3.576 -3.576 42.856 96.55\" "));
  EXPECT_THAT(svg, HasSubstr("<desc>Isometric, front, top and right views; unit: millimetre</desc>"));
}

TEST(DrawingTest, PlacesChildren) {
  ProductModel model = Model({});
  ModelProduct child;
  child.units = 0;
  child.polylines = {Line({0, 0, 0, 10, 0, 0})};
  model.products.push_back(child);
  AddChild(model, 0, 1, Placement());
  AddChild(model, 0, 1, Placement::Translation(90, 0, 50));
  // A child in inches, turned to the z axis.
  AddChild(model, 0, 1, Placement({0, 0, 0, 50, 0, 2.54, 0, 0, 2.54, 0, 0, 0}));
  EXPECT_EQ(Paths(Draw(model)), "M0 50L10 50M90 0L100 0M50 50L50 24.6\n");
}

TEST(DrawingTest, ConvertsUnitsOfRoots) {
  ProductModel model = Model({Line({0, 0, 0, 100, 0, 0})});
  ModelUnits metre;
  metre.metres = 1.0;
  model.units.push_back(metre);
  ModelProduct second;
  second.units = 1;
  second.polylines = {Line({0, 0, 0, 0, 0, 0.05})};
  model.products.push_back(second);
  model.roots.push_back(1);
  EXPECT_EQ(Paths(Draw(model)), "M0 50L100 50M0 50L0 0\n");
}

TEST(DrawingTest, DrawsSharpEdgesOfMeshes) {
  ProductModel model = Model({});
  ModelMesh mesh;
  mesh.points = {0, 0, 0, 100, 0, 0, 100, 0, 50, 0, 0, 50};
  mesh.triangles = {0, 1, 2, 0, 2, 3};
  model.products[0].meshes = {mesh};
  std::string const square = Paths(Draw(model));
  EXPECT_EQ(square, "M0 50L100 50M0 50L0 0M100 50L100 0 0 0\n");
  // Edges take precedence.
  model.products[0].polylines = {Line({0, 0, 0, 100, 0, 0})};
  EXPECT_EQ(Paths(Draw(model)), "M0 0L100 0\n");
}

TEST(DrawingTest, RefusesModelsWithoutEdges) {
  std::string svg = "before";
  double const nan = std::numeric_limits<double>::quiet_NaN();
  double const infinity = std::numeric_limits<double>::infinity();
  ProductModel wrongRoot = Model({Line({0, 0, 0, 1, 1, 1})});
  wrongRoot.roots = {-1, 5};
  for (ProductModel const& model :
       {ProductModel(), Model({}), Model({Line({1, 2, 3})}), Model({Line({1, 2, 3, 1, 2, 3})}), Model({Line({1, 2})}),
        Model({Line({0, 0, 0, nan, 0, 0})}), Model({Line({0, 0, 0, infinity, 0, 0})}), wrongRoot}) {
    EXPECT_FALSE(WriteDrawing(model, DrawingOptions(), "part", svg));
  }
  EXPECT_EQ(svg, "before");
  // An edge along the line of sight is a point.
  DrawingOptions front;
  front.view = DrawingOptions::Front;
  EXPECT_FALSE(WriteDrawing(Model({Line({0, 0, 0, 0, 9, 0})}), front, "part", svg));
}

TEST(DrawingTest, SkipsInvalidPoints) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Paths(Draw(Model({Line({0, 0, 0, 40, 0, 0, nan, 0, 0, 60, 0, 0, 100, 0, 0, 1e300, 0, 0})}))),
            "M0 0L40 0M60 0L100 0\n");
}

TEST(DrawingTest, SkipsInvalidPlacementsAndChildren) {
  ProductModel model = Model({Line({0, 0, 0, 100, 0, 0})});
  ModelProduct child;
  child.polylines = {Line({0, 0, 0, 0, 0, 9})};
  model.products.push_back(child);
  AddChild(model, 0, 1, Placement::Translation(std::numeric_limits<double>::quiet_NaN(), 0, 0));
  AddChild(model, 0, 9, Placement());
  model.products[0].occurrences.push_back(77);
  EXPECT_EQ(Paths(Draw(model)), "M0 0L100 0\n");
}

TEST(DrawingTest, KeepsProportionsOfExtremeSizes) {
  // Size 1e-9: steps of 1e-13; size 1e9: steps of 1e5 would exceed the tolerance, so 1e4.
  std::string const tiny = Draw(Model({Line({0, 0, 0, 1e-9, 0, 0, 1e-9, 0, 5e-10})}));
  EXPECT_EQ(Paths(tiny), "M0 50000e-14L100000e-14 50000e-14 100000e-14 0\n");
  EXPECT_THAT(tiny, HasSubstr(" viewBox=\"-4000e-14 -4000e-14 108000e-14 58000e-14\" "));
  std::string const huge = Draw(Model({Line({0, 0, 0, 1e9, 0, 0, 1e9, 0, 5e8})}));
  EXPECT_EQ(Paths(huge), "M0 50000e4L100000e4 50000e4 100000e4 0\n");
  // Far from the origin.
  EXPECT_EQ(Paths(Draw(Model({Line({1e9, 0, -1e9, 1e9 + 100, 0, 50 - 1e9})}))), "M0 50L100 0\n");
}

TEST(DrawingTest, GivesFlatDrawingsMargin) {
  EXPECT_THAT(Draw(Model({Line({0, 0, 0, 100, 0, 0})})), HasSubstr(" viewBox=\"-4 -4 108 8\" "));
  EXPECT_THAT(Draw(Model({Line({0, 0, 0, 0, 0, 100})})), HasSubstr(" viewBox=\"-4 -4 8 108\" "));
}

TEST(DrawingTest, LeavesOutShortestEdgesBeyondLimit) {
  std::vector<ModelPolyline> lines;
  for (int i = 1; i <= 2000; ++i) lines.push_back(Line({0, 0, i * 1.0, i * 1.0, 0, i * 1.0}));
  std::string const svg = Draw(Model(lines), DrawingOptions::Front, 10000);
  EXPECT_LT(svg.size(), 11000U);
  EXPECT_THAT(Paths(svg), StartsWith("M0 0L2000 0M0 1L1999 1M0 2L1998 2"));
  EXPECT_THAT(svg, testing::ContainsRegex("; 1[0-9]{3} of 2000 edges are left out because of the limit of the "
                                          "drawing's size</desc>"));
}

// One node more than the limit.
TEST(DrawingTest, SaysThatNodesAreLeftOut) {
  ProductModel model = Model({});
  model.products.resize(2);
  model.products[1].polylines = {Line({0, 0, 0, 0, 0, 10})};
  for (int i = 0; i < 250'000; ++i) AddChild(model, 0, 1, Placement());
  EXPECT_THAT(Draw(model, DrawingOptions::Front, 16 << 20), Not(HasSubstr("left out")));
  AddChild(model, 0, 1, Placement());
  EXPECT_THAT(Draw(model, DrawingOptions::Front, 16 << 20),
              HasSubstr("; 1 of 250001 edges are left out because of the limit of 250000 nodes of the "
                        "structure</desc>"));
}

TEST(DrawingTest, SaysThatPlacementsAreNotFinite) {
  ProductModel model = Model({Line({0, 0, 0, 0, 0, 10})});
  model.products.resize(2);
  model.products[1].polylines = {Line({0, 0, 0, 0, 0, 10})};
  AddChild(model, 0, 1, Placement::Translation(std::numeric_limits<double>::infinity(), 0, 0));
  EXPECT_THAT(Draw(model), HasSubstr("; 1 of 2 edges are left out because their placement is not finite</desc>"));
}

// A short file can describe an exponential number of nodes.
TEST(DrawingTest, BoundsNumberOfNodes) {
  ProductModel model = Model({});
  for (int level = 0; level < 60; ++level) {
    model.products.emplace_back();
    for (double const x : {0.0, 1.0}) AddChild(model, level, level + 1, Placement::Translation(x, 0, 0));
  }
  model.products.back().polylines = {Line({0, 0, 0, 0, 0, 10})};
  EXPECT_THAT(Draw(model), Not(HasSubstr("nan")));
  EXPECT_THAT(Draw(model, DrawingOptions::Front, 16 << 20),
              HasSubstr("; 1e+18 of 1e+18 edges are left out because of the limit of 250000 nodes of the "
                        "structure</desc>"));
  // Without edges they take no time.
  model.products.back().polylines.clear();
  std::string svg;
  EXPECT_FALSE(WriteDrawing(model, DrawingOptions(), "part", svg));
}

TEST(DrawingTest, EscapesStrings) {
  ProductModel model = Model({Line({0, 0, 0, 100, 0, 0})});
  model.units[0].lengthName = "</desc><script>&\"";
  std::string svg;
  ASSERT_TRUE(WriteDrawing(model, DrawingOptions(), "</title><script>alert(1)</script>\xFF\x1B\xE2\x80\xAE", svg));
  EXPECT_THAT(svg, HasSubstr("<title>&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;\xEF\xBF\xBD&lt;U+001B&gt;"
                             "&lt;U+202E&gt;</title>"));
  EXPECT_THAT(svg, HasSubstr("unit: &lt;/desc&gt;&lt;script&gt;&amp;&quot;</desc>"));
  ASSERT_TRUE(WriteDrawing(model, DrawingOptions(), std::string(1U << 20U, 'x'), svg = ""));
  EXPECT_LT(svg.size(), 2000U);
}
