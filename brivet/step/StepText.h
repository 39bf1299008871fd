// The text that a string of an ISO 10303-21 file stands for.
#pragma once

#include <string>

#include "VRELString.h"

struct StepText {
  VRELString text;
  bool escaped = false;  // whether the string holds an escape, a broken or an unknown one too
};

// Decodes a string as StepScanner gives it: from left to right, \S\ with the character behind it, \X\ with two
// hexadecimal digits, and \X2\ and \X4\ with theirs up to \X0\ become what they stand for, a doubled backslash becomes
// one. A surrogate pair becomes one character, also when an escape ends between its halves. \P.\ stays as it stands,
// and \S\ behind it means ISO 8859-1 all the same. So does what only resembles an escape: a single backslash, a \S\ at
// the end, a \X2\ without quadruplets of digits or without its \X0\. Bytes beyond ASCII are read as UTF-8 or, where
// they are none, in the locale's encoding.
//
// Takes time in proportion to the length. Never fails.
StepText DecodeStepText(std::string const& raw);
