// Syntax of one line of a configuration file.
#pragma once

#include "VRELExport.h"

// Line of a configuration file, without white space at its ends; see VRELCfgFile for the syntax.
struct VREL_EXPORT VRELCfgLine {
  enum Kind { kBlank, kSection, kKey, kBadSection, kBadKey };

  // Parses a line in place.
  static VRELCfgLine Parse(char* line);
  // Removes white space from both ends: returns the first byte that is kept, and terminates the string after the last
  // one.
  static char* Trimmed(char* text);

  Kind kind = kBlank;
  char* text = nullptr;   // the name of a section or of a key; the whole line if it is bad
  char* value = nullptr;  // the values of a key, separated by commas
};
