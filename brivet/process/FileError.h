// Error of the file system.
#pragma once

#include <string>
#include <string_view>

#include "VRINResult.h"

// Thrown by value where a file cannot be opened, read or written. Unlike an InputError it holds the complete message.
struct FileError {
  VRINResult result;    // a failure; decides the exit status of the program
  std::string message;  // one line: "cannot open 'part.stp': No such file or directory"
  std::string hint;     // what to do about it; may be empty
};

// Returns the error for `action` ("open", "read", "write") on a file, with the system's text for the error number.
FileError MakeFileError(VRINResult result, char const* action, std::string_view name, int error);

// Returns the name in single quotes for a message, with control characters as in EscapedText.h. Only the last 600 bytes
// of a longer name are shown, after "...".
std::string QuoteName(std::string_view name);
