// Identity of files that are known by their names.
#pragma once

#include <sys/types.h>

#include <string>

// The regular file that a name refers to, through any link, or the folder and name of one that does not exist yet. Two
// names of one file have equal identities. A device, a pipe and a folder equal nothing: writing to them replaces no
// file.
//
//   if (FileIdentity::OfOutput("q.txt") == FileIdentity::OfInput("./q.txt")) Refuse();
class FileIdentity {
 public:
  // "-" is standard input.
  static FileIdentity OfInput(std::string const& path);
  // "-" is standard output.
  static FileIdentity OfOutput(std::string const& path);

  friend bool operator==(FileIdentity const& a, FileIdentity const& b) {
    return a.isKnown && b.isKnown && a.device == b.device && a.node == b.node && a.name == b.name;
  }

 private:
  FileIdentity(std::string const& path, int standardStream);

  bool isKnown = false;
  dev_t device = 0;  // of the file, or of its folder if it does not exist
  ino_t node = 0;
  std::string name;  // of a file that does not exist; empty for one that exists
};

// Resolves the symbolic links of the last component of a path, which need not exist. Returns an empty string if there
// are too many.
std::string ResolveLinks(std::string const& path);
