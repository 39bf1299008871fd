// Output file of a translation, replaced atomically.
#pragma once

#include <sys/stat.h>

#include <string>

#include "FileError.h"
#include "VRELOutputStream.h"

// Bytes are written to an unnamed file in the folder of the output, or to one with an unpredictable name where the file
// system does not support unnamed files. Commit synchronizes it with the disk and renames it to the output. Until then
// an existing output is unchanged, and the destructor leaves no temporary file.
//
// The new file has the permissions of the one that it replaces, and its owner and group as far as this user may set
// them. A symbolic link is followed. A hard link is not kept: the other names still refer to the old content. A device
// or a pipe is written to directly, and so are "-" and any name of the program's standard output.
//
//   OutputFile file("page.html", inputStatus, OutputFile::Synchronized);
//   writer.Write(&file);
//   file.Commit();
//
// Errors: FileError with VREL_E_FILE_SAVE if the output cannot be written or is the input; VRELAbortException if an
// abort is requested while an operation waits.
class OutputFile final : public VRELOutputStream {
 public:
  enum Durability { Synchronized, NotSynchronized };

  // `input` is the status of a file that is never overwritten.
  OutputFile(std::string const& path, struct stat const& input, Durability durability);
  ~OutputFile() override;
  OutputFile(OutputFile const&) = delete;
  OutputFile& operator=(OutputFile const&) = delete;

  // Returns `count`; -1 after the first failure, which Check and Commit report, and for a negative count.
  int write(char const* bytes, int count) override;
  void flush() override;
  void close() override { flush(); }

  bool IsStandardOutput() const noexcept { return isStandardOutput; }

  // Throws the error of the first write that failed.
  void Check() const;
  // Completes the output. Call it once, after the last byte. Throws the error of the first write that failed. After the
  // rename it neither fails nor allocates memory.
  void Commit();
  // Returns true once the output is in place.
  bool IsCommitted() const noexcept { return isCommitted; }

 private:
  void OpenDirectly();
  void OpenTemporary();
  void CreateTemporary();
  void KeepAttributes(struct stat const& replaced);
  void Synchronize();
  void LinkTemporary();
  void RenameIntoPlace();
  [[noreturn]] void Fail(int error) const;

  std::string const shownName;
  int descriptor = -1;
  bool isStandardOutput = false;
  bool isDirect = false;
  bool isSynchronized;
  bool isReplacement = false;
  bool isCommitted = false;
  int writeError = 0;
  std::string target;     // the path with all symbolic links resolved
  std::string folder;     // of the target, with a final slash
  std::string temporary;  // name of the temporary file; empty if it has none
  std::string buffer;
};

// Returns the error for an output that cannot be written: "cannot write 'page.html': it is the input file", "cannot
// write to standard output: No space left on device". "-" is standard output.
FileError MakeOutputError(std::string const& path, std::string const& reason);
