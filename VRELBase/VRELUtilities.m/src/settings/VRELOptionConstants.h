// What the paths of options are made of.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"

// The most tokens of a path that mean anything: the depth of the option store.
constexpr int VREL_OPTION_TOKENS = 7;
// Stands between the tokens of a path.
constexpr wchar_t VREL_OPTION_SEPARATOR = L'.';
// "*", the token that matches any token.
extern VREL_EXPORT VRELString const VREL_OPTION_WILDCARD;

// How well a name matches another, lower is better: without a wildcard, and not at all.
constexpr int VREL_OPTION_EXACT_MATCH = 0;
constexpr int VREL_OPTION_NO_MATCH = 65535;
