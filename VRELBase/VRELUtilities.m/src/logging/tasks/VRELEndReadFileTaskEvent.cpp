#include "VRELEndReadFileTaskEvent.h"

#include "VRELFileHeader.h"
#include "VRELStreamFormatter.h"

namespace {

int CountRows(VRELFileHeader& header, int modelsCount) {
  int rows = 0;
  for (int i = 0; i < modelsCount; ++i) {
    header.SelectModel(i);
    rows += header.GetCount();
  }
  return rows;
}

void WriteModels(VRELStreamFormatter& formatter, VRELFileHeader& header, int modelsCount) {
  for (int i = 0; i < modelsCount; ++i) {
    if (modelsCount > 1) {
      header.SelectModel(i);
      formatter << "Model " << i + 1 << formatter.endline();
    }
    formatter << header;
  }
}

}  // namespace

VRELEndReadFileTaskEvent::VRELEndReadFileTaskEvent(VRINResult const& result, VRELFileHeader* fileHeader)
    : VRELEndTaskEvent(result, "File Reading", "Read File", VREL_LEVEL_INFO, false), header(fileHeader) {}

void VRELEndReadFileTaskEvent::GetFormattedDescription(VRELOutputStream* stream) {
  if (header == nullptr) return;
  int const modelsCount = header->GetModelsCount();
  if (CountRows(*header, modelsCount) > 0) {
    VRELStreamFormatter formatter(stream);
    formatter << "-------------------------Source File Header Information-------------------------"
              << formatter.endline();
    WriteModels(formatter, *header, modelsCount);
    formatter << Rule;
  }
  header->SelectModel(0);
}
