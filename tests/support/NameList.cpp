#include "NameList.h"

#include <fstream>
#include <regex>

std::vector<ListedName> ReadNameList(std::string const& path) {
  static std::regex const line(R"re(VREL_NAME\((\w+), "([^"]*)"\))re");
  std::vector<ListedName> names;
  std::ifstream file(VREL_LIBRARY_SOURCES "/" + path);
  for (std::string text; std::getline(file, text);) {
    std::smatch match;
    if (std::regex_match(text, match, line)) names.push_back({match[1], match[2]});
  }
  return names;
}
