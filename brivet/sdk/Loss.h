// Part of a document that could not be read.
#pragma once

#include <string>
#include <vector>

// A range of lines without what it should have contained. Both lines are counted from 1, or 0 if unknown. A document
// reports its losses in the order of the lines.
struct Loss {
  long firstLine = 0;
  long lastLine = 0;
  std::vector<std::string> instances;  // names of the lost instances as far as they can be read: "#5"
  std::string reason;                  // one line, without location and hint: "expected ')', found ';'"
};
