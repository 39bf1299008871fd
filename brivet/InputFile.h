// A file that is open for reading.
#pragma once

#include <cstddef>
#include <string>

// A regular file, a pipe or a device; closed with the object. Throws StepError without a line when the file cannot be
// opened (VREL_E_FILE_NOT_FOUND, VREL_E_FILE_OPEN) or read (VREL_E_FILE_OPEN).
class InputFile {
 public:
  explicit InputFile(std::string const& path);
  ~InputFile();
  InputFile(InputFile const&) = delete;
  InputFile& operator=(InputFile const&) = delete;

  // Up to `size` bytes into `block`; 0 at the end of the file.
  std::size_t Read(char* block, std::size_t size);

 private:
  int descriptor;
};
