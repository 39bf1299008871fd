// The options of one run, and where they came from.
#pragma once

#include <string>
#include <vector>

#include "OptionSource.h"
#include "VRELOptions.h"
#include "VRINResult.h"

// Fills an option store from options files and settings. What comes later wins, as the store promises.
//
//   OptionSet options;
//   if (options.Add({OptionSource::Setting, "Assembly=On"}).IsSuccess()) Use(options.Store());
class OptionSet {
 public:
  // What a user should know of an option that is used all the same.
  struct Warning {
    std::string origin;  // "base.cfg:3", "-set Asembly=On"
    std::string text;    // one line
  };

  // Takes all that the source brings or, where there is anything wrong with it, nothing. What is wrong is reported by
  // ReportProblem, each fault of a file with its line. A file that cannot be read gives the result of InputFile, one
  // that breaks the format VREL_E_FAIL, a setting without "=", without a value, or with an empty token in its name
  // (see HasEmptyToken) VREL_E_INVALID_ARGUMENT.
  //
  // A name with an empty token in a file is passed over with a warning, as the store passes over it; a name that no
  // translator of the family knows (see IsKnownOption) is stored with one that names the closest known ones.
  VRINResult Add(OptionSource const& source);

  VRELOptions const& Store() const { return store; }
  VRELOptions& Store() { return store; }
  // The sources that were taken, and the warnings about them, in the order in which they came.
  std::vector<OptionSource> const& Sources() const { return sources; }
  std::vector<Warning> const& Warnings() const { return warnings; }
  // How often an unknown name was set.
  int UnknownCount() const { return unknown; }

 private:
  VRINResult AddFile(std::string const& path);
  VRINResult AddSetting(OptionSource const& source);
  void AddOption(VRELString const& name, VRELString const& value, std::string const& origin);

  void WarnOfUnknown(VRELString const& name, std::string const& origin);

  VRELOptions store;
  std::vector<OptionSource> sources;
  std::vector<Warning> warnings;
  int unknown = 0;
};
