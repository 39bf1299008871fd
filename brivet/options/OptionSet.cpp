#include "OptionSet.h"

#include <set>

#include "CatchAsResult.h"
#include "EscapedText.h"
#include "FileError.h"
#include "OptionDescriptions.h"
#include "OptionVocabulary.h"
#include "OptionsFile.h"

namespace {

constexpr std::size_t kNameLimit = 100;

// A file with more unknown names is not an options file of brivet; more suggestions would not help.
constexpr int kSuggestionLimit = 100;

std::string Quote(VRELString const& name) {
  VRELString const begin = name.substring(0, static_cast<int>(kNameLimit));
  return QuoteName(begin.toUtf8() + (begin.length() < name.length() ? "..." : ""));
}

VRELString Escaped(VRELString const& text) {
  std::string escaped;
  AppendEscapingControls(escaped, text.toUtf8());
  return VRELString(escaped);
}

bool HasControls(VRELString const& text) {
  return Escaped(text).toUtf8() != text.toUtf8();
}

// Returns "'a'", "'a' or 'b'", "'a', 'b' or 'c'".
std::string Alternatives(std::vector<std::string> const& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i != 0) text += i + 1 == names.size() ? " or " : ", ";
    text += QuoteName(names[i]);
  }
  return text;
}

}  // namespace

VRINResult OptionSet::Add(OptionSource const& source) {
  VRINResult const result = source.kind == OptionSource::File ? AddFile(source.text) : AddSetting(source);
  if (result.IsSuccess()) sources.push_back(source);
  return result;
}

VRINResult OptionSet::AddFile(std::string const& path) {
  bool isValid = false;
  VRINResult const result = CatchAsResult(path, [&]() -> VRINResult {
    OptionsFile const file = OptionsFile::Read(path);
    for (OptionsFile::Problem const& problem : file.problems) {
      ReportErrorAt({path, static_cast<long>(problem.line)}, problem.text);
    }
    Warning origin;
    origin.location.file = path;
    for (OptionsFile::Entry const& entry : file.entries) {
      origin.location.line = static_cast<long>(entry.line);
      AddOption(entry.name, entry.value, origin);
    }
    if (file.keysInSections != 0) {
      origin.location.line = static_cast<long>(file.firstLineInSections);
      Warn(origin, "options below a section header are ignored: " + std::to_string(file.keysInSections));
    }
    isValid = file.problems.empty();
    return VREL_S_OK;
  });
  return result.IsSuccess() && !isValid ? VRINResult(VREL_E_FAIL) : result;
}

VRINResult OptionSet::AddSetting(OptionSource const& source) {
  std::string name;
  std::string value;
  if (!SplitSetting(source.text, name, value) || HasEmptyToken(name) || value.empty()) {
    ReportProblem(source.Words(), "not of the form NAME=VALUE");
    return VREL_E_INVALID_ARGUMENT;
  }
  return CatchAsResult(source.Words(), [&] {
    Warning origin;
    origin.setting = source.Words();
    AddOption(VRELString(name.c_str()), VRELString(value.c_str()), origin);
    return VRINResult(VREL_S_OK);
  });
}

void OptionSet::AddOption(VRELString const& name, VRELString const& value, Warning const& origin) {
  if (HasEmptyToken(name.toUtf8())) {
    Warn(origin, "option name " + Quote(name) + " has an empty part between dots; it is ignored");
    return;
  }
  if (!IsKnownOption(name)) WarnOfUnknown(name, origin);
  hasControls = hasControls || HasControls(name) || HasControls(value);
  entries.emplace_back(name, value);
  store.AddOptionParseValue(name, value);
}

void OptionSet::WarnOfUnknown(VRELString const& name, Warning const& origin) {
  ++unknownCount;
  std::string text = "unknown option " + Quote(name);
  if (unknownCount <= kSuggestionLimit) {
    std::vector<std::string> const closest = ClosestOptions(name);
    if (!closest.empty()) text += "; did you mean " + Alternatives(closest) + "?";
  }
  Warn(origin, text);
}

void OptionSet::Warn(Warning const& origin, std::string const& text) {
  warnings.push_back(origin);
  warnings.back().text = text;
}

void OptionSet::Dump() const {
  constexpr char kFormat[] = "%s = %s";
  if (!hasControls) {
    store.Dump(nullptr, kFormat, nullptr);
    return;
  }
  VRELOptions shown;
  for (auto const& [name, value] : entries) shown.AddOptionParseValue(Escaped(name), Escaped(value));
  shown.Dump(nullptr, kFormat, nullptr);
}

void OptionSet::ReportWarnings() const {
  for (Warning const& warning : warnings) {
    if (warning.location.file.empty()) {
      ReportWarning(warning.setting, warning.text);
    } else {
      ReportWarningAt(warning.location, warning.text);
    }
  }
}

void OptionSet::ReportWithoutEffect(std::string const& source, std::string const& target) const {
  std::set<std::string> reported;
  for (auto const& entry : entries) {
    std::string const name = entry.first.toUtf8();
    bool const isUnused = IsKnownOption(entry.first) && !HasEffect(entry.first, source, target);
    if (isUnused && reported.insert(name).second) {
      ReportMessage("note: option " + QuoteName(name) + " has no effect on this translation");
    }
  }
}
