#include "Listing.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "Document.h"
#include "DocumentVisitor.h"
#include "EscapedText.h"
#include "HeaderRecords.h"
#include "ModelSummary.h"
#include "PageWriter.h"
#include "ProductModel.h"
#include "Progress.h"
#include "StandardOutput.h"
#include "Utf8StreamFormatter.h"
#include "VRELStringOutputStream.h"

namespace {

constexpr std::size_t kCountWidth = 18;
constexpr std::size_t kValueWidth = 56;
constexpr std::size_t kScreenLines = 24;
constexpr std::size_t kListedLines = 40;
constexpr std::size_t kBlockSize = 65536;  // bytes that are printed at once

// Thrown after a failure that was reported.
struct ListingFailure {
  VRINResult result;
};

std::string PadRight(std::string_view text, std::size_t width) {
  return std::string(text) + std::string(width - std::min(width, text.size()), ' ');
}

std::string PadLeft(std::string_view text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + std::string(text);
}

// Passes each string with escapes and its position to a receiver.
class EscapedStrings final : public DocumentVisitor {
 public:
  using Receiver = std::function<void(Text const& text, std::string_view position)>;

  explicit EscapedStrings(Receiver take) : receiver(std::move(take)) {}

  void BeginSection() override { position = "data"; }
  void BeginInstance(Id const& id, bool /*complex*/) override { position = "#" + PageWriter::DisplayDigits(id); }
  void EndInstance() override { position = "data"; }
  void String(Text const& text) override {
    if (text.escaped) receiver(text, position);
  }

 private:
  Receiver const receiver;
  std::string position = "header";
};

class Listing {
 public:
  Listing(Document& listed, Progress& shownProgress) : document(listed), progress(shownProgress) {}

  void Print() {
    Measure();
    if (AppendModel(kListedLines)) page += "\n";
    AppendHeader();
    AppendCounts();
    AppendTypes();
    if (escaped != 0) AppendEscapedStrings();
    Flush();
  }

  void PrintSummary() {
    AppendFile();
    AppendModel(kScreenLines - static_cast<std::size_t>(std::count(page.begin(), page.end(), '\n')));
    Flush();
  }

 private:
  void AppendRow(std::string_view name, std::string const& value) {
    page += PadRight(name, kCountWidth);
    AppendEscapingControls(page, value);
    page += "\n";
  }

  // The lines of -summary that come from the header and the counts.
  void AppendFile() {
    HeaderRecords header;
    VRINResult const result = document.DescribeHeader(header);
    if (result.IsFailure()) throw ListingFailure{result};
    auto const append = [&](char const* name, std::optional<std::string> const& value) {
      if (!value.has_value() || value->empty()) return;
      std::size_t end = std::min(value->size(), kValueWidth);
      // Not within a character.
      while (end < value->size() && (static_cast<unsigned char>((*value)[end]) & 0xC0U) == 0x80U) ++end;
      AppendRow(name, end < value->size() ? value->substr(0, end) + "..." : *value);
    };
    append("file", header.Text("FILE_NAME", 0));
    if (char const* const protocol = header.ApplicationProtocol()) AppendRow("application", protocol);
    append("system", header.Text("FILE_NAME", 5));
    append("date", header.Text("FILE_NAME", 1));
    std::string counts = std::to_string(document.GetInstanceCount());
    if (document.GetFailedCount() != 0) counts += ", " + std::to_string(document.GetFailedCount()) + " lost";
    AppendRow("instances", counts);
  }

  // Returns whether there is a model.
  bool AppendModel(std::size_t lines) {
    ProductModel const* const model = document.GetModel(false, progress);
    if (document.GetModelResult().IsFailure()) throw ListingFailure{document.GetModelResult()};
    if (model == nullptr || model->IsEmpty()) return false;
    ModelSummary const summary = ModelSummary::Of(*model, lines, kValueWidth);
    for (ModelSummary::Row const& row : summary.rows) page += PadRight(row.key, kCountWidth) + row.value + "\n";
    for (std::string const& line : summary.tree) page += line + "\n";
    return true;
  }

  // The document reports it if the file has changed since it was read.
  void VisitStrings(EscapedStrings::Receiver const& receiver) {
    EscapedStrings strings(receiver);
    VRINResult result = document.DescribeHeader(strings);
    if (result.IsSuccess()) result = document.DescribeEscaped(strings);
    if (result.IsFailure()) throw ListingFailure{result};
  }

  void Measure() {
    VisitStrings([this](DocumentVisitor::Text const& text, std::string_view position) {
      ++escaped;
      lineWidth = std::max(lineWidth, std::to_string(text.line).size());
      positionWidth = std::max(positionWidth, position.size());
    });
  }

  void AppendHeader() {
    VRELStringOutputStream text;
    Utf8StreamFormatter out(&text);
    out << document.GetFileHeader() << out.endline();
    text.writeChar('\0');
    page += text.contents();
  }

  void AppendCount(std::string_view name, long count) {
    page += PadRight(name, kCountWidth) + PadLeft(std::to_string(count), 10) + "\n";
  }

  void AppendCounts() {
    long const instances = document.GetInstanceCount();
    AppendCount("data sections", document.GetSectionCount());
    AppendCount("entity instances", instances);
    AppendCount("  simple", instances - document.GetComplexCount());
    AppendCount("  complex", document.GetComplexCount());
    if (document.GetFailedCount() != 0) AppendCount("lost", document.GetFailedCount());
    AppendCount("entity types", static_cast<long>(document.GetTypeCount()));
    AppendCount("escaped strings", escaped);
  }

  // The most frequent type first; equally frequent ones in order of appearance.
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

  void AppendEscapedStrings() {
    page += "\n  " + PadLeft("line", lineWidth) + "  " + PadRight("instance", positionWidth) + "  text\n";
    VisitStrings([this](DocumentVisitor::Text const& text, std::string_view position) {
      page += "  " + PadLeft(std::to_string(text.line), lineWidth) + "  " + PadRight(position, positionWidth) + "  ";
      if (text.utf8.empty()) page += "(empty)";
      AppendEscapingControls(page, text.utf8);
      page += "\n";
      FlushFull();
    });
  }

  void FlushFull() {
    if (page.size() >= kBlockSize) Flush();
  }

  void Flush() {
    VRINResult const result = PrintText(page);
    if (result.IsFailure()) throw ListingFailure{result};
    page.clear();
  }

  Document& document;
  Progress& progress;
  std::string page;
  long escaped = 0;
  std::size_t lineWidth = 4;
  std::size_t positionWidth = 8;
};

}  // namespace

VRINResult PrintListing(Document& document, Progress& progress) {
  try {
    Listing(document, progress).Print();
    return VREL_S_OK;
  } catch (ListingFailure const& failure) {
    return failure.result;
  }
}

VRINResult PrintDocumentSummary(Document& document, Progress& progress) {
  try {
    Listing(document, progress).PrintSummary();
    return VREL_S_OK;
  } catch (ListingFailure const& failure) {
    return failure.result;
  }
}
