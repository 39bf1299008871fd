#include "SvgDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "ModelFixture.h"
#include "PageFixture.h"
#include "VRELOptions.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

// A product with an edge along x and one along z.
std::string EdgesText() {
  return kContexts + ProductText(100, "part", "#22") + PointText(23, "0.,0.,0.") + PointText(24, "100.,0.,0.") +
         PointText(25, "0.,0.,50.") +
         "#22=GEOMETRIC_CURVE_SET('',(#26,#27));\n#26=POLYLINE('',(#23,#24));\n"
         "#27=POLYLINE('',(#23,#25));\n";
}

std::string SvgOf(std::string const& data, std::string const& view, VRINResult expected = VREL_S_OK) {
  ReadDocument document(DocumentText(data));
  Progress progress;
  VRELOptions options;
  if (!view.empty()) options.AddOption(VRELString("Svg.*.Writer.View"), VRELString(view));
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  request.options = &options;
  return TextOf([&](VRELOutputStream* target) {
    request.stream = target;
    EXPECT_EQ(WriteSvg(request), expected);
  });
}

}  // namespace

TEST(SvgDocumentTest, WritesIsometricView) {
  std::string const svg = SvgOf(EdgesText(), "");
  EXPECT_THAT(svg, StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns="));
  EXPECT_THAT(svg, HasSubstr("<title>part.stp</title>"));
  EXPECT_THAT(svg, HasSubstr("<desc>Isometric view; unit: millimetre</desc>"));
}

TEST(SvgDocumentTest, AppliesViewOption) {
  EXPECT_THAT(SvgOf(EdgesText(), "front"), HasSubstr(" d=\"M0 50L100 50M0 50L0 0\"/>"));
  EXPECT_THAT(SvgOf(EdgesText(), "Top"), HasSubstr(" d=\"M0 0L100 0\"/>"));
  EXPECT_THAT(SvgOf(EdgesText(), "RIGHT"), HasSubstr(" d=\"M0 50L0 0\"/>"));
  EXPECT_THAT(SvgOf(EdgesText(), "All"), HasSubstr("<g aria-label=\"right\" "));
}

TEST(SvgDocumentTest, ReportsNothingToDraw) {
  EXPECT_EQ(SvgOf("#1=A();\n", "", VREL_E_FAIL), "");
}

TEST(SvgDocumentTest, ReportsFullStream) {
  ReadDocument document(DocumentText(EdgesText()));
  Progress progress;
  FullStream stream(100);
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  request.stream = &stream;
  EXPECT_EQ(WriteSvg(request), VREL_E_FILE_SAVE);
}
