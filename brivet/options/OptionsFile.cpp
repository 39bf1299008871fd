#include "OptionsFile.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "FileError.h"
#include "InputFile.h"
#include "VRELCfgFile.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
};

// Finds the line numbers of keys and errors, which VRELCfgFile does not report. VRELCfgFile reads a line of more than
// 1023 bytes as several "pieces" and counts those; the scanner splits the file in the same way.
class LineScanner {
 public:
  explicit LineScanner(std::string const& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
      std::size_t const end = bytes.find('\n', at);
      std::size_t const length = std::min(bytes.size() - at, OptionsFile::kLineLimit);
      bool const endsLine = end < at + length;
      TakePiece(bytes.substr(at, endsLine ? end - at + 1 : length));
      at += endsLine ? end - at + 1 : length;
      isInLine = !endsLine;
      if (endsLine) ++line;
    }
  }

  std::vector<std::size_t> pieces;         // the line of each piece
  std::vector<std::size_t> keys;           // the line of each key of the default section, if there are no errors
  std::vector<std::size_t> keysElsewhere;  // the same for the other sections
  std::vector<std::size_t> overlong;       // lines of more than one piece

 private:
  void TakePiece(std::string piece) {
    pieces.push_back(line);
    VRELCfgFile::removeWhiteSpaces(piece.data());
    std::string_view const text(piece.c_str());
    if (text.empty()) return;
    if (isInLine && (overlong.empty() || overlong.back() != line)) overlong.push_back(line);
    if (text[0] == '#' || text[0] == ';') return;
    if (text[0] == '[') {
      isInDefaultSection = text.find_first_not_of(" \t\r\n", 1) == text.rfind(']');
    } else {
      (isInDefaultSection ? keys : keysElsewhere).push_back(line);
    }
  }

  std::size_t line = 1;
  bool isInLine = false;  // the piece continues a line
  bool isInDefaultSection = true;
};

void Load(VRELCfgFile& settings, std::string& bytes) {
  if (bytes.empty()) return;
  std::unique_ptr<std::FILE, FileCloser> const stream(fmemopen(bytes.data(), bytes.size(), "r"));
  if (stream == nullptr) throw std::bad_alloc();
  settings.Load(stream.get());
}

// Returns the number of the piece in a message of VRELCfgFile, or 0.
std::size_t PieceOf(char const* message) {
  long piece = 0;
  return std::sscanf(message, "Incorrect syntax: line %ld:", &piece) == 1 && piece > 0 ? static_cast<std::size_t>(piece)
                                                                                       : 0;
}

std::vector<OptionsFile::Problem> ProblemsOf(VRELCfgFile& settings, LineScanner const& lines) {
  std::vector<OptionsFile::Problem> problems;
  for (std::size_t const line : lines.overlong) {
    problems.push_back({line, "line is longer than " + std::to_string(OptionsFile::kLineLimit) + " bytes"});
  }
  for (int i = 0; i < settings.GetErrorCount(); ++i) {
    std::size_t const piece = PieceOf(settings.GetErrorMessage(i));
    bool const isKnown = piece >= 1 && piece <= lines.pieces.size();
    problems.push_back({isKnown ? lines.pieces[piece - 1] : 0, settings.GetErrorMessage(i)});
  }
  std::stable_sort(problems.begin(), problems.end(),
                   [](OptionsFile::Problem const& a, OptionsFile::Problem const& b) { return a.line < b.line; });
  return problems;
}

}  // namespace

OptionsFile OptionsFile::Read(std::string const& path) {
  InputFile input(path);
  std::string bytes;
  std::vector<char> block(65536);
  while (std::size_t const count = input.Read(block.data(), block.size())) {
    bytes.append(block.data(), count);
    if (bytes.size() > kSizeLimit) {
      throw FileError{VREL_E_INVALID_FILE,
                      "cannot read " + QuoteName(path) + ": larger than the limit for options files of " +
                          std::to_string(kSizeLimit) + " bytes",
                      ""};
    }
  }
  return Parse(std::move(bytes));
}

OptionsFile OptionsFile::Parse(std::string bytes) {
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) bytes.erase(0, 3);
  VRELCfgFile settings;
  Load(settings, bytes);
  LineScanner const lines(bytes);
  OptionsFile file;
  file.problems = ProblemsOf(settings, lines);
  if (!file.problems.empty()) return file;
  VRELCfgFileSection const* const section = settings.findSection("");
  int const count = section != nullptr ? section->GetNumKeys() : 0;
  for (int i = 0; i < count; ++i) {
    VRELCfgFileKey const& key = *section->GetKey(i);
    std::size_t const place = static_cast<std::size_t>(i);
    file.entries.push_back({key.GetName(), key.GetAllValues(), place < lines.keys.size() ? lines.keys[place] : 0});
  }
  file.keysInSections = lines.keysElsewhere.size();
  if (file.keysInSections != 0) file.firstLineInSections = lines.keysElsewhere.front();
  return file;
}
