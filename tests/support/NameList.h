// Reads the lists of names (.def files) of the source tree.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ListedName {
  std::string identifier;
  std::string text;
};

// Returns the entries of a list (a path below VRELBase/), in order. Empty if there is no such file.
std::vector<ListedName> ReadNameList(std::string const& path);

// Returns the 64-bit FNV-1a hash of all strings in order, each followed by a line feed.
std::uint64_t FingerprintOf(std::vector<ListedName> const& names);
