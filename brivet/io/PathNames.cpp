#include "PathNames.h"

std::string_view BaseNameOf(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

std::string_view FolderOf(std::string_view path) {
  return path.substr(0, path.rfind('/') + 1);
}

std::string_view ExtensionOf(std::string_view path) {
  std::string_view const name = BaseNameOf(path);
  std::size_t const dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot);
}
