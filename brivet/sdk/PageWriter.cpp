#include "PageWriter.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

#include "BrivetModule.h"
#include "Document.h"
#include "EscapedText.h"
#include "VRELFileHeader.h"
#include "VRELString.h"

namespace {

constexpr std::size_t kMaxDigits = 40;  // ids with more digits are cut
constexpr std::size_t kCutDigits = 20;
constexpr std::size_t kMaxLosses = 100;
constexpr std::size_t kMaxInstances = 100;  // of one loss

std::string LinesOf(Loss const& loss) {
  if (loss.firstLine == 0) return "input";
  if (loss.lastLine <= loss.firstLine) return "line " + std::to_string(loss.firstLine);
  return "lines " + std::to_string(loss.firstLine) + " to " + std::to_string(loss.lastLine);
}

std::string DescriptionOf(Loss const& loss) {
  std::string text;
  for (std::size_t i = 0; i < loss.instances.size() && i < kMaxInstances; ++i) text += loss.instances[i] + " ";
  if (loss.instances.size() > kMaxInstances) {
    text += "(" + std::to_string(loss.instances.size()) + " instances) ";
  }
  return text + loss.reason;
}

}  // namespace

std::string PageWriter::DisplayDigits(Id const& id) {
  if (id.digits.size() <= kMaxDigits) return std::string(id.digits);
  return std::string(id.digits.substr(0, kCutDigits)) + "...";
}

VRINResult PageWriter::WritePage(BrivetWriteRequest& request) {
  escaped.clear();
  AppendEscapingControls(escaped, request.title);
  PutTitle(std::string(escaped));
  WriteSummary(request);
  if (request.document->GetModelResult().IsFailure()) return request.document->GetModelResult();
  WriteLosses(*request.document);
  WriteHeader(*request.document);
  WriteCounts(*request.document);
  return request.document->Describe(*this, *request.progress, true);
}

void PageWriter::WriteLosses(Document& document) {
  std::vector<Loss> const& losses = document.GetLosses();
  if (losses.empty()) return;
  PutHeading("Incomplete");
  BeginTable();
  PutRow("", "Parts of the document could not be read and are not part of this page.");
  for (std::size_t i = 0; i < losses.size() && i < kMaxLosses; ++i) {
    escaped.clear();
    AppendEscapingControls(escaped, DescriptionOf(losses[i]));
    PutRow(LinesOf(losses[i]), std::string(escaped));
  }
  if (losses.size() > kMaxLosses) PutRow("losses", std::to_string(losses.size()));
  EndTable();
}

void PageWriter::WriteHeader(Document& document) {
  VRELFileHeader& header = document.GetFileHeader();
  PutHeading("Header");
  BeginTable();
  for (int row = 0; row < header.GetCount(); ++row) {
    VRELString key;
    VRELValue value;
    // For a heading Get fails and returns the title as the value.
    bool const isRow = header.Get(row, key, value).IsSuccess();
    VRELString text;
    value.GetValue(text);
    escaped.clear();
    AppendEscapingControls(escaped, text.toUtf8());
    PutRow(isRow ? key.toUtf8() : std::string(), std::string(escaped));
  }
  EndTable();
}

void PageWriter::WriteCounts(Document& document) {
  PutHeading("Instances");
  BeginTable();
  PutRow("data sections", std::to_string(document.GetSectionCount()));
  PutRow("instances", std::to_string(document.GetInstanceCount()));
  PutRow("complex ones", std::to_string(document.GetComplexCount()));
  if (document.GetFailedCount() != 0) PutRow("left out", std::to_string(document.GetFailedCount()));
  EndTable();

  PutHeading("Types");
  std::vector<std::size_t> order(document.GetTypeCount());
  std::iota(order.begin(), order.end(), std::size_t(0));
  std::stable_sort(order.begin(), order.end(), [&document](std::size_t a, std::size_t b) {
    return document.GetTypeInstanceCount(a) > document.GetTypeInstanceCount(b);
  });
  BeginTable();
  for (std::size_t const type : order) {
    if (document.GetTypeInstanceCount(type) == 0) continue;
    PutRow(document.GetTypeName(type), std::to_string(document.GetTypeInstanceCount(type)));
  }
  EndTable();
}

void PageWriter::BeginSection() {
  PutHeading("Data section " + std::to_string(++section));
  inRecords = false;
  isComplex = false;
  isFirst = true;
}

void PageWriter::EndSection() {
  EndRecords();
}

void PageWriter::BeginInstance(Id const& id, bool complex) {
  EndRecords();
  Put("#");
  PutDefinition(id);
  Put(complex ? " = (" : " = ");
  isComplex = complex;
  isFirst = true;
}

void PageWriter::EndInstance() {
  if (isComplex && inRecords) Put(")");
  EndRecords();
  if (hasReferrers) EndReferrers();
  hasReferrers = false;
  Check();
}

void PageWriter::BeginRecord(std::string_view type) {
  if (!isFirst) Put(" ");
  Put(type);
  Put("(");
  isFirst = true;
  inRecords = true;
  depth = 0;
}

void PageWriter::EndRecord() {
  Put(")");
  isFirst = false;
}

void PageWriter::EndRecords() {
  if (inRecords) EndLine();
  inRecords = false;
}

void PageWriter::Separate() {
  if (!isFirst) Put(", ");
  isFirst = false;
}

void PageWriter::PutValue(std::string_view value) {
  Separate();
  Put(value);
}

void PageWriter::String(Text const& text) {
  Separate();
  escaped = "'";
  AppendEscapingControls(escaped, text.utf8);
  escaped += '\'';
  Put(escaped);
}

void PageWriter::Resource(std::string_view resource) {
  Separate();
  PutEscaped(resource);
}

void PageWriter::PutEscaped(std::string_view utf8) {
  escaped.clear();
  AppendEscapingControls(escaped, utf8);
  Put(escaped);
}

void PageWriter::Enumeration(std::string_view name) {
  PutValue(".");
  Put(name);
  Put(".");
}

void PageWriter::Binary(std::string_view digits) {
  PutValue("\"");
  Put(digits);
  Put("\"");
}

void PageWriter::Reference(Id const& target, bool defined) {
  char const* const before = isFirst ? "#" : ", #";
  isFirst = false;
  if (defined) {
    PutReference(before, target);
  } else {
    Put(before);
    Put(DisplayDigits(target));
  }
}

void PageWriter::BeginTyped(std::string_view type) {
  Open(type);
  Put("(");
}

// The braces of an entry are not separated from its value.
void PageWriter::BeginBraces(std::string_view tag) {
  if (inEntry && depth == 0 && !isFirst) {
    Put(" {");
    ++depth;
  } else {
    Open("{");
  }
  if (!tag.empty()) {
    Put(tag);
    Put(": ");
  }
  isFirst = true;
}

void PageWriter::Open(std::string_view text) {
  PutValue(text);
  isFirst = true;
  ++depth;
}

void PageWriter::Close(std::string_view text) {
  Put(text);
  isFirst = false;
  --depth;
}

void PageWriter::Referrer(Id const& source) {
  if (!hasReferrers) {
    if (isComplex) Put(")");
    EndRecords();
    BeginReferrers();
  }
  PutReference(hasReferrers ? " #" : "#", source);
  hasReferrers = true;
}

void PageWriter::BeginOtherSection(std::string_view keyword) {
  PutHeading(std::string(keyword) + " section");
  inRecords = false;
}

// The name may be that of an instance, which references in the data sections lead to.
void PageWriter::BeginEntry(std::string_view name) {
  inEntry = true;
  isFirst = true;
  depth = 0;
  if (name.size() > 1 && name[0] == '#') {
    std::size_t const begin = std::min(name.find_first_not_of('0', 1), name.size() - 1);
    Id id;
    id.digits = name.substr(begin);
    if (id.digits.size() <= 18) id.number = std::stoll(std::string(id.digits));
    Put("#");
    PutDefinition(id);
  } else {
    PutEscaped(name);
  }
  Put(" = ");
}

void PageWriter::EndEntry() {
  inEntry = false;
  EndLine();
  Check();
}

void PageWriter::Lines(std::string_view text) {
  while (!text.empty()) {
    std::size_t const end = std::min(text.find('\n'), text.size());
    PutEscaped(text.substr(0, end));
    EndLine();
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}
