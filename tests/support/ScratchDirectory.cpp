#include "ScratchDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

ScratchDirectory::ScratchDirectory() : path((fs::temp_directory_path() / "vrel-test-XXXXXX").string()) {
  if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  fs::remove_all(path, ignored);
}

std::string ScratchDirectory::Write(std::string const& name, std::string const& bytes) const {
  std::string const file = Path(name);
  fs::create_directories(fs::path(file).parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << bytes;
  if (!stream.flush()) throw std::runtime_error("cannot write " + file);
  return file;
}

std::string ScratchDirectory::Read(std::string const& name) const {
  std::ifstream stream(Path(name), std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + Path(name));
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

bool ScratchDirectory::Has(std::string const& name) const {
  return fs::exists(fs::symlink_status(Path(name)));
}
