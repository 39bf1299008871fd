// Format modules that are installed, known by their manifests.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "ModuleDescription.h"

// Searches folders for manifests, one after the other, and only until it has what is wanted. A manifest is parsed only
// if it contains the name or the extension that is wanted. The first module of a name is used, and the first format
// with a name or an extension. Nothing is loaded.
//
// A folder that everybody may write, and a manifest or a module that everybody may write or that belongs to neither
// root, this user nor the owner of the library, are skipped with a warning, as are invalid manifests. Folders that do
// not exist are skipped.
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
  // Returns the folders of BRIVET_MODULE_PATH, separated by colons, except relative ones, which are skipped with a
  // warning; then "brivet" in the folder of libVRELBase.so, and that folder itself.
  static std::vector<std::string> DefaultFolders();
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
  bool IsTrusted(struct stat const& status) const;

  std::vector<std::string> folders;
  std::size_t nextFolder = 0;
  std::vector<File> files;
  std::list<Module> modules;
  unsigned libraryOwner;
};
