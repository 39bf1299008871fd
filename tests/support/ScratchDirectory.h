// A directory of a test's own.
#pragma once

#include <string>

// Makes an empty directory and removes it at the end with all that it holds. What goes wrong is thrown as a
// std::runtime_error or a std::filesystem::filesystem_error.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(ScratchDirectory const&) = delete;
  ScratchDirectory& operator=(ScratchDirectory const&) = delete;

  // Absolute, without a slash at the end.
  std::string const& Path() const { return path; }
  // The absolute path of a name in here; the file need not exist.
  std::string Path(std::string const& name) const { return path + "/" + name; }

  // Writes a file, with the directories that lead to it, and returns its absolute path.
  std::string Write(std::string const& name, std::string const& bytes) const;
  // All bytes of a file.
  std::string Read(std::string const& name) const;
  // Whether there is anything by that name.
  bool Has(std::string const& name) const;

 private:
  std::string path;
};
