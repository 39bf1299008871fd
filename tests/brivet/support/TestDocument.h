// Documents for tests.
#pragma once

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

inline std::string FileText(std::string const& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

inline std::string BracketPath() {
  return VREL_SOURCE_DIR "/examples/bracket.stp";
}

// A document around the lines of its data section, which begin at line 7.
inline std::string DocumentText(std::string const& data) {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
         "FILE_SCHEMA(('S'));ENDSEC;\nDATA;\n" +
         data + "ENDSEC;\nEND-ISO-10303-21;\n";
}
