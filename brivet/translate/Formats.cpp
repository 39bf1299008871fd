#include "Formats.h"

#include <string>

namespace {

// A format that is read is a line in the first table, one that is written a line in the second; the first lines serve
// where a name tells nothing.
constexpr Format READ[] = {
    {"step", "STEP", "BrivetStep", ".stp", " .stp .step .p21 "},
};
constexpr Format WRITTEN[] = {
    {"html", "HTML", "BrivetHtml", ".html", " .html .htm "},
    {"text", "text", "BrivetText", ".txt", " .txt .text "},
    {"step", "STEP", "BrivetStep", ".stp", " .stp .step .p21 "},
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
  Format const* const format = Find(READ, path);
  return format != nullptr ? *format : READ[0];
}

Format const* Format::OfOutput(std::string_view path) {
  return Find(WRITTEN, path);
}

Format const* Format::Named(std::string_view name) {
  for (Format const& format : WRITTEN) {
    if (name == format.name) return &format;
  }
  return nullptr;
}

Format const& Format::Page() {
  return WRITTEN[0];
}

std::string_view BaseNameOf(std::string_view path) {
  std::size_t const slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view ExtensionOf(std::string_view path) {
  std::string_view const name = BaseNameOf(path);
  std::size_t const point = name.rfind('.');
  return point == std::string_view::npos || point == 0 ? std::string_view() : name.substr(point);
}
