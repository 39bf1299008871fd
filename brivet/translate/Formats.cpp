#include "Formats.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>
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

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& byte : lower) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return lower;
}

template <std::size_t N>
Format const* Find(Format const (&table)[N], std::string_view path) {
  std::string const extension = Lower(ExtensionOf(path));
  if (extension.empty() || extension.find(' ') != extension.npos) return nullptr;
  std::string const word = " " + extension + " ";
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
  return Find(kWritten, WithoutGzipExtension(path));
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

std::string Format::OutputName(std::string_view input) const {
  std::string_view const file = WithoutGzipExtension(BaseNameOf(input == "-" ? "stdin" : input));
  return std::string(file.substr(0, file.size() - ExtensionOf(file).size())) + extension;
}

std::string_view WithoutGzipExtension(std::string_view path) {
  return IsGzipName(path) ? path.substr(0, path.size() - 3) : path;
}

bool IsGzipName(std::string_view path) {
  return Lower(ExtensionOf(path)) == ".gz";
}

std::string Format::WrittenExtensions() {
  std::string list;
  for (Format const& format : kWritten) {
    std::string_view rest = format.extensions;
    for (std::size_t end = 0; (end = rest.find(' ', 1)) != rest.npos; rest.remove_prefix(end)) {
      list += (list.empty() ? "" : ", ") + std::string(rest.substr(1, end - 1));
    }
  }
  return list;
}

std::string Format::Table() {
  std::string table;
  auto const add = [&table](Format const& format, char const* task) {
    char line[256];
    std::snprintf(line, sizeof line, "%-8s %-8s %-11s %-12s%s\n", format.name, format.title, task, format.module,
                  format.extensions);
    table += line;
    table.erase(table.size() - 2, 1);
  };
  for (Format const& format : kWritten) {
    bool const isRead = std::any_of(std::begin(kRead), std::end(kRead), [&format](Format const& each) {
      return std::string_view(each.name) == format.name;
    });
    add(format, isRead ? "read,write" : "write");
  }
  return table;
}

std::string Format::WrittenNames() {
  std::string names;
  for (Format const& format : kWritten) names += (names.empty() ? "" : ", ") + std::string(format.name);
  return names;
}
