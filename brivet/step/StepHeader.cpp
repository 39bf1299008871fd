#include "StepHeader.h"

#include <algorithm>

#include "EscapedText.h"
#include "VRELFileHeader.h"
#include "VRELString.h"

namespace {

constexpr char const* DESCRIPTION[] = {"description", "implementation_level", nullptr};
constexpr char const* NAME[] = {
    "name",          "time_stamp", "author", "organization", "preprocessor_version", "originating_system",
    "authorization", nullptr};
constexpr char const* SCHEMA[] = {"schema_identifiers", nullptr};

VRELString KeyOf(std::string_view parameter) {
  if (parameter == "name") return VRELFileHeader::FILE_NAME;
  if (parameter == "author") return VRELFileHeader::AUTHOR;
  if (parameter == "organization") return VRELFileHeader::ORGANIZATION;
  return VRELString(std::string(parameter));
}

}  // namespace

char const* const* StepHeader::ParametersOf(std::string_view type) {
  if (type == "FILE_DESCRIPTION") return DESCRIPTION;
  if (type == "FILE_NAME") return NAME;
  if (type == "FILE_SCHEMA") return SCHEMA;
  return nullptr;
}

void StepHeader::BeginRecord(std::string_view type) {
  names = ParametersOf(type);
  parameters.clear();
  depth = 0;
  heading = type;
}

void StepHeader::EndRecord() {
  if (names == nullptr) return;
  // An empty heading keeps the entities apart.
  if (header.GetCount() != 0) header.AddSection(VRELString());
  header.AddSection(VRELString(heading));
  parameters.resize(std::max(parameters.size(), std::size_t(8)));
  for (std::size_t i = 0; names[i] != nullptr; ++i) SetRows(names[i], parameters[i]);
}

// A row for each text, from the second on with its number in the key.
void StepHeader::SetRows(char const* name, Parameter const& parameter) {
  VRELString const key = KeyOf(name);
  if (parameter.texts.empty()) header.Set(key, parameter.isSet ? "(none)" : "(unset)");
  for (std::size_t i = 0; i < parameter.texts.size(); ++i) {
    VRELString const rowKey = i == 0 ? key : VRELString(key.toUtf8() + " " + std::to_string(i + 1));
    header.Set(rowKey, VRELString(parameter.texts[i]));
  }
}

void StepHeader::String(Text const& text) {
  std::string shown;
  AppendEscapingControls(shown, text.utf8);
  Add(shown.empty() ? "(empty)" : shown);
}

void StepHeader::Reference(Id const& target, bool /*defined*/) {
  Add("#" + std::string(target.digits));
}

void StepHeader::Unset() {
  if (depth == 0) parameters.emplace_back();
}

void StepHeader::BeginList() {
  if (depth++ != 0) return;
  parameters.emplace_back();
  parameters.back().isSet = true;
}

void StepHeader::EndList() {
  --depth;
}

void StepHeader::BeginTyped(std::string_view /*type*/) {
  BeginList();
}

// A value outside of any list is a parameter of its own.
void StepHeader::Add(std::string_view shown) {
  if (names == nullptr) return;
  if (depth == 0) {
    parameters.emplace_back();
    parameters.back().isSet = true;
  }
  parameters.back().texts.emplace_back(shown);
}
