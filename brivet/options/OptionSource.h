// Source of options on the command line, and the syntax of NAME=VALUE.
#pragma once

#include <string>
#include <string_view>

struct OptionSource {
  enum Kind { File, Setting };

  Kind kind = File;
  std::string text;  // the name of an options file, or NAME=VALUE

  // Returns the source as on the command line: "-options base.cfg", "-set Assembly=On".
  std::string Words() const { return (kind == File ? "-options " : "-set ") + text; }
};

// Splits NAME=VALUE at its first "=" and removes white space from the ends of both, as an options file does. Returns
// false and leaves both unchanged if there is no "=". Either may be empty.
bool SplitSetting(std::string const& text, std::string& name, std::string& value);

// Returns whether a dotted name is empty or has an empty token: ".a", "a..b", "a.". The option store refuses such a
// name and then misses options in its enumerations, so that it must not be stored.
bool HasEmptyToken(std::string_view name);
