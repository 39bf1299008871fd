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

VRINResult PageWriter::WritePage(BrivetWriteRequest& request) {
  PutTitle(request.title);
  WriteHeader(*request.document);
  WriteCounts(*request.document);
  return request.document->Describe(*this, *request.progress, true);
}

void PageWriter::WriteHeader(Document& document) {
  VRELFileHeader& header = document.GetFileHeader();
  PutHeading("Header");
  BeginTable();
  for (int row = 0; row < header.GetCount(); ++row) {
    VRELString key;
    VRELValue value;
    // A heading comes as a failure, with its title in the value.
    bool const isRow = header.Get(row, key, value).IsSuccess();
    VRELString text;
    value.GetValue(text);
    PutRow(isRow ? key.toUtf8() : std::string(), text.toUtf8());
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
  shown = "'";
  AppendEscapingControls(shown, text.utf8);
  shown += '\'';
  Put(shown);
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
  PutValue("#");
  if (defined) {
    PutReference(target);
  } else {
    Put(target.digits);
  }
}

void PageWriter::BeginTyped(std::string_view type) {
  PutValue(type);
  Put("(");
  isFirst = true;
}

void PageWriter::Open(std::string_view text) {
  PutValue(text);
  isFirst = true;
}

void PageWriter::Close() {
  Put(")");
  isFirst = false;
}

void PageWriter::Referrer(Id const& source) {
  if (!hasReferrers) {
    if (isComplex) Put(")");
    EndRecords();
    BeginReferrers();
  }
  Put(hasReferrers ? " #" : "#");
  hasReferrers = true;
  PutReference(source);
}
