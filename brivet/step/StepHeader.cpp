#include "StepHeader.h"

#include <algorithm>

#include "EscapedText.h"
#include "VRELFileHeader.h"
#include "VRELString.h"

namespace {

constexpr int kRowLimit = 10'000;           // more rows are the result of damage
constexpr std::size_t kParameterLimit = 8;  // one more than an entity has

constexpr char const* kDescription[] = {"description", "implementation_level", nullptr};
constexpr char const* kName[] = {
    "name",          "time_stamp", "author", "organization", "preprocessor_version", "originating_system",
    "authorization", nullptr};
constexpr char const* kSchema[] = {"schema_identifiers", nullptr};

VRELString KeyOf(std::string_view parameter) {
  if (parameter == "name") return VRELFileHeader::FILE_NAME;
  if (parameter == "author") return VRELFileHeader::AUTHOR;
  if (parameter == "organization") return VRELFileHeader::ORGANIZATION;
  return VRELString(std::string(parameter));
}

}  // namespace

char const* const* StepHeader::ParametersOf(std::string_view type) {
  if (type == "FILE_DESCRIPTION") return kDescription;
  if (type == "FILE_NAME") return kName;
  if (type == "FILE_SCHEMA") return kSchema;
  return nullptr;
}

void StepHeader::BeginRecord(std::string_view type) {
  names = ParametersOf(type);
  parameters.clear();
  depth = 0;
  index = 0;
  heading = type;
}

void StepHeader::EndRecord() {
  if (names == nullptr || header.GetCount() > kRowLimit) return;
  // An empty heading separates the entities.
  if (header.GetCount() != 0) header.AddSection(VRELString());
  header.AddSection(VRELString(heading));
  parameters.resize(std::max(parameters.size(), kParameterLimit));
  for (std::size_t i = 0; names[i] != nullptr; ++i) SetRows(names[i], parameters[i]);
}

void StepHeader::SetRows(char const* name, Parameter const& parameter) {
  VRELString const key = KeyOf(name);
  if (parameter.count == 0) header.Set(key, parameter.isSet ? "(none)" : "(unset)");
  for (std::size_t i = 0; i < parameter.items.size(); ++i) {
    VRELString const rowKey = i == 0 ? key : VRELString(key.toUtf8() + " " + std::to_string(i + 1));
    header.Set(rowKey, VRELString(parameter.items[i]));
  }
  if (parameter.count <= kListLimit) return;
  header.Set(VRELString(key.toUtf8() + " (number)"), VRELString(std::to_string(parameter.count)));
}

void StepHeader::String(Text const& text) {
  std::string escaped;
  AppendEscapingControls(escaped, text.utf8);
  Add(escaped.empty() ? "(empty)" : escaped);
}

void StepHeader::Reference(Id const& target, bool /*defined*/) {
  Add("#" + std::string(target.digits));
}

void StepHeader::Unset() {
  if (depth == 0) AddParameter(false);
}

void StepHeader::BeginList() {
  if (depth++ == 0) AddParameter(true);
}

void StepHeader::EndList() {
  --depth;
}

// Parameters beyond those that the entities have are not stored.
void StepHeader::AddParameter(bool isSet) {
  if (++index > kParameterLimit) return;
  parameters.emplace_back();
  parameters.back().isSet = isSet;
}

// A value outside of any list is a parameter.
void StepHeader::Add(std::string_view item) {
  if (names == nullptr) return;
  if (depth == 0) AddParameter(true);
  if (index > kParameterLimit) return;
  Parameter& parameter = parameters.back();
  if (++parameter.count <= kListLimit) parameter.items.emplace_back(item);
}
