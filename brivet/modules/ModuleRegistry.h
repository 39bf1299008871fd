// Format modules that are installed, known by their manifests.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "FileTrust.h"
#include "ModuleDescription.h"

// Searches folders for manifests, one after the other, and only until it has what is wanted. A manifest is parsed only
// if it contains the name or the extension that is wanted. The first module of a name is used, and the first format
// with a name or an extension. Nothing is loaded.
//
// A module runs with the rights of this user, so that everything on its path must be trusted: a folder, a manifest or
// a module that an untrusted user owns or may write is skipped with a warning (see FileTrust), as are invalid
// manifests. So is a folder below one that an untrusted user may change, except the folder of the library: a user who
// can change it can replace the library. Symbolic links are resolved first. Folders that do not exist are skipped.
//
// Thread safety: one thread at a time.
class ModuleRegistry {
 public:
  enum Task { Reading, Writing, Evaluating };

  struct Module {
    std::string name;
    std::string manifest;           // path
    std::string library;            // path
    ModuleDescription description;  // as in the manifest
    std::string shadowedBy;         // the manifest of the module that is used instead; empty if this one is used
  };

  struct Match {
    Module const* module = nullptr;
    FormatDescription const* format = nullptr;
    explicit operator bool() const { return format != nullptr; }
  };

  explicit ModuleRegistry(std::vector<std::string> searchedFolders);
  ModuleRegistry(ModuleRegistry const&) = delete;
  ModuleRegistry& operator=(ModuleRegistry const&) = delete;

  // Returns the registry of the program: the folders of DefaultFolders.
  static ModuleRegistry& Get();
  // Returns the folders of BRIVET_MODULE_PATH, separated by colons, except relative ones and those that do not exist,
  // which are skipped with a warning; then "brivet" in the folder of libVRELBase.so, and that folder itself.
  static std::vector<std::string> DefaultFolders();

  // How all registries report warnings. They are reported at once unless it is set.
  enum WarningMode {
    Report,  // also reports those that were kept
    Keep,    // keeps them until another mode is set
    Drop,    // forgets them, with those that were kept
  };
  static void SetWarningMode(WarningMode mode);
  // Returns the folder of libVRELBase.so, without a final "/".
  static std::string LibraryFolder();

  // Return the first format with a name, an extension or a signature; nothing if there is none.
  Match FindName(std::string_view name, Task task);
  Match FindExtension(std::string_view extension, Task task);
  Match FindSignature(std::string_view begin);

  // Returns all modules, also those that are not used, in the order of the search.
  std::list<Module> const& All();

 private:
  static bool Does(FormatDescription const& format, Task task);
  struct File {
    std::string name;  // of the module
    std::string path;
    std::string bytes;
    bool isExamined = false;
    Module const* module = nullptr;
  };

  template <class Accept>
  Match FindFormat(std::string_view text, Accept const& accept);
  bool ReadNextFolder();
  void ReadManifest(int folder, std::string const& path, std::string const& file);
  Module const* Examine(File& file);

  std::vector<std::string> folders;
  std::size_t nextFolder = 0;
  std::vector<File> files;
  std::list<Module> modules;
  FileTrust trust;
};
