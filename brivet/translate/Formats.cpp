#include "Formats.h"

#include <cstddef>
#include <string>

#include "PathNames.h"

namespace {

// The formats that can be read and those that can be written. The first of each table is the default.
constexpr Format kRead[] = {
    {"step", "STEP", "BrivetStep", ".stp", " .stp .step .p21 "},
};
constexpr Format kWritten[] = {
    {"html", "HTML", "BrivetHtml", ".html", " .html .htm "},
    {"text", "text", "BrivetText", ".txt", " .txt .text "},
    {"step", "STEP", "BrivetStep", ".stp", " .stp .step .p21 "},
    {"json", "JSON", "BrivetJson", ".json", " .json "},
};

template <std::size_t N>
Format const* Find(Format const (&table)[N], std::string_view path) {
  std::string word = " " + std::string(ExtensionOf(path)) + " ";
  if (word.size() == 2) return nullptr;
  for (char& byte : word) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  for (Format const& format : table) {
    if (std::string_view(format.extensions).find(word) != std::string_view::npos) return &format;
  }
  return nullptr;
}

}  // namespace

Format const& Format::OfInput(std::string_view path) {
  Format const* const format = Find(kRead, path);
  return format != nullptr ? *format : kRead[0];
}

Format const* Format::OfOutput(std::string_view path) {
  return Find(kWritten, path);
}

Format const* Format::Named(std::string_view name) {
  for (Format const& format : kWritten) {
    if (name == format.name) return &format;
  }
  return nullptr;
}

Format const& Format::Page() {
  return kWritten[0];
}

std::string Format::WrittenNames() {
  std::string names;
  for (Format const& format : kWritten) names += (names.empty() ? "" : ", ") + std::string(format.name);
  return names;
}
