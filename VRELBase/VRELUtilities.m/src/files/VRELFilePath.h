// Path of a file: operations on its name, and file system calls by name.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

struct stat;

// Path of a file, stored as a UTF-16 string with forward slashes.
//
//   VRELFilePath const model("assembly\\wheel.STEP");            // stored as assembly/wheel.STEP
//   VRELFilePath const log = model.ReplaceLastExtension("log");  // assembly/wheel.log
//   VRELFilePath const part = VRELFilePath("assembly") + "bolt.step";
//
// Constructors replace backslashes by slashes. Nothing else is normalized: case, "." and "..", doubled and trailing
// slashes stay. The name is the part after the last slash, the directory the part before it.
//
// File system calls convert the path to the default codepage of the process, in a buffer of 4096 bytes with the
// terminator; a longer path is treated as a file that does not exist. Characters that the codepage lacks are replaced
// by its substitution character. No open file and no state of the file is kept.
//
// Operations call each other through the virtual table, so that a derived class can override single ones.
//
// Errors: no event is sent. Only ResolveAgainst throws: VRELAllocException if an allocation fails.
// Thread safety: none. GetCurrentWorkingDirectory and relative paths depend on the current directory of the process.
class VREL_EXPORT VRELFilePath {
 public:
  // Maximum size of a path in file system calls, in bytes with the terminator.
  static constexpr int maxByteCount = 4096;

  VRELFilePath();
  VRELFilePath(VRELFilePath const& other);
  VRELFilePath(VRELString const& text);
  // `text` is in the default codepage of the process. Null is the empty path.
  VRELFilePath(char const* text);

  virtual ~VRELFilePath();

  VRELFilePath& operator=(VRELFilePath const& other);

  // Return the index of the last "/", and of the last and first dot after it, or -1. They examine their argument only.
  // A backslash is not a separator.
  static int GetLastSeparatorIndex(VRELString const& text);
  static int GetLastExtensionIndex(VRELString const& text);
  static int GetFirstExtensionIndex(VRELString const& text);
  // Returns the index after the last "/", or 0.
  static int GetNameIndex(VRELString const& text);

  // Returns the whole path.
  virtual VRELString GetPath() const;
  // Returns the part after the last slash; empty for a path that ends in a slash.
  virtual VRELString GetName() const;
  // Return the name up to its first dot, up to its last dot, and after its last dot. Without a dot the first two return
  // the whole name and the last an empty string. The extension of ".profile" is "profile".
  virtual VRELString GetNameWithoutExtension() const;
  virtual VRELString GetNameWithoutLastExtension() const;
  virtual VRELString GetLastExtension() const;
  // Returns the part before the last slash; empty without a slash.
  //
  // Compatibility: the directory of "/name" is empty.
  virtual VRELString GetDirectory() const;

  // Returns whether the path is not empty. Does not access the file system.
  virtual bool IsValid() const;
  // Returns whether the path starts with a slash or backslash, or with any character, a colon and a slash or backslash.
  //
  // Compatibility: drives are recognized on every platform, and the first character is not examined: "1:/x" is
  // absolute, "C:" and "C:x" are not.
  virtual bool IsAbsolute() const;
  // Compares the last extension without regard to case. One dot at the start of `extension` is ignored.
  virtual bool HasLastExtensionIgnoringCase(VRELString const& extension) const;

  // Appends "." and the extension to this path.
  //
  // Compatibility: the dot is added even if `extension` starts with one, and backslashes in it stay.
  virtual void AddExtension(VRELString const& extension);
  // Returns a path with the last extension replaced, or with the extension appended if there is none. A dot is added
  // unless `extension` starts with one.
  virtual VRELFilePath ReplaceLastExtension(VRELString const& extension) const;
  // Returns a path in which `extension` replaces the name from its first dot, or is appended if there is no dot.
  //
  // Compatibility: no dot is added: ReplaceFirstExtension("new") of "a.b.c" is "anew".
  virtual VRELFilePath ReplaceFirstExtension(VRELString const& extension) const;

  // Finds a file whose path may come from another machine: appends ever longer tails of this path to the directory of
  // `base`, and returns the first path that exists. If none exists, returns the path with the longest tail; call
  // DoesFileExist() on the result. An absolute path that exists is returned unchanged. A path without a name returns
  // the empty path.
  //
  //   x/y/z.dat against /m/top.asm: /m/z.dat, /m/y/z.dat, /m/x/y/z.dat
  //
  // Components "." and components with a colon are skipped. If the path starts with two slashes, its first component is
  // a server and is skipped too. ".." is used like any other component, so that the result may be outside the directory
  // of `base`.
  virtual VRELFilePath ResolveAgainst(VRELFilePath& base) const;

  // Returns whether the file can be opened for reading.
  //
  // Compatibility: a file without read permission does not exist, a directory exists.
  virtual bool DoesFileExist() const;
  // Opens the file with fopen. Returns null on failure.
  //
  // Ownership: the caller closes the stream.
  virtual std::FILE* OpenFile(char const* mode) const;
  // Removes the file or empty directory. Returns whether it was removed.
  virtual bool RemoveFile() const;

  // Hook for derived classes. Does nothing; no constructor calls it.
  virtual void Initialize();

  // Replaces each backslash in `text` by a slash.
  virtual void FixSeparator(VRELString& text);

  // Returns this path and `appended`, with a slash between them unless this path ends in one. Joining "c" to the empty
  // path returns "/c".
  //
  // Compatibility: no slash is added if `appended` starts with a dot. This serves suffixes such as ".log", and applies
  // to "./x", ".." and hidden names too.
  VRELFilePath operator+(VRELString const& appended) const;

  // Convert the path to the default codepage of the process or to wide characters, with a terminator.
  //
  // Errors: VREL_E_FAIL if `size` is too small; the buffer is unchanged. Otherwise the result of the conversion.
  VRINResult GetMBCSBuffer(char* buffer, int size) const;
  VRINResult GetWideCharacterBuffer(wchar_t* buffer, int size) const;

  // Query the file system. Sizes are in bytes and dates in seconds since 1970. The creation date is the time of the
  // last status change.
  //
  // Errors: VREL_E_FAIL if the file does not exist; the argument is unchanged.
  VRINResult GetFileStats(struct stat& stats) const;
  VRINResult GetFileSize(long& size) const;
  VRINResult GetCreationDate(long& date) const;
  VRINResult GetLastAccessDate(long& date) const;
  VRINResult GetLastModificationDate(long& date) const;

  // Returns the current directory of the process; the empty path if it was removed or does not fit into 4096 bytes.
  static VRELFilePath GetCurrentWorkingDirectory();

 private:
  VRELString path;
};
