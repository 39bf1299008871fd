#include "PageSummary.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <optional>

#include "Document.h"
#include "EscapedText.h"
#include "HeaderRecords.h"
#include "HtmlText.h"
#include "JsonText.h"
#include "ProductModel.h"
#include "VRELFileHeader.h"
#include "VRELString.h"

namespace {

constexpr std::size_t kLosses = 100;
constexpr std::size_t kLostInstances = 100;  // of one loss
constexpr int kHeaderRows = 1000;
constexpr char kTimes[] = " \xC3\x97 ";

std::string LinesOf(Loss const& loss) {
  if (loss.firstLine == 0) return "input";
  if (loss.lastLine <= loss.firstLine) return "line " + std::to_string(loss.firstLine);
  return "lines " + std::to_string(loss.firstLine) + " to " + std::to_string(loss.lastLine);
}

std::string DescriptionOf(Loss const& loss) {
  std::string text;
  for (std::size_t i = 0; i < loss.instances.size() && i < kLostInstances; ++i) text += loss.instances[i] + " ";
  if (loss.instances.size() > kLostInstances) text += "(" + std::to_string(loss.instances.size()) + " instances) ";
  return text + loss.reason;
}

std::string Number(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.6g", number);
  return text;
}

// Rows of a description list.
class Rows {
 public:
  void Add(char const* key, std::string_view value, bool differs = false) {
    if (value.find_first_not_of(' ') == value.npos) return;
    markup.append("<div><dt>")
        .append(key)
        .append(differs ? "</dt><dd class=\"differs\">" : "</dt><dd>")
        .append(PageSummary::DisplayText(value))
        .append("</dd></div>\n");
  }
  void Add(char const* key, std::optional<std::string> const& value) { Add(key, std::string_view(value.value_or(""))); }
  void AddCount(char const* key, long count) {
    if (count > 0) Add(key, std::string_view(std::to_string(count)));
  }

  std::string markup;
};

std::string ExtentOf(ProductModel const& model) {
  if (model.extent.isEmpty) return "";
  std::string text;
  for (int i = 0; i < 3; ++i) text += (i > 0 ? kTimes : "") + Number(model.extent.high[i] - model.extent.low[i]);
  if (model.extentUnits < 0) return text;
  return text + " " + model.units[static_cast<std::size_t>(model.extentUnits)].lengthName;
}

void AddModel(Rows& rows, ProductModel const& model) {
  std::vector<std::string> units;
  for (ModelUnits const& each : model.units) {
    if (std::find(units.begin(), units.end(), each.lengthName) != units.end() || units.size() == 10) continue;
    units.push_back(each.lengthName);
  }
  std::string names;
  for (std::string const& each : units) names += (names.empty() ? "" : ", ") + each;
  rows.Add("Unit", std::string_view(names));
  rows.Add("Extent", std::string_view(ExtentOf(model)));
  long solids = 0;
  long faces = 0;
  for (ModelProduct const& each : model.products) {
    solids += each.solids;
    faces += each.faces;
  }
  rows.AddCount("Products", static_cast<long>(model.products.size()));
  rows.AddCount("Occurrences", static_cast<long>(model.occurrences.size()));
  rows.AddCount("Solids", solids);
  rows.AddCount("Faces", faces);
}

std::string LostParts(Document& document) {
  std::vector<Loss> const& losses = document.GetLosses();
  if (losses.empty()) return "";
  std::string markup =
      "<p><strong>Incomplete.</strong> Parts of the document could not be read and are not part of this "
      "page.</p>\n<ul>\n";
  for (std::size_t i = 0; i < losses.size() && i < kLosses; ++i) {
    markup += "<li>" + LinesOf(losses[i]) + ": " + PageSummary::DisplayText(DescriptionOf(losses[i])) + "</li>\n";
  }
  if (losses.size() > kLosses) markup += "<li>" + std::to_string(losses.size()) + " losses in all</li>\n";
  return markup + "</ul>\n";
}

}  // namespace

std::string PageSummary::DisplayText(std::string_view utf8) {
  std::string_view const cut = CutUtf8(utf8, kLongestValue);
  std::string escaped;
  AppendEscapingControls(escaped, cut);
  std::string markup = EscapeHtml(escaped);
  if (cut.size() < utf8.size()) markup += "&#8230;";
  return markup;
}

std::string PageSummary::Summary(Document& document, ProductModel const* model, std::vector<std::string> const& leftOut,
                                 std::vector<Row> const& computed) {
  std::string markup;
  std::string const lost = LostParts(document);
  if (!lost.empty() || !leftOut.empty()) {
    markup += "<div class=\"banner\" role=\"note\">\n" + lost;
    for (std::string const& sentence : leftOut) markup += "<p>" + DisplayText(sentence) + "</p>\n";
    markup += "</div>\n";
  }
  HeaderRecords header;
  document.DescribeHeader(header);
  Rows rows;
  rows.Add("File", header.Text("FILE_NAME", 0));
  char const* const protocol = header.ApplicationProtocol();
  std::string schemas;
  for (std::string const& each : header.List("FILE_SCHEMA", 0)) {
    if (schemas.size() > PageSummary::kLongestValue) break;
    schemas += (schemas.empty() ? "" : ", ") + each;
  }
  bool const isKnown = protocol != nullptr && std::string_view(protocol) != "other";
  rows.Add("Application protocol", std::string_view(isKnown ? protocol : schemas));
  rows.Add("Originating system", header.Text("FILE_NAME", 5));
  rows.Add("Date", header.Text("FILE_NAME", 1));
  if (model != nullptr) AddModel(rows, *model);
  for (Row const& each : computed) rows.Add(each.key, std::string_view(each.value), each.differs);
  rows.Add("Instances", std::string_view(std::to_string(document.GetInstanceCount())));
  rows.AddCount("Skipped", document.GetFailedCount());
  return markup + "<dl class=\"facts\">\n" + rows.markup + "</dl>\n";
}

std::string PageSummary::Header(Document& document) {
  VRELFileHeader& header = document.GetFileHeader();
  std::string markup;
  std::string heading;
  int const count = header.GetCount();
  for (int row = 0; row < count && row < kHeaderRows; ++row) {
    VRELString key;
    VRELValue value;
    // For a heading Get fails and returns the title as the value.
    bool const isRow = header.Get(row, key, value).IsSuccess();
    VRELString text;
    value.GetValue(text);
    if (isRow) {
      markup += "<tr><th scope=\"row\">" + DisplayText(key.toUtf8()) + "</th><td>" + DisplayText(text.toUtf8()) +
                "</td></tr>\n";
    } else if (!text.toUtf8().empty()) {
      markup += "<tr><th scope=\"rowgroup\" colspan=\"2\">" + DisplayText(text.toUtf8()) + "</th></tr>\n";
    }
  }
  if (count > kHeaderRows) {
    markup += "<tr><th scope=\"row\">rows</th><td>" + std::to_string(count) + "</td></tr>\n";
  }
  return markup.empty() ? "" : "<table class=\"pairs\">\n" + markup + "</table>\n";
}
