// Options of one run and their sources.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Diagnostics.h"
#include "OptionSource.h"
#include "VRELOptions.h"
#include "VRINResult.h"

// Fills an option store from options files and settings. A later option replaces an earlier one of the same name.
//
//   OptionSet options;
//   if (options.Add({OptionSource::Setting, "Assembly=On"}).IsSuccess()) Use(options.Store());
class OptionSet {
 public:
  struct Warning {
    SourceLocation location;  // in an options file; without a file for a setting
    std::string setting;      // "-set Asembly=On"
    std::string text;         // one line
  };

  // Adds all options of a source, or none if it has an error. Errors are reported by ReportProblem, those of a file
  // with their lines.
  //
  // A name in a file with an empty token is skipped with a warning. An unknown name (see IsKnownOption) is stored with
  // a warning that suggests the closest known ones.
  // Errors: the results of OptionsFile::Read; VREL_E_FAIL for a file with syntax errors; VREL_E_INVALID_ARGUMENT for a
  // setting without "=", without a value or with an empty token in its name.
  VRINResult Add(OptionSource const& source);

  VRELOptions const& Store() const { return store; }
  VRELOptions& Store() { return store; }
  // Sends a message "NAME = VALUE" for each option in the store, as VRELOptions::Dump, with control characters escaped.
  void Dump() const;
  // Reports the warnings about the sources, in order of addition.
  void ReportWarnings() const;
  // Reports a note for each known name that was stored and that has no effect when one format is read and another written
  // (see HasEffect).
  void ReportWithoutEffect(std::string const& source, std::string const& target) const;
  // Return the sources that were added and the warnings about them, in order of addition.
  std::vector<OptionSource> const& Sources() const { return sources; }
  std::vector<Warning> const& Warnings() const { return warnings; }
  // Returns how many times an unknown name was set.
  int UnknownCount() const { return unknownCount; }

 private:
  VRINResult AddFile(std::string const& path);
  VRINResult AddSetting(OptionSource const& source);
  void AddOption(VRELString const& name, VRELString const& value, Warning const& origin);
  void WarnOfUnknown(VRELString const& name, Warning const& origin);

  void Warn(Warning const& origin, std::string const& text);

  VRELOptions store;
  std::vector<std::pair<VRELString, VRELString>> entries;  // all names and values that were stored
  bool hasControls = false;                                // one of them contains a control character
  std::vector<OptionSource> sources;
  std::vector<Warning> warnings;
  int unknownCount = 0;
};
