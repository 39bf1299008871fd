#include "InteractivePage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "PageAssets.h"
#include "PageData.h"
#include "PageFixture.h"

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

std::string Page(std::string const& bytes, std::string const& title = "part.stp") {
  ReadDocument document(bytes);
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, title);
  return TextOf([&](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(InteractivePage(stream, title).WritePage(request), VREL_S_OK);
  });
}

}  // namespace

TEST(InteractivePageTest, IsOneHtmlDocument) {
  std::string const page = Page(PageDocument(), "a<b&c.stp");
  EXPECT_THAT(
      page,
      StartsWith("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                 "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src '" +
                 std::string(PageAssets::kStyleHash) + "'; script-src '" + std::string(PageAssets::kScriptHash) + "'"));
  EXPECT_THAT(page, HasSubstr("<title>a&lt;b&amp;c.stp</title>\n"));
  EXPECT_THAT(page, HasSubstr("<h1>a&lt;b&amp;c.stp</h1>\n"));
  EXPECT_THAT(page, EndsWith("</script>\n</body>\n</html>\n"));
  EXPECT_EQ(page.find("http-equiv"), page.rfind("http-equiv"));
  EXPECT_TRUE(std::none_of(page.begin(), page.end(), [](char byte) { return (byte & 0x80) != 0 || byte == '\r'; }));
}

TEST(InteractivePageTest, LeavesOutEmptySections) {
  std::string const page = Page(PageDocument());
  for (char const* name : {"summary", "types", "search", "instances", "header"}) {
    EXPECT_THAT(page, HasSubstr("<section id=\"" + std::string(name) + "\"")) << name;
  }
  for (char const* name : {"view", "structure", "properties", "layers", "colours", "annotations"}) {
    EXPECT_THAT(page, Not(HasSubstr("<section id=\"" + std::string(name) + "\""))) << name;
  }
  EXPECT_THAT(page, Not(HasSubstr("data-three")));
  std::string const empty = Page(DocumentText(""));
  EXPECT_THAT(empty, Not(HasSubstr("<section id=\"instances\"")));
  EXPECT_EQ(DataOf(empty, "model").substr(0, 14), "{\"instances\":0");
}

TEST(InteractivePageTest, HasNoSecondScriptOfTheDocument) {
  std::string const trap = "</script><script>trap()</script>";
  std::string const page = Page(DocumentText("#1=A('" + trap + "');\n#2=PRODUCT('" + trap + "','','',());\n"), trap);
  EXPECT_THAT(page, Not(HasSubstr("<script>trap")));
  EXPECT_THAT(page, HasSubstr("<h1>&lt;/script&gt;&lt;script&gt;trap()&lt;/script&gt;</h1>"));
}

TEST(InteractivePageTest, ReportsFullStream) {
  ReadDocument document(PageDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  for (int room : {0, 1000, 30000}) {
    FullStream target(room);
    CheckedOutputStream stream(&target);
    EXPECT_THROW(InteractivePage(stream, "part.stp").WritePage(request), CheckedOutputStream::Failure) << room;
  }
}

TEST(InteractivePageTest, WritesInPieces) {
  ReadDocument document(LongDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  PieceStream target;
  CheckedOutputStream stream(&target);
  EXPECT_EQ(InteractivePage(stream, "part.stp").WritePage(request), VREL_S_OK);
  EXPECT_LE(target.largest, 65536);
}

TEST(InteractivePageTest, SameDocumentGivesSamePage) {
  EXPECT_EQ(Page(PageDocument()), Page(PageDocument()));
}

TEST(InteractivePageTest, ReportsChangedFile) {
  ReadDocument document(ChangeableText());
  CutChangeableText(document);
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  PieceStream target;
  CheckedOutputStream stream(&target);
  EXPECT_EQ(InteractivePage(stream, "part.stp").WritePage(request), VREL_E_INVALID_FILE);
}
