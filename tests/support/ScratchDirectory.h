// Temporary directory of a test.
#pragma once

#include <string>

// Creates an empty directory and removes it with its contents in the destructor.
// Errors: std::runtime_error, std::filesystem::filesystem_error.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(ScratchDirectory const&) = delete;
  ScratchDirectory& operator=(ScratchDirectory const&) = delete;

  // Returns the absolute path without a trailing slash.
  std::string const& Path() const { return path; }
  // Returns the absolute path of a file in the directory, which need not exist.
  std::string Path(std::string const& name) const { return path + "/" + name; }

  // Writes a file, creates its parent directories and returns its absolute path.
  std::string Write(std::string const& name, std::string const& bytes) const;
  // Returns the bytes of a file.
  std::string Read(std::string const& name) const;
  // Returns true if the name exists.
  bool Has(std::string const& name) const;

 private:
  std::string path;
};
