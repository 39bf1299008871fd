// Reader of configuration files.
#pragma once

#include <cstdio>
#include <string_view>

#include "Gk_String.h"
#include "VRELCfgFileSection.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"
#include "detail/VRELCfgFileIndex.h"
#include "detail/VRELPrintfFormat.h"

class VRELFilePath;

// Parser and container for configuration files with sections, keys and lists of values. Syntax errors are recorded, and
// parsing continues.
//
//   # a comment; a line that begins with a semicolon is one too
//   unit = mm
//   [Import]
//   layers = 1,2,3
//
//   VRELCfgFile file;
//   if (file.Load(VRELFilePath("settings.cfg")) != VREL_S_OK) ...  // file.GetErrorMessage(0) says what is wrong
//   int layer = 0;
//   file.GetInt("layers", layer, 2, "Import");  // returns 1, and layer is 3
//
// White space (tab, blank, carriage return, line feed) is removed from both ends of lines, section names, keys and
// value lists. A section name ends at the last "]" of its line. A key ends at the first "=", or at the first ":" if
// there is no "="; neither the key nor the value list can be empty. A value list is split at each comma, and blanks
// around commas are kept. There are no quotes, no escapes and no comments at the end of a line; a byte order mark is
// part of the first line.
//
// A repeated section is continued; a repeated key is a further key. Keys before the first section, and after "[]",
// belong to the default section, whose name is empty. Names are case-sensitive.
//
// Compatibility: lines are read in pieces of at most 1023 bytes, and each piece is parsed as a line. The part of a
// piece after a zero byte is ignored.
//
// Ownership: sections, keys and errors belong to the object and are never removed.
// Thread safety: one thread at a time.
class VREL_EXPORT VRELCfgFile {
 public:
  VRELCfgFile();
  virtual ~VRELCfgFile();
  VRELCfgFile(VRELCfgFile const&) = delete;
  VRELCfgFile& operator=(VRELCfgFile const&) = delete;

  // Parses a stream to its end. The caller keeps the stream.
  // Errors: VREL_E_FAIL if there is any error, also from an earlier load or read; the lines without errors are kept.
  // VREL_E_INVALID_ARGUMENT for null.
  VRINResult Load(std::FILE* stream);
  // Parses a file.
  // Errors: VREL_E_INVALID_ARGUMENT for the empty path, VREL_E_FILE_OPEN if it cannot be opened.
  VRINResult Load(VRELFilePath const& path);

  // Returns the section of that name, or null. A null name is the default section, here and below.
  VRELCfgFileSection* findSection(char const* name) const;
  // Returns the section of that name, and appends it if it is missing.
  VRELCfgFileSection* createSection(char const* name);

  int GetErrorCount() const noexcept { return errorMessages.size(); }
  // Returns a message, or null for an index out of range. Valid as long as the object.
  char const* GetErrorMessage(int index) const;
  // Adds an error. Messages are cut at 4095 bytes; a null format adds nothing.
  void flagError(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);

  // Removes white space from both ends, in place. Null is allowed.
  static void removeWhiteSpaces(char* text);

  bool ExistKey(char const* key, char const* section) const;
  // Returns the number of values of a key; 0 if there is no such key.
  int GetArraySize(char const* key, char const* section) const;

  // Read the value at an index of the first key of that name. Return 1, or 0 with `value` unchanged. A missing key adds
  // no error; a value that is missing, empty, or of another kind adds one.

  // Reads a string. An index out of range reads as the empty string, and no error is added.
  int GetString(char const* key, VRELString& value, int index, char const* section) const;
  // Read a number that Gk_StringParser accepts as a whole.
  int GetDouble(char const* key, double& value, int index, char const* section);
  int GetInt(char const* key, int& value, int index, char const* section);
  // Read TRUE or FALSE in any case; GetLogical also 0 or 1.
  // Compatibility: GetBool does not accept numbers.
  int GetLogical(char const* key, int& value, int index, char const* section);
  int GetBool(char const* key, bool& value, int index, char const* section);

 private:
  void ReadLine(char* line, long lineNumber, VRELCfgFileSection*& current);
  VRELCfgFileKey const* FindKey(char const* key, char const* section) const;
  template <class T, class Parse>
  int Read(char const* key, T& value, int index, char const* section, char const* expected, Parse const& parse);

  VRELDynamicArray<VRELCfgFileSection*> sections;
  VRELDynamicArray<Gk_String> errorMessages;
  mutable VRELCfgFileIndex<std::string_view, VRELCfgFileSection> sectionIndex;
};
