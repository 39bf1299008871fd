#include "PageSummary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PageFixture.h"
#include "ProductModel.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(PageSummaryTest, ShowsFactsOfHeader) {
  ReadDocument document(
      "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'2;1');FILE_NAME('a<b','2024-01-02','','','','Sys & Co','');"
      "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 }'));ENDSEC;DATA;#1=A();ENDSEC;END-ISO-10303-21;");
  EXPECT_EQ(PageSummary::Summary(*document, nullptr, {}),
            "<dl class=\"facts\">\n"
            "<div><dt>File</dt><dd>a&lt;b</dd></div>\n"
            "<div><dt>Application protocol</dt><dd>AP214</dd></div>\n"
            "<div><dt>Originating system</dt><dd>Sys &amp; Co</dd></div>\n"
            "<div><dt>Date</dt><dd>2024-01-02</dd></div>\n"
            "<div><dt>Instances</dt><dd>1</dd></div>\n"
            "</dl>\n");
}

TEST(PageSummaryTest, ShowsUnknownSchema) {
  ReadDocument document(PageDocument());
  EXPECT_THAT(PageSummary::Summary(*document, nullptr, {}), HasSubstr("<dt>Application protocol</dt><dd>S</dd>"));
}

TEST(PageSummaryTest, ShowsFactsOfModel) {
  ReadDocument document(DocumentText("#1=A();\n"));
  ProductModel model;
  model.units.resize(2);
  model.units[0].lengthName = "millimetre";
  model.units[1].lengthName = "INCH";
  model.extentUnits = 1;
  double const low[3] = {0.0, 0.0, 0.0};
  double const high[3] = {1.0, 2.5, 1e-9};
  model.extent.Extend(low);
  model.extent.Extend(high);
  model.products.resize(2);
  model.products[0].solids = 2;
  model.products[1].faces = 7;
  model.occurrences.resize(3);
  EXPECT_THAT(PageSummary::Summary(*document, &model, {}),
              HasSubstr("<div><dt>Unit</dt><dd>millimetre, INCH</dd></div>\n"
                        "<div><dt>Extent</dt><dd>1 &#215; 2.5 &#215; 1e-09 INCH</dd></div>\n"
                        "<div><dt>Products</dt><dd>2</dd></div>\n"
                        "<div><dt>Occurrences</dt><dd>3</dd></div>\n"
                        "<div><dt>Solids</dt><dd>2</dd></div>\n"
                        "<div><dt>Faces</dt><dd>7</dd></div>\n"));
}

TEST(PageSummaryTest, BannerListsLosses) {
  ReadDocument document(DocumentText("#1=A(;\n#2=B('x);\n\n#3=C();\n"));
  EXPECT_THAT(
      PageSummary::Summary(*document, nullptr, {"Too many <views>."}),
      StartsWith("<div class=\"banner\" role=\"note\">\n<p><strong>Incomplete.</strong> Parts of the document could "
                 "not be read and are not part of this page.</p>\n<ul>\n"
                 "<li>line 7: #1 expected parameter, found ';'</li>\n"
                 "<li>lines 8 to 9: #2 expected &quot;'&quot; at the end of the string, found another "
                 "instance</li>\n</ul>\n<p>Too many &lt;views&gt;.</p>\n</div>\n"));
}

TEST(PageSummaryTest, BannerCutsManyLosses) {
  std::string text;
  for (int i = 1; i <= 150; ++i) text += "#" + std::to_string(i) + "=A(;\n";
  ReadDocument document(DocumentText(text + "#999=B();\n"));
  std::string const summary = PageSummary::Summary(*document, nullptr, {});
  EXPECT_THAT(summary, HasSubstr("#100 expected"));
  EXPECT_THAT(summary, Not(HasSubstr("#101 expected")));
  EXPECT_THAT(summary, HasSubstr("<li>150 losses in all</li>"));
}

TEST(PageSummaryTest, WritesHeaderRows) {
  ReadDocument document(PageDocument());
  EXPECT_THAT(PageSummary::Header(*document),
              StartsWith("<table class=\"pairs\">\n<tr><th scope=\"rowgroup\" colspan=\"2\">FILE_NAME</th></tr>\n"
                         "<tr><th scope=\"row\">File Name</th><td>a&lt;b</td></tr>\n"
                         "<tr><th scope=\"row\">time_stamp</th><td>(empty)</td></tr>\n"));
}

TEST(PageSummaryTest, ShownStringsAreSafe) {
  EXPECT_EQ(PageSummary::DisplayText("<script>'\"&"), "&lt;script&gt;'&quot;&amp;");
  EXPECT_EQ(PageSummary::DisplayText(std::string_view("\0\n\x7F", 3)), "&lt;U+0000&gt;&lt;U+000A&gt;&lt;U+007F&gt;");
  EXPECT_EQ(PageSummary::DisplayText("\xE2\x80\xAE\xC3\xA4\xFF"), "&lt;U+202E&gt;&#228;&#65533;");
  EXPECT_EQ(PageSummary::DisplayText(std::string(5000, 'x')), std::string(4000, 'x') + "&#8230;");
}
