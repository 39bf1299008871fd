#include "Listing.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

#include "Document.h"
#include "DocumentVisitor.h"
#include "EscapedText.h"
#include "StandardOutput.h"
#include "Utf8StreamFormatter.h"
#include "VRELStringOutputStream.h"

namespace {

constexpr std::size_t COUNT_WIDTH = 18;
constexpr std::size_t PAGE = 65536;  // bytes that are printed at once

// Thrown once standard output takes no more, which was told.
struct NoOutput {
  VRINResult result;
};

std::string PadRight(std::string_view text, std::size_t width) {
  return std::string(text) + std::string(width - std::min(width, text.size()), ' ');
}

std::string PadLeft(std::string_view text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + std::string(text);
}

// The text and the place of each string with escapes.
class EscapedTexts final : public DocumentVisitor {
 public:
  using Receiver = std::function<void(Text const& text, std::string_view place)>;

  explicit EscapedTexts(Receiver take) : receiver(std::move(take)) {}

  void BeginSection() override { place = "data"; }
  void BeginInstance(Id const& id, bool /*complex*/) override { place = "#" + std::string(id.digits); }
  void EndInstance() override { place = "data"; }
  void String(Text const& text) override {
    if (text.escaped) receiver(text, place);
  }

 private:
  Receiver const receiver;
  std::string place = "header";
};

class Listing {
 public:
  explicit Listing(Document& listed) : document(listed) {}

  void Print() {
    Measure();
    AppendHeader();
    AppendCounts();
    AppendTypes();
    if (escaped != 0) AppendEscapedTexts();
    Flush();
  }

 private:
  // A file that has changed meanwhile is told by the document.
  void Walk(EscapedTexts::Receiver const& receiver) {
    EscapedTexts texts(receiver);
    VRINResult result = document.DescribeHeader(texts);
    if (result.IsSuccess()) result = document.DescribeEscaped(texts);
    if (result.IsFailure()) throw NoOutput{result};
  }

  void Measure() {
    Walk([this](DocumentVisitor::Text const& text, std::string_view place) {
      ++escaped;
      lineWidth = std::max(lineWidth, std::to_string(text.line).size());
      placeWidth = std::max(placeWidth, place.size());
    });
  }

  void AppendHeader() {
    VRELStringOutputStream text;
    Utf8StreamFormatter out(&text);
    out << document.GetFileHeader() << out.endline();
    text.writeChar('\0');
    page = text.contents();
  }

  void AppendCount(std::string_view name, long count) {
    page += PadRight(name, COUNT_WIDTH) + PadLeft(std::to_string(count), 10) + "\n";
  }

  void AppendCounts() {
    long const instances = document.GetInstanceCount();
    AppendCount("data sections", document.GetSectionCount());
    AppendCount("entity instances", instances);
    AppendCount("  simple", instances - document.GetComplexCount());
    AppendCount("  complex", document.GetComplexCount());
    if (document.GetFailedCount() != 0) AppendCount("left out", document.GetFailedCount());
    AppendCount("entity types", static_cast<long>(document.GetTypeCount()));
    AppendCount("escaped strings", escaped);
  }

  // The most frequent first; of equally frequent ones, the one that came first.
  void AppendTypes() {
    if (document.GetTypeCount() == 0) return;
    std::vector<std::size_t> order(document.GetTypeCount());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
      return document.GetTypeInstanceCount(a) > document.GetTypeInstanceCount(b);
    });
    page += "\n" + PadLeft("count", 10) + "  type\n";
    for (std::size_t const type : order) {
      page +=
          PadLeft(std::to_string(document.GetTypeInstanceCount(type)), 10) + "  " + document.GetTypeName(type) + "\n";
      FlushFull();
    }
  }

  void AppendEscapedTexts() {
    page += "\n  " + PadLeft("line", lineWidth) + "  " + PadRight("instance", placeWidth) + "  text\n";
    Walk([this](DocumentVisitor::Text const& text, std::string_view place) {
      page += "  " + PadLeft(std::to_string(text.line), lineWidth) + "  " + PadRight(place, placeWidth) + "  ";
      if (text.utf8.empty()) page += "(empty)";
      AppendEscapingControls(page, text.utf8);
      page += "\n";
      FlushFull();
    });
  }

  void FlushFull() {
    if (page.size() >= PAGE) Flush();
  }

  void Flush() {
    VRINResult const result = PrintPage(page);
    if (result.IsFailure()) throw NoOutput{result};
    page.clear();
  }

  Document& document;
  std::string page;
  long escaped = 0;
  std::size_t lineWidth = 4;
  std::size_t placeWidth = 8;
};

}  // namespace

VRINResult PrintListing(Document& document) {
  try {
    Listing(document).Print();
    return VREL_S_OK;
  } catch (NoOutput const& failure) {
    return failure.result;
  }
}
