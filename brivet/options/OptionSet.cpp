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

std::string NotShown(int count, std::string const& kind) {
  return std::to_string(count) + " more " + kind + (count == 1 ? " was" : "s were") + " not shown";
}

bool IsKnown(VRELString const& name) {
  return IsKnownOption(name) || IsDeclaredOption(name);
}

}  // namespace

VRINResult OptionSet::Add(OptionSource const& source) {
  origins.push_back(source);
  VRINResult const result = source.kind == OptionSource::File ? AddFile(source) : AddSetting(source);
  if (result.IsSuccess()) sources.push_back(source);
  return result;
}

VRINResult OptionSet::AddFile(OptionSource const& source) {
  bool isValid = false;
  fileWarnings = 0;
  fileErrors = 0;
  VRINResult const result = CatchAsResult(source.text, [&]() -> VRINResult {
    OptionsFile const file = OptionsFile::Read(source.text);
    for (OptionsFile::Problem const& problem : file.problems) {
      if (++fileErrors <= kReportLimit) {
        ReportErrorAt({source.text, static_cast<long>(problem.line)}, problem.text);
      }
    }
    bool isAccepted = true;
    Origin origin{origins.size() - 1};
    for (OptionsFile::Entry const& entry : file.entries) {
      origin.line = static_cast<long>(entry.line);
      isAccepted = AddOption(entry.name, entry.value, origin) && isAccepted;
    }
    if (fileWarnings > kReportLimit) {
      AddWarning(source, 0, NotShown(fileWarnings - kReportLimit, "warning"));
    }
    if (file.keysInSections != 0) {
      AddWarning(source, static_cast<long>(file.firstLineInSections),
                 "options below a section header are ignored: " + std::to_string(file.keysInSections));
    }
    if (fileErrors > kReportLimit) ReportErrorAt({source.text}, NotShown(fileErrors - kReportLimit, "error"));
    isValid = file.problems.empty() && isAccepted;
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
    Origin const origin{origins.size() - 1};
    bool const isAccepted = AddOption(VRELString(name.c_str()), VRELString(value.c_str()), origin);
    return VRINResult(isAccepted ? VREL_S_OK : VREL_E_FAIL);
  });
}

bool OptionSet::AddOption(VRELString const& name, VRELString const& value, Origin const& origin) {
  if (HasEmptyToken(name.toUtf8())) {
    Warn(origin, "option name " + Quote(name) + " has an empty part between dots; it is ignored");
    return true;
  }
  std::string const reason = WhyInvalidValue(name, value);
  if (!reason.empty()) {
    if (origins[origin.source].kind == OptionSource::Setting || ++fileErrors <= kReportLimit)
      ReportInvalid({name, value, origin}, reason);
    return false;
  }
  if (!IsKnown(name)) WarnOfUnknown(name, origin);
  hasControls = hasControls || HasControls(name) || HasControls(value);
  entries.push_back({name, value, origin});
  store.AddOptionParseValue(name, value);
  return true;
}

void OptionSet::ReportInvalid(Entry const& entry, std::string const& reason) const {
  std::string const text = "option " + Quote(entry.name) + ": " + reason;
  OptionSource const& source = origins[entry.origin.source];
  if (source.kind == OptionSource::File) {
    ReportErrorAt({source.text, entry.origin.line}, text);
  } else {
    ReportProblem(source.Words(), text);
  }
}

VRINResult OptionSet::Check(std::string const& source, std::string const& target) const {
  VRINResult result = VREL_S_OK;
  int errors = 0;
  for (Entry const& entry : entries) {
    std::string const reason = WhyInvalidValue(entry.name, entry.value, source, target);
    if (reason.empty()) continue;
    if (++errors <= kReportLimit) ReportInvalid(entry, reason);
    result = VREL_E_FAIL;
  }
  if (errors > kReportLimit) ReportProblem(NotShown(errors - kReportLimit, "error"));
  return result;
}

void OptionSet::WarnOfUnknown(VRELString const& name, Origin const& origin) {
  ++unknownCount;
  bool const isReported = origins[origin.source].kind == OptionSource::Setting || fileWarnings < kReportLimit;
  std::string const suggestion = isReported && unknownCount <= kSuggestionLimit ? SuggestOptions(name) : "";
  Warn(origin, "unknown option " + Quote(name) + (suggestion.empty() ? "" : "; " + suggestion));
}

void OptionSet::Warn(Origin const& origin, std::string const& text) {
  OptionSource const& source = origins[origin.source];
  if (source.kind == OptionSource::Setting || ++fileWarnings <= kReportLimit) AddWarning(source, origin.line, text);
}

void OptionSet::AddWarning(OptionSource const& source, long line, std::string const& text) {
  Warning& warning = warnings.emplace_back();
  if (source.kind == OptionSource::File) {
    warning.location.file = source.text;
    warning.location.line = line;
  } else {
    warning.setting = source.Words();
  }
  warning.text = text;
}

void OptionSet::Dump() const {
  constexpr char kFormat[] = "%s = %s";
  if (!hasControls) {
    store.Dump(nullptr, kFormat, nullptr);
    return;
  }
  VRELOptions shown;
  for (Entry const& entry : entries) shown.AddOptionParseValue(Escaped(entry.name), Escaped(entry.value));
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
  for (Entry const& entry : entries) {
    std::string const name = entry.name.toUtf8();
    bool const isUnused = IsKnown(entry.name) && !HasEffect(entry.name, source, target);
    if (isUnused && reported.insert(name).second) {
      ReportMessage("note: option " + QuoteName(name) + " has no effect on this translation");
    }
  }
}
