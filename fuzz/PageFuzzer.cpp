// Fuzzes the pages of documents. Asserts that no page has a control character except line ends, that HTML pages are
// ASCII, that the links of the plain one lead to anchors, that the interactive one has no script but its own, and that
// all are at most 24 times as large as the document, beyond what is in every page.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "HtmlPage.h"
#include "InteractivePage.h"
#include "PageAssets.h"
#include "Require.h"
#include "StepDocument.h"
#include "TextPage.h"

namespace {

constexpr std::size_t kFixedSize = 16384;
constexpr std::size_t kGrowth = 24;

class PageStream final : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    text.append(buffer, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override {}
  void close() override {}

  std::string text;
};

template <class Page>
std::string PageOf(ReadDocument& read) {
  PageStream target;
  CheckedOutputStream stream(&target);
  Progress progress;
  BrivetWriteRequest request;
  request.document = read.document;
  request.progress = &progress;
  request.title = "part.stp";
  {
    Page page(stream, request.title);
    Require(page.WritePage(request) == VREL_S_OK, "a page is written");
  }
  return target.text;
}

void CheckControls(std::string const& page) {
  auto const isControl = [](char byte) {
    return (byte >= 0 && byte < ' ' && byte != '\n' && byte != '\r') || byte == 0x7F;
  };
  Require(std::none_of(page.begin(), page.end(), isControl), "a page has no control characters");
}

std::set<std::string> Between(std::string const& page, std::string const& begin) {
  std::set<std::string> found;
  for (std::size_t at = page.find(begin); at != page.npos; at = page.find(begin, at)) {
    at += begin.size();
    found.insert(page.substr(at, page.find('"', at) - at));
  }
  return found;
}

bool IsAscii(std::string const& page) {
  return std::none_of(page.begin(), page.end(), [](char c) { return (c & 0x80) != 0; });
}

std::size_t Count(std::string const& page, std::string const& part) {
  std::size_t count = 0;
  for (std::size_t at = page.find(part); at != page.npos; at = page.find(part, at + 1)) ++count;
  return count;
}

void CheckInteractivePage(ReadDocument& read, std::size_t size) {
  std::string const page = PageOf<InteractivePage>(read);
  CheckControls(page);
  std::size_t const fixed =
      kFixedSize + PageAssets::kStyle.size() + PageAssets::kScript.size() + PageAssets::kThree.size();
  Require(page.size() <= fixed + kGrowth * size, "an interactive page is not much larger than its document");
  Require(IsAscii(page), "an interactive page is ASCII");
  Require(Count(page, "<script") == Count(page, "<script type=\"application/gzip\" id=\"data-") + 1,
          "an interactive page has one script");
  Require(Count(page, "</html>") == 1, "an interactive page is complete");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  ReadDocument read(std::string(reinterpret_cast<char const*>(bytes), size));
  if (!read.isOpen || !read.isResolved) return 0;
  std::string const text = PageOf<TextPage>(read);
  CheckControls(text);
  Require(text.size() <= kFixedSize + kGrowth * size, "a text is not much larger than its document");

  std::string const html = PageOf<HtmlPage>(read);
  CheckControls(html);
  Require(html.size() <= kFixedSize + kGrowth * size, "a page is not much larger than its document");
  Require(IsAscii(html), "an HTML page is ASCII");
  std::set<std::string> const anchors = Between(html, "<a name= \"");
  for (std::string const& link : Between(html, "<a href=\"#"))
    Require(anchors.count(link) == 1, "a link has an anchor");
  CheckInteractivePage(read, size);
  return 0;
}
