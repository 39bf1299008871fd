// What an ISO 10303-21 file says about itself.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "VRELString.h"

class ByteSource;

struct StepSummary {
  // One parameter of a header entity: a string, a list of strings, or nothing.
  struct Parameter {
    char const* name = nullptr;  // as the format names it
    bool isSet = false;          // false for $ and for a parameter that the entity does not have
    std::vector<VRELString> texts;
  };

  struct HeaderEntity {
    char const* name = nullptr;
    std::size_t line = 0;  // where it begins; 0 as long as it was not met
    std::vector<Parameter> parameters;
  };

  struct EscapedString {
    std::size_t line = 0;  // where it begins
    std::string place;     // "#12", or in small letters the section: "header", "data", "anchor", "reference"
    VRELString text;
  };

  // FILE_DESCRIPTION, FILE_NAME, FILE_SCHEMA
  std::vector<HeaderEntity> header;
  std::size_t dataSections = 0;
  std::size_t simpleInstances = 0;
  std::size_t complexInstances = 0;
  std::vector<EscapedString> escapedStrings;  // in the file's order

  // Reads the file to the end of the exchange structure; what stands behind END-ISO-10303-21; is not looked at.
  // Throws StepError (VREL_E_INVALID_FILE) for a file that breaks the format, that gives two instances one id, or
  // that is cut off, and VRELAbortException once an abort is asked for (see Gk_ErrMgr): each instance polls. References
  // are not followed. Takes time in proportion to the bytes, and memory for the ids and
  // for what the summary holds.
  static StepSummary Read(ByteSource& source);
};
