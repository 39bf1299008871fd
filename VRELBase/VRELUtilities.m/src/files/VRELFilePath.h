// The value by which the library names a file: path arithmetic, and the few calls that reach a file by its name.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

struct stat;

// A path held as wide text with forward slashes. Holds no open file and keeps nothing that it learnt of one.
//
//   VRELFilePath const model("assembly\\wheel.STEP");            // held as assembly/wheel.STEP
//   VRELFilePath const log = model.ReplaceLastExtension("log");  // assembly/wheel.log
//   VRELFilePath const part = VRELFilePath("assembly") + "bolt.step";
//
// Backslashes are turned into slashes on the way in and that is all: case, "." and "..", doubled and trailing slashes
// stay as they were given. The name is what follows the last slash, the directory what precedes it.
//
// Nothing here sends an event, or throws but for a VRELAllocException of ResolveAgainst. The file system is reached by
// the text in the process's default codepage, a bounded buffer of 4096 bytes, terminator included: a longer path names
// no file. Characters that the codepage lacks arrive as what the codepage puts in their place.
//
// The operations that lean on others call them through the virtual table, so a derived class may change one of them.
// A path is used on one thread at a time.
class VREL_EXPORT VRELFilePath {
 public:
  // Bytes that a path takes at most on its way to the file system, terminator included.
  static constexpr int maxByteCount = 4096;

  VRELFilePath();
  VRELFilePath(VRELFilePath const& other);
  VRELFilePath(VRELString const& text);
  // Bytes in the process's default codepage; null gives the empty path.
  VRELFilePath(char const* text);

  virtual ~VRELFilePath();

  VRELFilePath& operator=(VRELFilePath const& other);

  // Where the pieces of a path text begin. These read their argument alone, and a backslash is no separator to them.
  // -1 where there is none; a dot counts only at or behind the last slash.
  static int GetLastSeparatorIndex(VRELString const& text);
  static int GetLastExtensionIndex(VRELString const& text);
  static int GetFirstExtensionIndex(VRELString const& text);
  // Behind the last slash; 0 without one.
  static int GetNameIndex(VRELString const& text);

  // The whole text.
  virtual VRELString GetPath() const;
  // What follows the last slash: empty for a path that ends in one.
  virtual VRELString GetName() const;
  // The name up to its first dot, up to its last dot, and behind its last dot. A name without a dot is whole in the
  // first two and has no extension; ".profile" is all extension.
  virtual VRELString GetNameWithoutExtension() const;
  virtual VRELString GetNameWithoutLastExtension() const;
  virtual VRELString GetLastExtension() const;
  // What precedes the last slash; empty without one. That it is empty for "/name" too is promised.
  virtual VRELString GetDirectory() const;

  // Whether there is any text; says nothing of the file system.
  virtual bool IsValid() const;
  // Whether the text begins with a slash or a backslash, or with any one character, a colon and a slash or backslash.
  // Drives are known on every platform, and which character names the drive is not looked at: "1:/x" is absolute, "C:"
  // and "C:x" are not.
  virtual bool IsAbsolute() const;
  // Compares without regard to case; one dot at the front of the extension is left out.
  virtual bool HasLastExtensionIgnoringCase(VRELString const& extension) const;

  // Appends "." and the extension to this path. That a dot is added to ".x" as well, and that a backslash in the
  // extension stays, is promised.
  virtual void AddExtension(VRELString const& extension);
  // A new path whose last extension is this one, with one dot between, or with the extension appended where there was
  // none.
  virtual VRELFilePath ReplaceLastExtension(VRELString const& extension) const;
  // A new path where the extension replaces all from the name's first dot on, or is appended. That no dot is ever added
  // is promised: ReplaceFirstExtension("new") of "a.b.c" is "anew".
  virtual VRELFilePath ReplaceFirstExtension(VRELString const& extension) const;

  // Finds a file whose path may have been written on another machine: tries ever longer tails of this path under the
  // directory of `base` and returns the first that exists. An absolute path that exists is returned as it is. When
  // nothing exists, the longest tail is returned; ask DoesFileExist() of the result. Empty for a path without a name.
  //
  //   x/y/z.dat against /m/top.asm: /m/z.dat, /m/y/z.dat, /m/x/y/z.dat
  //
  // Components that are "." or hold a colon are left out; of a path that begins with two slashes so is the server.
  virtual VRELFilePath ResolveAgainst(VRELFilePath& base) const;

  // Whether the file can be opened for reading: a file that may not be read counts as absent, a directory as present.
  virtual bool DoesFileExist() const;
  // A stream opened by fopen, owned by the caller; null on failure.
  virtual std::FILE* OpenFile(char const* mode) const;
  // Removes the file, or the empty directory, and tells whether that succeeded.
  virtual bool RemoveFile() const;

  // A hook for derived classes; does nothing and is called by no constructor.
  virtual void Initialize();

  // Turns each backslash of the text into a slash.
  virtual void FixSeparator(VRELString& text);

  // A new path of this one and what is appended, with a slash between unless this path ends in one. A text that begins
  // with a dot is glued on without a slash, which serves suffixes such as ".log" and is promised for "./x", ".." and
  // hidden names too; "c" joined to the empty path is "/c".
  VRELFilePath operator+(VRELString const& appended) const;

  // The text in the process's default codepage, and in wide characters, in `size` units with the terminator.
  // VREL_E_FAIL, with the buffer as it was, when that is too few; otherwise what the conversion gives.
  VRINResult GetMBCSBuffer(char* buffer, int size) const;
  VRINResult GetWideCharacterBuffer(wchar_t* buffer, int size) const;

  // What the file system knows of the file: VREL_E_FAIL, with the argument as it was, when there is no such file. Sizes
  // are in bytes, dates in seconds since 1970; the creation date is the platform's time of the last status change.
  VRINResult GetFileStats(struct stat& stats) const;
  VRINResult GetFileSize(long& size) const;
  VRINResult GetCreationDate(long& date) const;
  VRINResult GetLastAccessDate(long& date) const;
  VRINResult GetLastModificationDate(long& date) const;

  // Empty when the process has no current directory any more.
  static VRELFilePath GetCurrentWorkingDirectory();

 private:
  VRELString path;
};
