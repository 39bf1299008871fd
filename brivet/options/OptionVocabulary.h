// Option names that translators know, and suggestions for misspelled ones.
#pragma once

#include <string>
#include <vector>

#include "VRELString.h"

// Returns whether a translator may look up an option by this name: one that VRELOptionName finds valid or that
// VRINOptionName lists, alone or after a component, a component and a representation, or these and a direction, as
// VRINOptionName joins them. Case is ignored, and "*" matches any token:
//
//   ConvertAttributes   Step.ConvertAttributes   *.*.Reader.ConvertAttributes
bool IsKnownOption(VRELString const& name);

// Returns up to three known names in UTF-8, the closest first, whose Levenshtein distance from `name` is at most a
// third of its length. Case is ignored. Takes well below a millisecond for the thousand known names.
std::vector<std::string> ClosestOptions(VRELString const& name);

// Returns the names of ClosestOptions as a question: "did you mean 'a', 'b' or 'c'?"; empty if there is none.
std::string SuggestOptions(VRELString const& name);

// Returns all known settings, in UTF-8, without leading tokens; each once.
std::vector<std::string> KnownSettings();
