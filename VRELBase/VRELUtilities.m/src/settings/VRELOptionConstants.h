// Constants of option names.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"

// Maximum number of tokens of a name in a look-up; depth of the option store.
constexpr int VREL_OPTION_TOKENS = 7;
// Separator of the tokens of a name.
constexpr wchar_t VREL_OPTION_SEPARATOR = L'.';
// "*", the token that matches any token.
extern VREL_EXPORT VRELString const VREL_OPTION_WILDCARD;

// Scores of VRELOptionName::Match, lower is better: a match without wildcards, and no match.
constexpr int VREL_OPTION_EXACT_MATCH = 0;
constexpr int VREL_OPTION_NO_MATCH = 65535;
