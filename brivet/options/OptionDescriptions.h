// Descriptions of the options of the format modules.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "VRELString.h"

struct OptionDescription {
  char const* name;          // the setting, without leading tokens
  char const* format;        // that reads or writes: "step"
  char const* task;          // "Reader" or "Writer"
  char const* type;          // "string", "integer"
  char const* defaultValue;  // as in an options file; empty for none
  char const* help;          // one line
};

// Returns whether a module has an option of this name, which may have leading tokens. Case is ignored.
bool IsModuleOption(VRELString const& name);

// Returns whether an option of this name, which may have leading tokens, has an effect when one format is read and
// another written. `target` is empty if nothing is written.
bool HasEffect(VRELString const& name, std::string_view source, std::string_view target);

// Returns the known names that match a pattern, one per line, sorted. Those of the modules are followed by type,
// default and help. A pattern has the wildcards of file names and must match the whole name; without a wildcard it may
// match anywhere. An empty one matches all. Case is ignored.
std::string ListOptions(std::string const& pattern);
