// The file that a translation writes.
#pragma once

#include <sys/stat.h>

#include <string>

#include "VRELOutputStream.h"

// Bytes go through a buffer into a file without a name beside their place, and Commit gives it the name: whatever
// happens before, what stood there stays as it was, and nothing else is left. A symbolic link is followed. What exists
// and is no regular file (a device, a pipe) is written to directly, and so are "-" and whatever else is the standard
// output of the program.
//
//   OutputFile file("page.html", input);
//   writer.Write(&file);
//   file.Commit();
//
// Throws InputError without a line (VREL_E_FILE_SAVE) for a place that cannot be written or that is the input, and
// VRELAbortException when an abort is asked for while it waits.
class OutputFile final : public VRELOutputStream {
 public:
  // The input is a file that is never written over.
  OutputFile(std::string const& place, struct stat const& input);
  ~OutputFile() override;
  OutputFile(OutputFile const&) = delete;
  OutputFile& operator=(OutputFile const&) = delete;

  // Takes all, or gives -1 once the system took less; Commit tells why.
  int write(char const* bytes, int count) override;
  void flush() override;
  void close() override { flush(); }

  // Whether the bytes go where the program's own words go.
  bool IsStandardOutput() const noexcept { return isStandardOutput; }

  // Throws what a failed write met, if there was one.
  void Check() const;
  // To be called once, behind the last byte. Throws what a failed write met.
  void Commit();

 private:
  void OpenDirectly(std::string const& place);
  void OpenBeside();
  bool MakeNamed();
  void GiveName();
  void RemoveNamed() noexcept;

  int descriptor = -1;
  bool isStandardOutput = false;
  bool isDirect = false;
  int writeError = 0;
  std::string target;     // behind all links
  std::string folder;     // of the target, with a slash at the end
  std::string temporary;  // a name that stands as long as it is not empty
  std::string buffer;
};
