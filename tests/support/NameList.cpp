#include "NameList.h"

#include <cstddef>
#include <fstream>

std::vector<ListedName> ReadNameList(std::string const& path) {
  std::string const open = "VREL_NAME(";
  std::string const middle = ", \"";
  std::string const close = "\")";
  std::vector<ListedName> names;
  std::ifstream file(VREL_LIBRARY_SOURCES "/" + path);
  for (std::string line; std::getline(file, line);) {
    std::size_t const comma = line.find(middle);
    if (line.rfind(open, 0) != 0 || comma == line.npos || line.size() < comma + middle.size() + close.size()) continue;
    std::size_t const end = line.size() - close.size();
    if (line.compare(end, close.size(), close) != 0) continue;
    std::size_t const text = comma + middle.size();
    names.push_back({line.substr(open.size(), comma - open.size()), line.substr(text, end - text)});
  }
  return names;
}

std::uint64_t FingerprintOf(std::vector<ListedName> const& names) {
  std::uint64_t fingerprint = 0xCBF29CE484222325;
  for (ListedName const& name : names) {
    for (char const c : name.text + '\n') fingerprint = (fingerprint ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  }
  return fingerprint;
}
