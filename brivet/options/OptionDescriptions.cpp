#include "OptionDescriptions.h"

#include <fnmatch.h>

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "OptionVocabulary.h"
#include "VRELStringConversions.h"

namespace {

constexpr OptionDescription kDescriptions[] = {
    {"Encoding", "step", "Reader", "string", "", "encoding of bytes that are not ASCII, by any name that ICU knows"},
    {"Encoding", "step", "Writer", "string", "", "encoding of characters that are not ASCII; escapes for the others"},
    {"FileLineLength", "step", "Writer", "integer", "0", "maximum length of a line; 0 for no limit"},
    {"AuthorName", "step", "Writer", "string", "", "replaces the authors of the header"},
    {"OrganizationName", "step", "Writer", "string", "", "replaces the organizations of the header"},
    {"PreProcessorVersion", "step", "Writer", "string", "", "replaces the preprocessor version of the header"},
    {"SendingSystemName", "step", "Writer", "string", "", "replaces the originating system of the header"},
    {"FileDescription", "step", "Writer", "string", "", "replaces the description of the header"},
};

std::string LastToken(VRELString const& name) {
  std::string const text = name.toUtf8();
  return text.substr(text.rfind('.') + 1);
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return VRELStringEqualsIgnoreCase(VRELString(std::string(a)).view(), VRELString(std::string(b)).view());
}

// Returns the token of a task in a name, if it has four tokens: "Reader" of "Step.*.Reader.Encoding".
std::string TaskOf(VRELString const& name) {
  std::string text = name.toUtf8();
  if (std::count(text.begin(), text.end(), '.') != 3) return "*";
  text.erase(text.rfind('.'));
  return text.substr(text.rfind('.') + 1);
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char byte) { return std::tolower(byte); });
  return text;
}

bool Matches(std::string const& pattern, std::string const& name) {
  if (pattern.find_first_of("*?[") == pattern.npos) return Lower(name).find(Lower(pattern)) != std::string::npos;
  return fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
}

}  // namespace

bool IsModuleOption(VRELString const& name) {
  std::string const token = LastToken(name);
  return std::any_of(std::begin(kDescriptions), std::end(kDescriptions),
                     [&token](OptionDescription const& each) { return EqualsIgnoringCase(each.name, token); });
}

bool HasEffect(VRELString const& name, std::string_view source, std::string_view target) {
  std::string const token = LastToken(name);
  std::string const task = TaskOf(name);
  return std::any_of(std::begin(kDescriptions), std::end(kDescriptions), [&](OptionDescription const& each) {
    bool const isReader = std::string_view(each.task) == "Reader";
    return (token == "*" || EqualsIgnoringCase(each.name, token)) &&
           (task == "*" || EqualsIgnoringCase(each.task, task)) && (isReader ? source : target) == each.format;
  });
}

std::string ListOptions(std::string const& pattern) {
  std::vector<std::string> lines;
  for (OptionDescription const& each : kDescriptions) {
    std::string const name = std::string("Step.*.") + each.task + "." + each.name;
    if (!Matches(pattern, name) && !Matches(pattern, each.name)) continue;
    char line[256];
    std::snprintf(line, sizeof line, "%-36s %-8s default: %-4s %s", name.c_str(), each.type,
                  *each.defaultValue != '\0' ? each.defaultValue : "none", each.help);
    lines.emplace_back(line);
  }
  for (std::string const& name : KnownSettings()) {
    if (!IsModuleOption(VRELString(name)) && Matches(pattern, name)) lines.push_back(name);
  }
  std::sort(lines.begin(), lines.end());
  std::string list;
  for (std::string const& line : lines) list += line + "\n";
  return list;
}
