// Errors that stop the reading of a file.
#pragma once

#include <string>

#include "VRINResult.h"

// Thrown by value where the content of a file breaks its format.
struct InputError {
  VRINResult result;  // a failure; decides the exit status of the program
  long line = 0;      // from 1; 0 if unknown
  std::string text;   // one line without the file's name: "expected ')', found ';'"
  long column = 0;    // in bytes, from 1; 0 if unknown
};

// Thrown by value where the system cannot read any more of a document. It is not an InputError, so that the recovery
// from those does not catch it. The program ends with VREL_E_FILE_OPEN.
struct ReadFailure {
  std::string text;
};
