// The names of options that the family knows, and help with those that it does not know.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "VRELString.h"

// Whether the name has no token at all or an empty one between, before or behind its dots. The option store refuses
// such a name, and what it built of the path by then cuts its enumerations short: keep the name away from it.
bool HasEmptyToken(std::string_view name);

// Whether a translator of the family may look for an option by this name: one that VRELOptionName finds valid or that
// VRINOptionName offers, alone or behind a component, a component and a representation, or these and a direction, as
// VRINOptionName puts them together. Case does not count, and "*" stands for any token:
//
//   ConvertAttributes   Step.ConvertAttributes   *.*.Reader.ConvertAttributes
bool IsKnownOption(VRELString const& name);

// Known names that differ from this one by few letters put in, left out or changed, at most a third of it: the three
// closest, the closest first, in UTF-8. Case does not count. Empty where none is close. Takes well below a millisecond
// for the thousand names of the family.
std::vector<std::string> ClosestOptions(VRELString const& name);
