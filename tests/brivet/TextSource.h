// Documents for tests: texts as sources of bytes, and the files of the tree.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "ByteSource.h"
#include "StepError.h"
#include "StepSummary.h"

// Gives out the text in blocks of at most `blockSize` bytes; the text must outlive the source.
inline ByteSource TextSource(std::string_view text, std::size_t blockSize = 65536) {
  return ByteSource([text, blockSize](char* block, std::size_t size) mutable {
    std::size_t const count = std::min({text.size(), blockSize, size});
    std::memcpy(block, text.data(), count);
    text.remove_prefix(count);
    return count;
  });
}

inline StepSummary ReadSummary(std::string_view text) {
  ByteSource source = TextSource(text);
  return StepSummary::Read(source);
}

// "LINE: TEXT" of the error that stops the reading, "" where none does.
inline std::string ErrorOf(std::string_view text) {
  try {
    ReadSummary(text);
  } catch (StepError const& error) {
    return (error.result == VREL_E_INVALID_FILE ? "" : "wrong result ") + std::to_string(error.line) + ": " +
           error.text;
  }
  return "";
}

inline std::string FileText(std::string const& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

inline std::string BracketPath() {
  return VREL_SOURCE_DIR "/examples/bracket.stp";
}

// A document around the lines of its data section, which begin at line 7.
inline std::string Document(std::string const& data) {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
         "FILE_SCHEMA(('S'));ENDSEC;\nDATA;\n" +
         data + "ENDSEC;\nEND-ISO-10303-21;\n";
}
