#include "Formats.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <list>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "ModuleRegistry.h"
#include "PathNames.h"

namespace {

using Match = ModuleRegistry::Match;
using Module = ModuleRegistry::Module;

// The defaults, also if their modules are not installed: their use is then refused with the reason.
constexpr Format kStep = {"step", "STEP", "BrivetStep", ".stp", " .stp "};
constexpr Format kPage = {"html", "HTML", "BrivetHtml", ".html", " .html "};

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& byte : lower) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return lower;
}

std::string Joined(std::vector<std::string> const& extensions) {
  std::string text;
  for (std::string const& each : extensions) text += (text.empty() ? "" : " ") + each;
  return text;
}

// Returns the format of a match; null for none.
Format const* FormatOf(Match const& match) {
  struct Storage {
    std::string extensions;
    Format format;
  };
  static std::map<FormatDescription const*, Storage> all;
  if (!match) return nullptr;
  auto const [place, isNew] = all.try_emplace(match.format);
  Storage& storage = place->second;
  if (isNew) {
    FormatDescription const& format = *match.format;
    storage.extensions = " " + Joined(format.extensions) + " ";
    storage.format = {format.name.c_str(),          format.title.c_str(),       match.module->name.c_str(),
                      format.extensions[0].c_str(), storage.extensions.c_str(), match.module->library.c_str(),
                      &match.module->description};
  }
  return &storage.format;
}

// Returns the first bytes of a regular file; nothing of any other.
std::string FirstBytes(std::string const& path) {
  std::string bytes;
  struct stat status;
  // A pipe that is opened and closed again loses its writer.
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return bytes;
  int const descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return bytes;
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    bytes.resize(kRecognisedBytes);
    ssize_t const count = read(descriptor, bytes.data(), bytes.size());
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
  close(descriptor);
  return bytes;
}

Format const* FindInput(std::string_view path) {
  ModuleRegistry& registry = ModuleRegistry::Get();
  if (path == "-") return nullptr;
  std::string const extension = Lower(ExtensionOf(WithoutGzipExtension(path)));
  Match match = registry.FindExtension(extension, ModuleRegistry::Reading);
  if (!match) match = registry.FindSignature(FirstBytes(std::string(path)));
  return FormatOf(match);
}

// A row of the table of formats: its columns, and the rest of the line.
struct Row {
  std::array<std::string, 6> columns;
  std::string rest;
};

using Widths = std::array<std::size_t, 6>;

constexpr Widths kLeastWidths = {8, 8, 11, 12, 7, 17};

// Returns the number of characters of a UTF-8 string.
std::size_t LengthOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
}

Row MakeRow(Module const& module, FormatDescription const& format) {
  char const* const tasks = format.evaluates ? "evaluate"
                            : !format.writes ? "read"
                            : format.reads   ? "read,write"
                                             : "write";
  return {{format.name, format.title, tasks, module.name, module.description.version, Joined(format.extensions)},
          module.library};
}

std::string LineOf(Row const& row, Widths const& widths) {
  std::string line;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    std::size_t const length = LengthOf(row.columns[i]);
    line += row.columns[i] + std::string(std::max(widths[i], length) - length + 1, ' ');
  }
  return line + row.rest + "\n";
}

// Returns which module is used instead of this one: " (not used: PATH is before it)"; empty for none.
std::string ShadowNote(Module const& module, FormatDescription const& format) {
  ModuleRegistry& registry = ModuleRegistry::Get();
  if (!module.shadowedBy.empty()) return " (not used: " + module.shadowedBy + " is before it)";
  std::string note;
  for (auto const task : {ModuleRegistry::Reading, ModuleRegistry::Writing}) {
    if (!(task == ModuleRegistry::Reading ? format.reads : format.writes)) continue;
    Match const used = registry.FindName(format.name, task);
    if (used.format != &format) return " (not used: " + used.module->manifest + " is before it)";
    for (std::string const& extension : format.extensions) {
      Match const other = registry.FindExtension(extension, task);
      std::string const part = "; " + extension + " is of " + other.format->name + " in " + other.module->manifest;
      if (other.format != &format && note.find(part) == note.npos) note += part;
    }
  }
  return note.empty() ? "" : " (" + note.substr(2) + ")";
}

// Returns the names of the formats that can be written: first those that are only written, each group sorted.
std::vector<std::string> WritableFormats() {
  std::set<std::pair<bool, std::string>> found;
  for (Module const& module : ModuleRegistry::Get().All()) {
    if (!module.shadowedBy.empty()) continue;
    for (FormatDescription const& format : module.description.formats) {
      if (format.writes) found.emplace(format.reads, format.name);
    }
  }
  std::vector<std::string> names;
  names.reserve(found.size());
  for (auto const& each : found) names.push_back(each.second);
  return names;
}

std::string Listed(std::vector<std::string> const& words) {
  std::string list;
  for (std::string const& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

}  // namespace

Format const& Format::OfInput(std::string_view path) {
  Format const* format = FindInput(path);
  if (format == nullptr) format = FormatOf(ModuleRegistry::Get().FindName("step", ModuleRegistry::Reading));
  return format != nullptr ? *format : kStep;
}

Format const* Format::OfOutput(std::string_view path) {
  std::string const extension = Lower(ExtensionOf(WithoutGzipExtension(path)));
  return FormatOf(ModuleRegistry::Get().FindExtension(extension, ModuleRegistry::Writing));
}

Format const* Format::Named(std::string_view name) {
  return FormatOf(ModuleRegistry::Get().FindName(name, ModuleRegistry::Writing));
}

Format const* Format::OfEvaluation(std::string_view extension) {
  return FormatOf(ModuleRegistry::Get().FindExtension(extension, ModuleRegistry::Evaluating));
}

Format const& Format::Page() {
  Format const* const page = Named("html");
  return page != nullptr ? *page : kPage;
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
  for (std::string const& name : WritableFormats()) {
    for (std::string const& each : ModuleRegistry::Get().FindName(name, ModuleRegistry::Writing).format->extensions) {
      list += (list.empty() ? "" : ", ") + each;
    }
  }
  return list;
}

std::string Format::Table() {
  std::multimap<std::pair<bool, std::string>, Row> rows;
  Widths widths = kLeastWidths;
  for (Module const& module : ModuleRegistry::Get().All()) {
    for (FormatDescription const& format : module.description.formats) {
      Row row = MakeRow(module, format);
      row.rest += ShadowNote(module, format);
      for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], LengthOf(row.columns[i]));
      rows.emplace(std::make_pair(format.reads, format.name), std::move(row));
    }
  }
  std::string table;
  for (auto const& row : rows) table += LineOf(row.second, widths);
  return table;
}

std::string Format::WrittenNames() {
  return Listed(WritableFormats());
}
