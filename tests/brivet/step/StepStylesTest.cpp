#include "StepStyles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

// A style with a surface colour: #b the assignment, up to #b+5 the colour.
std::string StyleText(int base, std::string const& colour) {
  auto const id = [base](int i) { return "#" + std::to_string(base + i); };
  return id(0) + "=PRESENTATION_STYLE_ASSIGNMENT((" + id(1) + "));\n" + id(1) + "=SURFACE_STYLE_USAGE(.BOTH.," + id(2) +
         ");\n" + id(2) + "=SURFACE_SIDE_STYLE('',(" + id(3) + "));\n" + id(3) + "=SURFACE_STYLE_FILL_AREA(" + id(4) +
         ");\n" + id(4) + "=FILL_AREA_STYLE('',(" + id(5) + "));\n" + id(5) + "=FILL_AREA_STYLE_COLOUR('',#" +
         std::to_string(base + 6) + ");\n#" + std::to_string(base + 6) + "=" + colour + ";\n";
}

constexpr char kItem[] =
    "#30=POLYLINE('',(#11,#31));\n#31=CARTESIAN_POINT('',(1.,0.,0.));\n#32=GEOMETRIC_SET('',(#30));\n";

}  // namespace

TEST(StepStylesTest, ReadsColours) {
  ReadModel const model(
      kItem + StyleText(40, "COLOUR_RGB('',1.,0.5,0.)") + StyleText(50, "DRAUGHTING_PRE_DEFINED_COLOUR('cyan')") +
      "#60=STYLED_ITEM('',(#40),#32);\n#61=STYLED_ITEM('',(#50),#30);\n" + ProductText(100, "a", "#32"));
  ASSERT_EQ(model->colours.size(), 2U);
  EXPECT_EQ(model->colours[0].colour.Hexadecimal(), "#ff8000");
  EXPECT_EQ(model->colours[0].items, 1);
  EXPECT_EQ(model->colours[1].colour.Hexadecimal(), "#00ffff");
  EXPECT_EQ(model->products[0].colours, (std::vector<int>{0, 1}));
}

TEST(StepStylesTest, OverridingStyleReplacesThatOfSameItem) {
  std::string const styles = kItem + StyleText(40, "COLOUR_RGB('',1.,0.,0.)") +
                             StyleText(50, "COLOUR_RGB('',0.,1.,0.)") + "#60=STYLED_ITEM('',(#40),#32);\n";
  ReadModel const same(styles + "#61=OVER_RIDING_STYLED_ITEM('',(#50),#32,#60);\n" + ProductText(100, "a", "#32"));
  ASSERT_EQ(same->products[0].colours.size(), 1U);
  EXPECT_EQ(same->colours[static_cast<std::size_t>(same->products[0].colours[0])].colour.Hexadecimal(), "#00ff00");
  ReadModel const other(styles + "#61=OVER_RIDING_STYLED_ITEM('',(#50),#30,#60);\n" + ProductText(100, "a", "#32"));
  EXPECT_EQ(other->products[0].colours.size(), 2U);
}

TEST(StepStylesTest, ReadsTransparency) {
  ReadModel const model(std::string(kItem) +
                        "#40=PRESENTATION_STYLE_ASSIGNMENT((#41));\n#41=SURFACE_STYLE_USAGE(.BOTH.,#42);\n"
                        "#42=SURFACE_SIDE_STYLE('',(#43));\n"
                        "#43=SURFACE_STYLE_RENDERING_WITH_PROPERTIES(.NORMAL_SHADING.,#45,(#44));\n"
                        "#44=SURFACE_STYLE_TRANSPARENT(0.25);\n#45=COLOUR_RGB('',0.,0.,1.);\n"
                        "#60=STYLED_ITEM('',(#40),#32);\n" +
                        ProductText(100, "a", "#32"));
  ASSERT_EQ(model->colours.size(), 1U);
  EXPECT_EQ(model->colours[0].colour.transparency, 0.25);
  EXPECT_EQ(model->colours[0].colour.Hexadecimal(), "#0000ff");
}

TEST(StepStylesTest, WarnsAboutBadColours) {
  ReadModel const model(
      kItem + StyleText(40, "COLOUR_RGB('',$,0.,0.)") + StyleText(50, "DRAUGHTING_PRE_DEFINED_COLOUR('pink')") +
      "#60=STYLED_ITEM('',(#40),#32);\n#61=STYLED_ITEM('',(#50),#30);\n" + ProductText(100, "a", "#32"));
  EXPECT_TRUE(model->colours.empty());
  EXPECT_EQ(model->warnings, (std::vector<std::string>{"#46: a component of the colour is not a number",
                                                       "#56: unknown predefined colour 'pink'"}));
}

TEST(StepStylesTest, InvisibleItemsHaveNoPolylines) {
  std::string const data = kItem + ProductText(100, "a", "#32");
  EXPECT_EQ(ReadModel(data, true)->products[0].polylines.size(), 1U);
  EXPECT_EQ(ReadModel(data + "#60=INVISIBILITY((#32));\n", true)->products[0].polylines.size(), 0U);
  EXPECT_EQ(
      ReadModel(data + "#60=INVISIBILITY((#61));\n#61=STYLED_ITEM('',(),#30);\n", true)->products[0].polylines.size(),
      0U);
}
