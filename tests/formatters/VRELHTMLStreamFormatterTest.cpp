#include "VRELHTMLStreamFormatter.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "HeadlessBrowser.h"
#include "ScratchDirectory.h"
#include "StreamText.h"
#include "VRELString.h"
#include "VRELValue.h"

namespace {

constexpr char head[] = "<HTML> <title>parts</title><BODY BGCOLOR=\"#FFFFFF\" > ";
constexpr char foot[] = "</BODY> </HTML>";

// Returns the output between head and foot.
template <class Write>
std::string Body(Write const& write) {
  std::string const page = TextOf([&](VRELOutputStream* stream) {
    VRELHTMLStreamFormatter out(stream, "parts", "#FFFFFF");
    write(out);
  });
  std::size_t const around = sizeof head - 1 + sizeof foot - 1;
  EXPECT_GE(page.size(), around);
  EXPECT_EQ(page.substr(0, sizeof head - 1), head);
  EXPECT_EQ(page.substr(page.size() - (sizeof foot - 1)), foot);
  return page.substr(sizeof head - 1, page.size() - around);
}

TEST(VRELHTMLStreamFormatterTest, WritesHeadAndFoot) {
  std::string const page = TextOf([](VRELOutputStream* stream) {
    VRELHTMLStreamFormatter out(stream, "A title", "red");
    out << "text";
  });
  EXPECT_EQ(page, "<HTML> <title>A title</title><BODY BGCOLOR=\"red\" > text</BODY> </HTML>");
}

TEST(VRELHTMLStreamFormatterTest, NullTitleAndColour) {
  std::string const page = TextOf([](VRELOutputStream* stream) { VRELHTMLStreamFormatter(stream, nullptr, nullptr); });
  EXPECT_EQ(page, "<HTML> <title></title><BODY BGCOLOR=\"\" > </BODY> </HTML>");
}

TEST(VRELHTMLStreamFormatterTest, WorksWithoutStream) {
  VRELHTMLStreamFormatter out(nullptr, "t", "c");
  out << out.define(1L) << out.endline();
  out.margin()->incr();
  out.margin()->decr();
}

// The end of the page is written before the flush.
TEST(VRELHTMLStreamFormatterTest, FlushesAfterFoot) {
  class Stream : public VRELOutputStream {
   public:
    int write(char const* buffer, int count) override {
      last.assign(buffer, static_cast<std::size_t>(count));
      return count;
    }
    void flush() override { last += " flush"; }
    void close() override { last += " close"; }
    std::string last;
  };
  Stream stream;
  { VRELHTMLStreamFormatter const out(&stream, "t", "c"); }
  EXPECT_EQ(stream.last, "</BODY> </HTML> flush");
}

TEST(VRELHTMLStreamFormatterTest, ReplacesFormatObjects) {
  EXPECT_EQ(Body([](VRELStreamFormatter& out) { out << "a" << out.space() << "b" << out.endline() << out.empty(); }),
            "a&nbsp;b<br>\r\n");
}

TEST(VRELHTMLStreamFormatterTest, WritesBlock) {
  std::string const text = Body([](VRELStreamFormatter& out) {
    out.margin()->incr();
    out << out.margin() << "x";
    out.margin()->decr();
  });
  EXPECT_EQ(text,
            "<a name= \"AM{\"></a><a href=\"#AM}\">{</a><BLOCKQUOTE>x"
            "</BLOCKQUOTE><a name= \"AM}\"></a><a href=\"#AM{\">}</a><br>\r\n");
}

TEST(VRELHTMLStreamFormatterTest, DefineAndReferNumber) {
  EXPECT_EQ(Body([](VRELStreamFormatter& out) { out << out.define(123L); }), "<a name= \"123\">123</a>");
  EXPECT_EQ(Body([](VRELStreamFormatter& out) { out << out.refer(123L); }), "<a href=\"#123\">123</a>");
}

TEST(VRELHTMLStreamFormatterTest, DefineAndReferAddress) {
  void const* const address = reinterpret_cast<void const*>(0x10);
  EXPECT_EQ(Body([&](VRELStreamFormatter& out) { out << out.define(address); }), "<a name= \"16\">16</a>");
  EXPECT_EQ(Body([&](VRELStreamFormatter& out) { out << out.refer(address); }), "<a href=\"#16\">16</a>");
}

TEST(VRELHTMLStreamFormatterTest, NamesUseIntFormat) {
  std::string const text = Body([](VRELStreamFormatter& out) {
    out.setIntFormat("p%d");
    out.setLongFormat("n%ld");
    out << out.define(reinterpret_cast<void const*>(7)) << out.refer(8L);
  });
  EXPECT_EQ(text, "<a name= \"p7\">p7</a><a href=\"#n8\">n8</a>");
}

// Other values are written as by a plain formatter.
TEST(VRELHTMLStreamFormatterTest, WritesValuesUnchanged) {
  std::string const text = Body([](VRELStreamFormatter& out) {
    out << 'c' << 1 << 2U << 3L << 4UL << 0.5 << "<b>" << VRELString(L"w") << VRELValue(6) << out.format("%d", 7);
  });
  EXPECT_EQ(text, "c1234l0.500000<b>w67");
}

// A larger dump with nested blocks, definitions, and references in both directions.
void WritePage(VRELStreamFormatter& out) {
  int const parts[3] = {};
  for (long assembly = 1; assembly <= 3; ++assembly) {
    out << "assembly" << out.space() << out.define(assembly) << out.endline();
    out.margin()->incr();
    for (int const& part : parts) {
      out << out.margin() << "part" << out.space();
      if (assembly == 1) {
        out << out.define(&part);
      } else {
        out << out.refer(&part);
      }
      out << out.space() << "of" << out.space() << out.refer(assembly % 3 + 1) << out.endline();
      out.margin()->incr();
      out << "weight" << out.space() << 2.5 << out.endline();
      out.margin()->decr();
    }
    out.margin()->decr();
  }
}

// Returns the strings between each `before` and the next `after`.
std::vector<std::string> AllBetween(std::string const& text, std::string const& before, std::string const& after) {
  std::vector<std::string> found;
  for (std::size_t at = text.find(before); at != text.npos; at = text.find(before, at)) {
    at += before.size();
    found.push_back(text.substr(at, text.find(after, at) - at));
  }
  return found;
}

std::size_t CountOf(std::string const& text, std::string const& piece) {
  return AllBetween(text, piece, "").size();
}

TEST(VRELHTMLStreamFormatterTest, BrowserReadsPage) {
  if (!HasHeadlessBrowser()) GTEST_SKIP() << "chromium is not installed";
  ScratchDirectory const directory;
  std::string const page = TextOf([](VRELOutputStream* stream) {
    VRELHTMLStreamFormatter out(stream, "three assemblies", "#FFFFEE");
    WritePage(out);
  });
  std::string const dom = OpenPage(directory.Write("page.html", page));
  ASSERT_FALSE(dom.empty());

  EXPECT_NE(dom.find("<title>three assemblies</title>"), dom.npos);
  EXPECT_NE(dom.find("<body bgcolor=\"#FFFFEE\">"), dom.npos);
  EXPECT_EQ(CountOf(dom, "assembly&nbsp;"), 3U);
  EXPECT_EQ(CountOf(dom, "weight&nbsp;2.500000<br>"), 9U);

  // Anchors are unique, and each link has one.
  std::vector<std::string> const anchors = AllBetween(dom, "<a name=\"", "\">");
  std::set<std::string> const names(anchors.begin(), anchors.end());
  EXPECT_EQ(anchors.size(), 6U + 2 * 12);
  EXPECT_EQ(names.size(), anchors.size());
  std::vector<std::string> const links = AllBetween(dom, "<a href=\"#", "\">");
  EXPECT_EQ(links.size(), 6U + 9 + 2 * 12);
  for (std::string const& link : links) EXPECT_EQ(names.count(link), 1U) << link;

  // Braces are nested, and each links to the anchor before its partner.
  EXPECT_EQ(CountOf(dom, "<blockquote>"), 12U);
  std::vector<std::string> open;
  std::size_t blocks = 0;
  for (std::string const& anchor : anchors) {
    if (anchor.find('{') != anchor.npos) {
      open.push_back(anchor);
      ++blocks;
    } else if (anchor.find('}') != anchor.npos) {
      ASSERT_FALSE(open.empty());
      EXPECT_EQ(CountOf(dom, "<a name=\"" + anchor + "\"></a><a href=\"#" + open.back() + "\">}</a>"), 1U);
      EXPECT_EQ(CountOf(dom, "<a name=\"" + open.back() + "\"></a><a href=\"#" + anchor + "\">{</a>"), 1U);
      open.pop_back();
    }
  }
  EXPECT_TRUE(open.empty());
  EXPECT_EQ(blocks, 12U);
}

}  // namespace
