// The vocabularies of names, read from the lists in the source tree as text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ListedName {
  std::string identifier;
  std::string text;
};

// The lines of a list (a path below VRELBase/), in order. Empty when there is no such list.
std::vector<ListedName> ReadNameList(std::string const& path);

// One number for all texts in their order: FNV-1a, of 64 bits, over each text and a line feed behind it.
std::uint64_t FingerprintOf(std::vector<ListedName> const& names);
