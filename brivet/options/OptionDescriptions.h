// Options that the installed format modules declare.
#pragma once

#include <string>
#include <string_view>

#include "VRELString.h"

// Returns whether a module has an option of this name, which may have leading tokens. Case is ignored.
bool IsModuleOption(VRELString const& name);

// Returns whether a module has an option of this name whose leading tokens are those of the option, or "*".
bool IsDeclaredOption(VRELString const& name);

// Returns whether an option of this name, which may have leading tokens, has an effect when one format is read and
// another written. `target` is empty if nothing is written.
bool HasEffect(VRELString const& name, std::string_view source, std::string_view target);

// Returns why the value of an option does not have the declared type: "expected On or Off, found 'abc'". Returns an
// empty string if a declaration accepts it, or if no module declares the option. With a source and a target only their
// declarations count, and each must accept the value.
std::string WhyInvalidValue(VRELString const& name, VRELString const& value);
std::string WhyInvalidValue(VRELString const& name, VRELString const& value, std::string_view source,
                            std::string_view target);

// Returns the known names that match a pattern, one per line, sorted. Those of the modules are followed by type,
// default and help. A pattern has the wildcards of file names and must match the whole name; without a wildcard it may
// match anywhere. An empty one matches all. Case is ignored.
std::string ListOptions(std::string const& pattern);

// Returns a description of the format with its options, and those of the evaluation of exact shapes if writing the
// format uses it; empty if there is no format of this name.
std::string DescribeFormat(std::string const& format);
