#include "OptionSet.h"

#include "CatchAsResult.h"
#include "OptionVocabulary.h"
#include "OptionsFile.h"
#include "Diagnostics.h"

namespace {

constexpr std::size_t NAME_LIMIT = 100;

// A file that holds more unknown names is none of this family; its user is not helped by more.
constexpr int SUGGESTION_LIMIT = 100;

std::string Place(std::string const& path, std::size_t line) {
  return line == 0 ? path : path + ":" + std::to_string(line);
}

// A name for a message: whole, or its begin.
std::string Shown(VRELString const& name) {
  VRELString const begin = name.substring(0, static_cast<int>(NAME_LIMIT));
  return begin.toUtf8() + (begin.length() < name.length() ? "..." : "");
}

// "a", "a or b", "a, b or c".
std::string Alternatives(std::vector<std::string> const& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i != 0) text += i + 1 == names.size() ? " or " : ", ";
    text += names[i];
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
  bool isGood = false;
  VRINResult const result = CatchAsResult(path, [&]() -> VRINResult {
    OptionsFile const file = OptionsFile::Read(path);
    for (OptionsFile::Problem const& problem : file.problems) ReportProblem(Place(path, problem.line), problem.text);
    for (OptionsFile::Entry const& entry : file.entries) AddOption(entry.name, entry.value, Place(path, entry.line));
    if (file.keysInSections != 0) {
      warnings.push_back({Place(path, file.firstLineInSections),
                          "expected options above the first section header, found " +
                              std::to_string(file.keysInSections) + " below it, which are passed over"});
    }
    isGood = file.problems.empty();
    return VREL_S_OK;
  });
  return result.IsSuccess() && !isGood ? VRINResult(VREL_E_FAIL) : result;
}

VRINResult OptionSet::AddSetting(OptionSource const& source) {
  std::string name;
  std::string value;
  if (!SplitSetting(source.text, name, value) || HasEmptyToken(name) || value.empty()) {
    ReportProblem(source.Words(), "expected NAME=VALUE");
    return VREL_E_INVALID_ARGUMENT;
  }
  return CatchAsResult(source.Words(), [&] {
    AddOption(VRELString(name.c_str()), VRELString(value.c_str()), source.Words());
    return VRINResult(VREL_S_OK);
  });
}

void OptionSet::AddOption(VRELString const& name, VRELString const& value, std::string const& origin) {
  if (HasEmptyToken(name.toUtf8())) {
    warnings.push_back(
        {origin, "expected a name with something between its dots, found " + Shown(name) + ", which is passed over"});
    return;
  }
  store.AddOptionParseValue(name, value);
  if (!IsKnownOption(name)) WarnOfUnknown(name, origin);
}

void OptionSet::WarnOfUnknown(VRELString const& name, std::string const& origin) {
  ++unknown;
  std::string text = "unknown option " + Shown(name) + ", set all the same";
  if (unknown <= SUGGESTION_LIMIT) {
    std::vector<std::string> const closest = ClosestOptions(name);
    text += closest.empty() ? "; no known name is close to it" : "; did you mean " + Alternatives(closest) + "?";
  }
  warnings.push_back({origin, text});
}
