// Where options come from on the command line.
#pragma once

#include <string>

struct OptionSource {
  enum Kind { File, Setting };

  Kind kind = File;
  std::string text;  // the name of an options file, or NAME=VALUE

  // As on the command line: "-options base.cfg", "-set Assembly=On".
  std::string Words() const { return (kind == File ? "-options " : "-set ") + text; }
};

// Cuts NAME=VALUE at its first "=" and takes white space from the ends of both, as an options file does. False for a
// text without a "=", with both as they were. Either may be empty.
bool SplitSetting(std::string const& text, std::string& name, std::string& value);
