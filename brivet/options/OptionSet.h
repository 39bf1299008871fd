// Options of one run and their sources.
#pragma once

#include <cstddef>
#include <string>
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
  // Only the first kReportLimit warnings and errors of an options file are kept and reported; the number of the others
  // follows them.
  static constexpr int kReportLimit = 100;

  struct Warning {
    SourceLocation location;  // in an options file; without a file for a setting
    std::string setting;      // "-set Asembly=On"
    std::string text;         // one line
  };

  // Adds all options of a source, or none if it has an error. Errors are reported by ReportProblem, those of a file
  // with their lines.
  //
  // A name in a file with an empty token is skipped with a warning. An unknown name (see IsKnownOption) is stored with
  // a warning; the first hundred suggest the closest known ones.
  // Errors: the results of OptionsFile::Read; VREL_E_FAIL for a file with syntax errors; VREL_E_INVALID_ARGUMENT for a
  // setting without "=", without a value or with an empty token in its name. A value that no module accepts (see
  // WhyInvalidValue) is an error as well: VREL_E_FAIL.
  VRINResult Add(OptionSource const& source);

  // Reports each option whose value does not have the type that the format that is read or the one that is written
  // declares for it. `target` is empty if nothing is written.
  //
  // Errors: VREL_E_FAIL if there is any.
  VRINResult Check(std::string const& source, std::string const& target) const;

  VRELOptions const& Store() const { return store; }
  VRELOptions& Store() { return store; }
  // Sends a message "NAME = VALUE" for each option in the store, as VRELOptions::Dump, with control characters escaped.
  void Dump() const;
  // Reports the warnings about the sources, in order of addition.
  void ReportWarnings() const;
  // Reports a note for each known name that was stored and that has no effect when one format is read and another
  // written (see HasEffect).
  void ReportWithoutEffect(std::string const& source, std::string const& target) const;
  // Return the sources that were added and the warnings about them, in order of addition.
  std::vector<OptionSource> const& Sources() const { return sources; }
  std::vector<Warning> const& Warnings() const { return warnings; }
  // Returns how many times an unknown name was set.
  int UnknownCount() const { return unknownCount; }

 private:
  // Where an option was set.
  struct Origin {
    std::size_t source = 0;  // index in origins
    long line = 0;           // of a file
  };
  struct Entry {
    VRELString name;
    VRELString value;
    Origin origin;
  };

  VRINResult AddFile(OptionSource const& source);
  VRINResult AddSetting(OptionSource const& source);
  // Returns false, after a report, if the value is invalid.
  bool AddOption(VRELString const& name, VRELString const& value, Origin const& origin);
  void ReportInvalid(Entry const& entry, std::string const& reason) const;
  void WarnOfUnknown(VRELString const& name, Origin const& origin);
  void Warn(Origin const& origin, std::string const& text);
  void AddWarning(OptionSource const& source, long line, std::string const& text);

  VRELOptions store;
  std::vector<Entry> entries;         // all names and values that were stored
  bool hasControls = false;           // one of them contains a control character
  std::vector<OptionSource> origins;  // all sources, also those with errors
  std::vector<OptionSource> sources;  // those that were added
  std::vector<Warning> warnings;
  int unknownCount = 0;
  int fileWarnings = 0;  // about the file that is added
  int fileErrors = 0;
};
