#include "TextPage.h"

#include <algorithm>

#include "BrivetModule.h"
#include "Document.h"
#include "ModelSummary.h"
#include "ProductModel.h"

namespace {

constexpr std::size_t kKeyWidth = 24;  // as in the dump of a file header
constexpr std::size_t kSummaryLines = 40;
constexpr std::size_t kSummaryWidth = 80;  // of a value

}  // namespace

void TextPage::Flush() {
  if (!pending.empty()) formatter << pending.c_str();
  pending.clear();
  stream.Check();
}

void TextPage::Put(std::string_view utf8) {
  pending += utf8;
  if (pending.size() >= kBlockSize) Flush();
}

void TextPage::EndLine() {
  Flush();
  formatter << formatter.endline();
}

void TextPage::PutTitle(std::string_view title) {
  Put(title);
  EndLine();
}

void TextPage::PutHeading(std::string_view heading) {
  EndLine();
  Put(heading);
  EndLine();
  pending.append(heading.size(), '-');
  EndLine();
}

void TextPage::PutRow(std::string_view key, std::string_view value) {
  Put(key);
  if (!key.empty()) {
    pending.append(kKeyWidth - std::min(kKeyWidth, key.size()), ' ');
    Put(" : ");
  }
  Put(value);
  EndLine();
}

void TextPage::WriteSummary(BrivetWriteRequest& request) {
  ProductModel const* const model = request.document->GetModel(false, *request.progress);
  if (model == nullptr || model->IsEmpty()) return;
  PutHeading("Summary");
  ModelSummary const summary = ModelSummary::Of(*model, kSummaryLines, kSummaryWidth);
  for (ModelSummary::Row const& row : summary.rows) PutRow(row.key, row.value);
  for (std::string const& line : summary.tree) PutRow("", line);
}
