// Options file with the line numbers of its entries.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "VRELString.h"

// The keys of a VRELCfgFile above its first section header, in order. A file with problems has no entries.
struct OptionsFile {
  struct Entry {
    VRELString name;
    VRELString value;      // not empty
    std::size_t line = 0;  // counted from 1
  };

  struct Problem {
    std::size_t line = 0;
    std::string text;  // the message of VRELCfgFile, or that the line is too long
  };

  static constexpr std::size_t kSizeLimit = std::size_t{1} << 20U;  // bytes
  static constexpr std::size_t kLineLimit = 1023;                   // bytes; VRELCfgFile splits longer lines

  std::vector<Entry> entries;
  std::vector<Problem> problems;        // sorted by line
  std::size_t keysInSections = 0;       // keys below a section header, which are no options
  std::size_t firstLineInSections = 0;  // line of the first of them; 0 if there is none

  // Reads a regular file, a pipe or a device to its end. Skips a UTF-8 byte order mark.
  // Errors: FileError as InputFile, and with VREL_E_INVALID_FILE for more than kSizeLimit bytes.
  static OptionsFile Read(std::string const& path);
  // Parses the bytes of a file.
  static OptionsFile Parse(std::string bytes);
};
