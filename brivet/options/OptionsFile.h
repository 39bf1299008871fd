// A file of options, with the lines where they stand.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "VRELString.h"

// What VRELCfgFile makes of a file: the keys above the first section header, in their order. Either all of the file is
// good, or there are problems and no entries.
struct OptionsFile {
  struct Entry {
    VRELString name;
    VRELString value;      // not empty
    std::size_t line = 0;  // counted from 1
  };

  struct Problem {
    std::size_t line = 0;
    std::string text;  // the message of VRELCfgFile, or what a line that it would cut is told
  };

  static constexpr std::size_t SIZE_LIMIT = std::size_t{1} << 20U;  // bytes
  static constexpr std::size_t LINE_LIMIT = 1023;                   // bytes; VRELCfgFile reads no longer lines

  std::vector<Entry> entries;
  std::vector<Problem> problems;        // by line
  std::size_t keysInSections = 0;       // which are no options
  std::size_t firstLineInSections = 0;  // of these keys; 0 where there are none

  // Reads a regular file, a pipe or a device to its end; a UTF-8 byte order mark in front is passed over. Throws
  // InputError, as InputFile does, and with VREL_E_INVALID_FILE for more than SIZE_LIMIT bytes.
  static OptionsFile Read(std::string const& path);
  // The same with the bytes of a file.
  static OptionsFile Parse(std::string bytes);
};
