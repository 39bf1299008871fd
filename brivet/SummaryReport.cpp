#include "SummaryReport.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "StepSummary.h"
#include "Utf8StreamFormatter.h"
#include "VRELStringOutputStream.h"

namespace {

constexpr std::size_t COUNT_WIDTH = 18;

std::string PadRight(std::string_view text, std::size_t width) {
  return std::string(text) + std::string(width - std::min(width, text.size()), ' ');
}

std::string PadLeft(std::string_view text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + std::string(text);
}

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029;
}

VRELString ShowText(VRELString const& text) {
  if (text.length() == 0) return VRELString("(empty)");
  std::u16string shown;
  for (char16_t const unit : text.view()) {
    if (!IsControl(unit)) {
      shown += unit;
      continue;
    }
    char code[16];
    std::snprintf(code, sizeof code, "<U+%04X>", static_cast<unsigned int>(unit));
    shown.append(code, code + std::string_view(code).size());
  }
  return VRELString(std::u16string_view(shown));
}

// The key of a parameter: one of the header's own where it still shows the parameter's name, else that name.
VRELString KeyOf(std::string_view parameter) {
  if (parameter == "name") return VRELFileHeader::FILE_NAME;
  if (parameter == "author") return VRELFileHeader::AUTHOR;
  if (parameter == "organization") return VRELFileHeader::ORGANIZATION;
  return VRELString(std::string(parameter));
}

// A row for each text, from the second on with its number in the key.
void SetParameter(VRELFileHeader& header, StepSummary::Parameter const& parameter) {
  VRELString const key = KeyOf(parameter.name);
  if (parameter.texts.empty()) header.Set(key, VRELString(parameter.isSet ? "(none)" : "(unset)"));
  for (std::size_t i = 0; i < parameter.texts.size(); ++i) {
    VRELString const rowKey = i == 0 ? key : VRELString(key.toUtf8() + " " + std::to_string(i + 1));
    header.Set(rowKey, ShowText(parameter.texts[i]));
  }
}

std::string FormatHeader(StepSummary const& summary) {
  VRELStringOutputStream page;
  Utf8StreamFormatter out(&page);
  out << FileHeaderOf(summary) << out.endline();
  page.writeChar('\0');
  return page.contents();
}

void AppendCount(std::string& page, std::string const& name, std::size_t count) {
  page += PadRight(name, COUNT_WIDTH) + PadLeft(std::to_string(count), 10) + "\n";
}

void AppendEscapedStrings(std::string& page, StepSummary const& summary) {
  if (summary.escapedStrings.empty()) return;
  std::size_t lineWidth = 4;
  std::size_t placeWidth = 8;
  for (StepSummary::EscapedString const& each : summary.escapedStrings) {
    lineWidth = std::max(lineWidth, std::to_string(each.line).size());
    placeWidth = std::max(placeWidth, each.place.size());
  }
  page += "\n  " + PadLeft("line", lineWidth) + "  " + PadRight("instance", placeWidth) + "  text\n";
  for (StepSummary::EscapedString const& each : summary.escapedStrings) {
    page += "  " + PadLeft(std::to_string(each.line), lineWidth) + "  " + PadRight(each.place, placeWidth) + "  " +
            ShowText(each.text).toUtf8() + "\n";
  }
}

}  // namespace

VRELFileHeader FileHeaderOf(StepSummary const& summary) {
  VRELFileHeader header;
  for (StepSummary::HeaderEntity const& entity : summary.header) {
    if (header.GetCount() != 0) header.AddSection(VRELString());
    header.AddSection(VRELString(entity.name));
    for (StepSummary::Parameter const& parameter : entity.parameters) SetParameter(header, parameter);
  }
  return header;
}

std::string FormatSummary(StepSummary const& summary) {
  std::string page = FormatHeader(summary);
  AppendCount(page, "data sections", summary.dataSections);
  AppendCount(page, "entity instances", summary.simpleInstances + summary.complexInstances);
  AppendCount(page, "  simple", summary.simpleInstances);
  AppendCount(page, "  complex", summary.complexInstances);
  AppendCount(page, "escaped strings", summary.escapedStrings.size());
  AppendEscapedStrings(page, summary);
  return page;
}
