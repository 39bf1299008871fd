#include "ModuleRegistry.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "Diagnostics.h"
#include "Manifest.h"
#include "PathNames.h"
#include "VRELLibraryManager.h"

namespace {

struct FolderCloser {
  void operator()(DIR* folder) const noexcept { closedir(folder); }
};

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() > end.size() && text.substr(text.size() - end.size()) == end;
}

// Open descriptor, closed by the destructor.
class OpenFile {
 public:
  explicit OpenFile(int opened) : descriptor(opened) {}
  ~OpenFile() {
    if (IsOpen()) close(descriptor);
  }
  OpenFile(OpenFile const&) = delete;
  OpenFile& operator=(OpenFile const&) = delete;

  bool IsOpen() const { return descriptor >= 0; }
  int Get() const { return descriptor; }

 private:
  int const descriptor;
};

std::string ReadAll(int descriptor, std::size_t size) {
  std::string bytes(size, '\0');
  std::size_t done = 0;
  while (done < size) {
    ssize_t const count = read(descriptor, bytes.data() + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  bytes.resize(done);
  return bytes;
}

struct Warnings {
  ModuleRegistry::WarningMode mode = ModuleRegistry::Report;
  std::vector<std::pair<std::string, std::string>> kept;
};

Warnings& TheWarnings() {
  static Warnings warnings;
  return warnings;
}

void Warn(std::string const& subject, std::string const& text) {
  Warnings& warnings = TheWarnings();
  if (warnings.mode == ModuleRegistry::Report) ReportWarning(subject, text);
  if (warnings.mode == ModuleRegistry::Keep) warnings.kept.emplace_back(subject, text);
}

// Returns the path without symbolic links; the path itself if it does not exist.
std::string Resolve(std::string const& path) {
  std::unique_ptr<char, decltype(&std::free)> const resolved(realpath(path.c_str(), nullptr), &std::free);
  return resolved != nullptr ? resolved.get() : path;
}

}  // namespace

ModuleRegistry::ModuleRegistry(std::vector<std::string> searchedFolders)
    : folders(std::move(searchedFolders)), trust(LibraryFolder()) {}

void ModuleRegistry::SetWarningMode(WarningMode mode) {
  Warnings& warnings = TheWarnings();
  warnings.mode = mode;
  if (mode == Keep) return;
  std::vector<std::pair<std::string, std::string>> const kept = std::move(warnings.kept);
  warnings.kept.clear();
  for (auto const& [subject, text] : kept) Warn(subject, text);
}

ModuleRegistry& ModuleRegistry::Get() {
  static ModuleRegistry registry(DefaultFolders());
  return registry;
}

std::vector<std::string> ModuleRegistry::DefaultFolders() {
  std::vector<std::string> folders;
  // Null in a program with the rights of another user, to which its caller must not add modules.
  char const* const variable = secure_getenv("BRIVET_MODULE_PATH");
  std::string_view rest = variable != nullptr ? variable : "";
  while (!rest.empty()) {
    std::string_view const folder = rest.substr(0, rest.find(':'));
    rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
    if (folder.empty()) continue;
    struct stat status;
    std::string const path(folder);
    if (path[0] != '/') {
      Warn("BRIVET_MODULE_PATH", "folder '" + path + "' is skipped: its path is relative");
    } else if (stat(path.c_str(), &status) != 0 && errno == ENOENT) {
      Warn("BRIVET_MODULE_PATH", "folder '" + path + "' is skipped: " + std::strerror(ENOENT));
    } else {
      folders.push_back(path);
    }
  }
  folders.push_back(LibraryFolder() + "/brivet");
  folders.push_back(LibraryFolder());
  return folders;
}

std::string ModuleRegistry::LibraryFolder() {
  Dl_info info;
  void* const address = reinterpret_cast<void*>(&VRELLibraryManager::FreeLibraries);
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return "";
  std::unique_ptr<char, decltype(&std::free)> const resolved(realpath(info.dli_fname, nullptr), &std::free);
  if (resolved == nullptr) return "";
  std::string const folder(FolderOf(resolved.get()));
  return folder.substr(0, folder.size() - 1);
}

template <class Accept>
ModuleRegistry::Match ModuleRegistry::FindFormat(std::string_view text, Accept const& accept) {
  std::size_t next = 0;
  do {
    for (; next < files.size(); ++next) {
      if (files[next].bytes.find(text) == std::string::npos) continue;
      Module const* const module = Examine(files[next]);
      if (module == nullptr || !module->shadowedBy.empty()) continue;
      for (FormatDescription const& format : module->description.formats) {
        if (accept(format)) return {module, &format};
      }
    }
  } while (ReadNextFolder());
  return {};
}

bool ModuleRegistry::Does(FormatDescription const& format, Task task) {
  return task == Reading ? format.reads : task == Writing ? format.writes : format.evaluates;
}

ModuleRegistry::Match ModuleRegistry::FindName(std::string_view name, Task task) {
  if (name.empty()) return {};
  return FindFormat(
      name, [name, task](FormatDescription const& format) { return format.name == name && Does(format, task); });
}

ModuleRegistry::Match ModuleRegistry::FindExtension(std::string_view extension, Task task) {
  if (extension.size() < 2) return {};
  return FindFormat(extension, [extension, task](FormatDescription const& format) {
    return Does(format, task) &&
           std::find(format.extensions.begin(), format.extensions.end(), extension) != format.extensions.end();
  });
}

ModuleRegistry::Match ModuleRegistry::FindSignature(std::string_view begin) {
  return FindFormat("signatures",
                    [begin](FormatDescription const& format) { return format.reads && format.Recognises(begin); });
}

std::list<ModuleRegistry::Module> const& ModuleRegistry::All() {
  FindFormat("", [](FormatDescription const&) { return false; });
  // Modules are examined when they are wanted; the order is that of the search.
  modules.sort([this](Module const& a, Module const& b) {
    auto const place = [this](Module const& module) {
      return std::find_if(files.begin(), files.end(), [&module](File const& file) { return file.module == &module; });
    };
    return place(a) < place(b);
  });
  return modules;
}

// Returns false if there is none.
bool ModuleRegistry::ReadNextFolder() {
  if (nextFolder == folders.size()) return false;
  std::string const folder = Resolve(folders[nextFolder++]);
  auto const skip = [&folder](std::string const& reason) {
    Warn(folder, "format modules are not searched here: " + reason);
    return true;
  };
  OpenFile const descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  struct stat status;
  if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0) {
    return errno == ENOENT || skip(std::strerror(errno));
  }
  std::string const danger = trust.WhyUntrusted(status);
  if (!danger.empty()) return skip("the folder " + danger);
  std::string const dangerAbove = trust.WhyUntrustedAbove(folder);
  if (!dangerAbove.empty()) return skip(dangerAbove);
  std::vector<std::string> names;
  std::unique_ptr<DIR, FolderCloser> const entries(opendir(folder.c_str()));
  while (entries != nullptr) {
    dirent const* const entry = readdir(entries.get());
    if (entry == nullptr) break;
    if (EndsWith(entry->d_name, Manifest::kExtension)) names.emplace_back(entry->d_name);
  }
  std::sort(names.begin(), names.end());
  for (std::string const& name : names) {
    std::string path = folder;
    path.append("/").append(name);
    ReadManifest(descriptor.Get(), path, name);
  }
  return true;
}

void ModuleRegistry::ReadManifest(int folder, std::string const& path, std::string const& file) {
  auto const skip = [&path](std::string const& reason) { Warn(path, "the format module is skipped: " + reason); };
  // Without O_NONBLOCK a pipe would block.
  OpenFile const descriptor(openat(folder, file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status;
  if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0) return skip(std::strerror(errno));
  if (!S_ISREG(status.st_mode)) return skip("the manifest is not a regular file");
  std::string const danger = trust.WhyUntrusted(status);
  if (!danger.empty()) return skip("the manifest " + danger);
  if (static_cast<std::size_t>(status.st_size) > Manifest::kSizeLimit) return skip("the manifest is too large");
  std::string const name = file.substr(0, file.size() - std::strlen(Manifest::kExtension));
  files.push_back({name, path, ReadAll(descriptor.Get(), static_cast<std::size_t>(status.st_size)), false, nullptr});
}

// Returns null, after a warning, if the manifest is invalid or the module cannot be trusted.
ModuleRegistry::Module const* ModuleRegistry::Examine(File& file) {
  if (file.isExamined) return file.module;
  file.isExamined = true;
  auto const skip = [&file](std::string const& reason) {
    Warn(file.path, "the format module is skipped: " + reason);
    return nullptr;
  };
  Manifest manifest = Manifest::Parse(file.bytes, file.name);
  if (!manifest.problem.empty()) return skip(manifest.problem);
  Module module;
  module.name = file.name;
  module.manifest = file.path;
  module.library = std::string(FolderOf(file.path)) + "lib" + file.name + ".so";
  struct stat status;
  // A module that is missing is reported when it is loaded.
  if (stat(module.library.c_str(), &status) == 0) {
    std::string danger = trust.WhyUntrusted(status);
    if (!danger.empty()) return skip("the module " + danger);
    // It may be a link to another folder.
    danger = trust.WhyUntrustedAbove(Resolve(module.library));
    if (!danger.empty()) return skip(danger);
  }
  module.description = std::move(manifest.module);
  for (File& earlier : files) {
    if (&earlier == &file) break;
    if (earlier.name == file.name && Examine(earlier) != nullptr && module.shadowedBy.empty()) {
      module.shadowedBy = earlier.path;
    }
  }
  modules.push_back(std::move(module));
  return file.module = &modules.back();
}
