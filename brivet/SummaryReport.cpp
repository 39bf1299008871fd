#include "SummaryReport.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "StepSummary.h"

namespace {

constexpr std::size_t NAME_WIDTH = 20;
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

std::string ShowText(VRELString const& text) {
  if (text.length() == 0) return "(empty)";
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
  return VRELString(std::u16string_view(shown)).toUtf8();
}

void AppendParameter(std::string& page, StepSummary::Parameter const& parameter) {
  std::string const start = "  " + PadRight(parameter.name, NAME_WIDTH) + "  ";
  if (!parameter.isSet) page += start + "(unset)\n";
  if (parameter.isSet && parameter.texts.empty()) page += start + "(none)\n";
  for (VRELString const& text : parameter.texts) page += start + ShowText(text) + "\n";
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
            ShowText(each.text) + "\n";
  }
}

}  // namespace

std::string FormatSummary(StepSummary const& summary) {
  std::string page;
  for (StepSummary::HeaderEntity const& entity : summary.header) {
    page += std::string(entity.name) + "\n";
    for (StepSummary::Parameter const& parameter : entity.parameters) AppendParameter(page, parameter);
    page += "\n";
  }
  AppendCount(page, "data sections", summary.dataSections);
  AppendCount(page, "entity instances", summary.simpleInstances + summary.complexInstances);
  AppendCount(page, "  simple", summary.simpleInstances);
  AppendCount(page, "  complex", summary.complexInstances);
  AppendCount(page, "escaped strings", summary.escapedStrings.size());
  AppendEscapedStrings(page, summary);
  return page;
}
