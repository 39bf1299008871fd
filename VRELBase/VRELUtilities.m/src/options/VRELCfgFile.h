// The library's one text format for settings: sections of keys, keys of values.
#pragma once

#include <cstdio>
#include <string_view>

#include "Gk_String.h"
#include "detail/VRELCfgFileIndex.h"
#include "VRELCfgFileSection.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELFilePath;

// Holds one or more files in memory, and the errors that were found in them and in reads of their values.
//
//   # a comment; so is a line that begins with a semicolon
//   unit = mm
//   [Import]
//   layers = 1,2,3
//
//   VRELCfgFile file;
//   if (file.Load(VRELFilePath("settings.cfg")) != VREL_S_OK) ...  // file.GetErrorMessage(0) says what is wrong
//   int layer = 0;
//   file.GetInt("layers", layer, 2, "Import");  // 1, and layer is 3
//
// White space (tab, blank, carriage return, line feed) counts nowhere at the ends of a line, a section's name, a key or
// its text. A section's name ends at the last "]" of its line. A key ends at the first "=", or at the first ":" where
// there is no "="; neither key nor text may be empty. The text is cut into values at each comma, with the blanks around
// commas kept: nothing escapes a comma, a quotation mark or a "#", and a byte-order mark belongs to the first line.
//
// A section that comes again goes on, a key that comes again is a further key. Keys in front of the first section, and
// behind "[]", belong to the default section, whose name is empty. Names differ by case.
//
// A line is read in pieces of at most 1023 bytes, and it is promised that each piece counts, and is understood, as a
// line of its own. Of a piece, what follows a zero byte is left out.
//
// Sections, keys and errors only ever gather, and belong to the object. One thread.
class VREL_EXPORT VRELCfgFile {
 public:
  VRELCfgFile();
  virtual ~VRELCfgFile();
  VRELCfgFile(VRELCfgFile const&) = delete;
  VRELCfgFile& operator=(VRELCfgFile const&) = delete;

  // Reads the stream, which stays the caller's, to its end. A bad line becomes an error and costs nothing else. It is
  // promised that VREL_E_FAIL tells of any error since the object was made. VREL_E_INVALID_ARGUMENT for null.
  VRINResult Load(std::FILE* stream);
  // The same with a file. VREL_E_INVALID_ARGUMENT for the empty path, VREL_E_FILE_OPEN for one that cannot be opened.
  VRINResult Load(VRELFilePath const& path);

  // The section of that name; null where there is none. A null name stands for the default section, here and below.
  VRELCfgFileSection* findSection(char const* name) const;
  // The same, but makes it, behind the others, where there is none.
  VRELCfgFileSection* createSection(char const* name);

  int GetErrorCount() const noexcept { return errorMessages.size(); }
  // Null for an index out of range. Good as long as the object lives.
  char const* GetErrorMessage(int index) const;
  // Adds an error. A text of more than 4095 bytes is cut; null adds nothing.
  void flagError(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);

  // Cuts white space from both ends, in place. Null is allowed.
  static void removeWhiteSpaces(char* text);

  bool ExistKey(char const* key, char const* section) const;
  // How many values the key has; 0 where there is no such key.
  int GetArraySize(char const* key, char const* section) const;

  // Read one value, by its index, of the first key of that name. They give 1, or 0 with `value` untouched. A key that
  // is not there adds no error; a value that is empty, not there, or not of the kind, adds one.
  //
  // Any text: an index out of range reads as the empty text, and no error is ever added.
  int GetString(char const* key, VRELString& value, int index, char const* section) const;
  // What Gk_StringParser takes for a real number and for an integer.
  int GetDouble(char const* key, double& value, int index, char const* section);
  int GetInt(char const* key, int& value, int index, char const* section);
  // TRUE or FALSE in any case, or an integer that is 0 or 1, gives 1 or 0. That GetBool takes no numbers is promised.
  int GetLogical(char const* key, int& value, int index, char const* section);
  int GetBool(char const* key, bool& value, int index, char const* section);

 private:
  void ReadLine(char* line, long lineNumber, VRELCfgFileSection*& current);
  VRELCfgFileSection* ReadSectionLine(char* line);
  VRELCfgFileKey const* FindKey(char const* key, char const* section) const;
  template <class T, class Parse>
  int Read(char const* key, T& value, int index, char const* section, char const* expected, Parse const& parse);

  VRELDynamicArray<VRELCfgFileSection*> sections;
  VRELDynamicArray<Gk_String> errorMessages;
  mutable VRELCfgFileIndex<std::string_view, VRELCfgFileSection> sectionIndex;
};
