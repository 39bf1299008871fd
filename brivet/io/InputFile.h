// File that is open for reading.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <string>

// Regular file, pipe or device, closed by the destructor.
//
// Errors: FileError with VREL_E_FILE_NOT_FOUND or VREL_E_FILE_OPEN if the file cannot be opened, and with
// VREL_E_FILE_OPEN if it cannot be read; VRELAbortException if an abort is requested while an operation waits.
class InputFile {
 public:
  explicit InputFile(std::string const& path);
  // Takes ownership of a descriptor; -1 for none. `shownName` is used in messages.
  InputFile(int openDescriptor, std::string shownName) noexcept
      : descriptor(openDescriptor), name(std::move(shownName)) {}
  ~InputFile();
  InputFile(InputFile&& other) noexcept;
  InputFile& operator=(InputFile&& other) noexcept;
  InputFile(InputFile const&) = delete;
  InputFile& operator=(InputFile const&) = delete;

  // Reads up to `size` bytes into `block`. Returns their number, 0 at the end of the file.
  std::size_t Read(char* block, std::size_t size);

  struct stat Status() const;
  int Descriptor() const noexcept { return descriptor; }

 private:
  int descriptor;
  std::string name;
};
