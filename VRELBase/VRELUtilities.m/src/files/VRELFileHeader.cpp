#include "VRELFileHeader.h"

#include <limits>

#include "VRELStreamFormatter.h"
#include "VRELStringAsciiCharUtil.h"

VRELFileHeader::VRELFileHeader() {
  models.resize(1);
}

int VRELFileHeader::GetModelsCount() {
  return models.size();
}

VRINResult VRELFileHeader::SelectModel(int index) {
  if (index < 0 || index == std::numeric_limits<int>::max()) return VREL_E_INVALID_ARGUMENT;
  if (index >= GetModelsCount()) ResizeModels(index + 1);
  currentModel = index;
  return VREL_S_OK;
}

VRINResult VRELFileHeader::Get(VRELString const& key, VRELValue& value) const {
  VRELTable const* const model = CurrentModel();
  if (model == nullptr) return VREL_E_FAIL;
  VRELValue keyValue(key);
  return model->Get(&keyValue, &value, nullptr);
}

VRINResult VRELFileHeader::Get(VRELString const& key, VRELString& value) const {
  VRELValue found;
  VRINResult const result = Get(key, found);
  if (result.IsSuccess()) found.GetValue(value);
  return result;
}

VRINResult VRELFileHeader::Set(VRELString const& key, VRELValue const& value) {
  VRELTable* const model = CurrentModel();
  if (model == nullptr) return VREL_E_FAIL;
  VRELValue const keyValue(key);
  return model->Set(&keyValue, &value, nullptr);
}

VRINResult VRELFileHeader::Set(VRELString const& key, VRELString const& value) {
  return Set(key, VRELValue(value));
}

VRINResult VRELFileHeader::AddSection(VRELString const& title) {
  VRELTable* const model = CurrentModel();
  if (model == nullptr) return VREL_E_FAIL;
  VRELValue const noKey;
  VRELValue const titleValue(title);
  return model->Set(&noKey, &titleValue, nullptr);
}

int VRELFileHeader::GetCount() const {
  VRELTable const* const model = CurrentModel();
  return model != nullptr ? model->GetRowsCount() : 0;
}

VRINResult VRELFileHeader::Get(int row, VRELString& key, VRELValue& value) const {
  VRELTable const* const model = CurrentModel();
  if (model == nullptr) return VREL_E_INVALID_ARGUMENT;
  VRELValue keyValue;
  VRINResult result = model->Get(row, &keyValue, &value, nullptr);
  if (result.IsSuccess() && !keyValue.IsValid()) key = VRELString();
  result &= keyValue.GetValue(key);
  return result;
}

VRELFileHeader::~VRELFileHeader() = default;

VRINResult VRELFileHeader::ResizeModels(int count) {
  if (count < 0) return VREL_E_INVALID_ARGUMENT;
  models.resize(count);
  return VREL_S_OK;
}

// Returns null if ResizeModels removed the current model.
VRELTable* VRELFileHeader::CurrentModel() {
  return currentModel < models.size() ? &models[currentModel] : nullptr;
}

VRELTable const* VRELFileHeader::CurrentModel() const {
  return currentModel < models.size() ? &models[currentModel] : nullptr;
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELFileHeader const& header) {
  for (int row = 0, count = header.GetCount(); row < count; ++row) {
    VRELString key;
    VRELValue value;
    bool const hasKey = header.Get(row, key, value).IsSuccess();
    bool const isHeading = !hasKey && key.length() == 0 && value.IsValid();
    if (!hasKey && !isHeading) continue;
    if (hasKey) {
      VRELStringAsciiCharUtil const ascii(key, false);
      char const* const text = ascii;
      formatter << formatter.format("%-24s : ", text != nullptr ? text : "");
    }
    formatter << value << formatter.endline();
  }
  return formatter;
}
