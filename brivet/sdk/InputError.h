// What stops the reading of a file.
#pragma once

#include <string>

#include "VRINResult.h"

// Thrown by value. The text is one line without the file's name; it reads "expected ..., found ...".
struct InputError {
  VRINResult result;  // a failure; it decides the exit status of the program
  long line = 0;      // counted from 1; 0 where no line can be named
  std::string text;
};

// Thrown by value where the system cannot read a document on: nobody who passes over an InputError passes over this.
// The text is as there; the program ends with VREL_E_FILE_OPEN.
struct ReadFailure {
  std::string text;
};
