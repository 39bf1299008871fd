// A file that is open for reading.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <string>

// A regular file, a pipe or a device; closed with the object. Throws InputError without a line when the file cannot be
// opened (VREL_E_FILE_NOT_FOUND, VREL_E_FILE_OPEN) or read (VREL_E_FILE_OPEN), and VRELAbortException when an abort is
// asked for while it waits.
class InputFile {
 public:
  explicit InputFile(std::string const& path);
  // Takes a descriptor over; -1 for none.
  explicit InputFile(int openDescriptor) noexcept : descriptor(openDescriptor) {}
  ~InputFile();
  InputFile(InputFile&& other) noexcept;
  InputFile& operator=(InputFile&& other) noexcept;
  InputFile(InputFile const&) = delete;
  InputFile& operator=(InputFile const&) = delete;

  // Up to `size` bytes into `block`; 0 at the end of the file.
  std::size_t Read(char* block, std::size_t size);

  struct stat Status() const;
  int Descriptor() const noexcept { return descriptor; }

  // Throws what a file gives that meets this error of the system.
  [[noreturn]] static void Fail(int error);

 private:
  int descriptor;
};
