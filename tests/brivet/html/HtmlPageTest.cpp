#include "HtmlPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PageFixture.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string Page(std::string const& title) {
  ReadDocument document(PageDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, title);
  return TextOf([&](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(HtmlPage(stream, title).WritePage(request), VREL_S_OK);
  });
}

}  // namespace

TEST(HtmlPageTest, IsHtmlPage) {
  std::string const page = Page("a&b.stp");
  EXPECT_THAT(page, StartsWith("<HTML> <title>a&amp;b.stp</title><BODY BGCOLOR=\"#FFFFFF\" > <META CHARSET="));
  EXPECT_THAT(page, HasSubstr("<H1>a&amp;b.stp</H1>\n"));
  EXPECT_EQ(page.substr(page.size() - 15), "</BODY> </HTML>");
}

TEST(HtmlPageTest, WritesTables) {
  std::string const page = Page("part.stp");
  EXPECT_THAT(page, HasSubstr("<H2>Header</H2>\n<TABLE>\n"
                              "<TR><TD COLSPAN=2>FILE_NAME\n"
                              "<TR><TD>File Name<TD>a&lt;b\n"
                              "<TR><TD>time_stamp<TD>(empty)\n"));
  EXPECT_THAT(page, HasSubstr("<TR><TD>schema_identifiers<TD>S\n</TABLE>\n"
                              "<H2>Instances</H2>\n<TABLE>\n"
                              "<TR><TD>data sections<TD>2\n"
                              "<TR><TD>instances<TD>3\n"
                              "<TR><TD>complex ones<TD>1\n"
                              "<TR><TD>left out<TD>1\n"
                              "</TABLE>\n"
                              "<H2>Types</H2>\n<TABLE>\n"
                              "<TR><TD>A<TD>2\n"
                              "<TR><TD>(B C)<TD>1\n"
                              "</TABLE>\n"));
}

TEST(HtmlPageTest, LinksInstances) {
  std::string const page = Page("part.stp");
  std::string const far = "99999999999999999999";
  EXPECT_THAT(page, HasSubstr("<H2>Data section 1</H2>\n"
                              "#<a name= \"1\">1</a> = A('it's &#12502;&lt;U+000A&gt; &amp; &lt;co&gt;', .T., -1.5E-3, "
                              "&quot;0F&quot;, $, *, (#<a href=\"#2\">2</a>, T(1), ()))<br>\r\n"
                              "<SMALL>&nbsp;&nbsp;&nbsp;&nbsp;referred to by #<a href=\"#2\">2</a></SMALL><br>\r\n"
                              "#<a name= \"2\">2</a> = (B() C(#<a href=\"#1\">1</a>, #<a href=\"#1\">1</a>))<br>\r\n"
                              "<SMALL>&nbsp;&nbsp;&nbsp;&nbsp;referred to by #<a href=\"#1\">1</a> #<a href=\"#n4\">" +
                              far + "</a></SMALL><br>\r\n"));
  // A reference to nothing is no link. An id that is no long is linked by the position of the instance.
  EXPECT_THAT(page, HasSubstr("<H2>Data section 2</H2>\n('two')<br>\r\n#<a name= \"n4\">" + far +
                              "</a> = A(#<a href=\"#2\">2</a>, #7, #<a href=\"#n4\">" + far + "</a>)<br>\r\n"));
}

TEST(HtmlPageTest, ReportsFullStream) {
  ReadDocument document(PageDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  for (int room : {0, 100, 1200}) {
    FullStream target(room);
    CheckedOutputStream stream(&target);
    try {
      HtmlPage(stream, "part.stp").WritePage(request);
    } catch (CheckedOutputStream::Failure const&) {
    }
    EXPECT_TRUE(stream.HasFailed()) << room;
  }
}

// So that memory does not grow with the length of an instance.
TEST(HtmlPageTest, WritesLongLineInPieces) {
  ReadDocument document(LongDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  PieceStream target;
  CheckedOutputStream stream(&target);
  HtmlPage page(stream, "part.stp");
  EXPECT_EQ(page.WritePage(request), VREL_S_OK);
  EXPECT_GT(target.total, 1'200'000);
  EXPECT_LT(target.largest, 70'000);
}

TEST(HtmlPageTest, ShowsEdition3Sections) {
  ReadDocument document(
      "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'4;1');FILE_NAME('','',(''),(''),'','','');FILE_SCHEMA(('S'));ENDSEC;"
      "ANCHOR;<top>=#1{label:'x'}{n:(1,$)};ENDSEC;REFERENCE;#0010=<a&b>;ENDSEC;DATA;#1=A(#10,@1,{a:1},{1,2});ENDSEC;"
      "END-ISO-10303-21;SIGNATURE;\nMII\nB=\nENDSEC;");
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  std::string const page = TextOf([&](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(HtmlPage(stream, "part.stp").WritePage(request), VREL_S_OK);
  });
  EXPECT_THAT(page, HasSubstr("<H2>ANCHOR section</H2>\n"
                              "&lt;top&gt; = #<a href=\"#1\">1</a> {label: 'x'} {n: (1, $)}<br>\r\n"
                              "<H2>REFERENCE section</H2>\n"
                              "#<a name= \"10\">10</a> = &lt;a&amp;b&gt;<br>\r\n"
                              "<H2>Data section 1</H2>\n"
                              "#<a name= \"1\">1</a> = A(#<a href=\"#10\">10</a>, @1, {a: 1}, {1, 2})<br>\r\n"
                              "<H2>SIGNATURE section</H2>\n"
                              "MII<br>\r\nB=<br>\r\n"));
}

TEST(HtmlPageTest, SaysWhatIsIncomplete) {
  ReadDocument document(DocumentText("#1=A(;\n#2=B('x);\n\n#3=C();\n"));
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  std::string const page = TextOf([&](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(HtmlPage(stream, "part.stp").WritePage(request), VREL_S_OK);
  });
  EXPECT_THAT(page,
              HasSubstr("<H2>Incomplete</H2>\n<TABLE>\n"
                        "<TR><TD COLSPAN=2>Parts of the document could not be read and are not part of this page.\n"
                        "<TR><TD>line 7<TD>#1 expected parameter, found ';'\n"
                        "<TR><TD>lines 8 to 9<TD>#2 expected &quot;'&quot; at the end of the string, found another "
                        "instance\n</TABLE>\n<H2>Header</H2>\n"));
}
