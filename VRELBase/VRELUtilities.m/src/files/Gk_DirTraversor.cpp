#include "Gk_DirTraversor.h"

#include <cstring>
#include <memory>
#include <string_view>

#include "VRELPathBytes.h"

Gk_DirTraversor::Gk_DirTraversor(Gk_DirElement const& theDirectory)
    : Gk_DirElement(theDirectory), directory(opendir(VRELPathBytes(theDirectory))) {}

Gk_DirTraversor::~Gk_DirTraversor() {
  close();
}

Gk_DirTraversor* Gk_DirTraversor::create(Gk_DirElement const& theDirectory) {
  std::unique_ptr<Gk_DirTraversor> traversor(new Gk_DirTraversor(theDirectory));
  traversor->read();
  return traversor->entry.isValid() ? traversor.release() : nullptr;
}

bool Gk_DirTraversor::next() {
  read();
  return entry.isValid();
}

void Gk_DirTraversor::readAll() {
  for (; entry.isValid(); read()) list.add(curName);
}

int Gk_DirTraversor::descriptor() const noexcept {
  return directory != nullptr ? dirfd(directory) : -1;
}

void Gk_DirTraversor::read() {
  entry = Gk_DirEntry(directory != nullptr ? readdir(directory) : nullptr);
  makeCurName(entry.name());
  if (!entry.isValid()) close();
}

void Gk_DirTraversor::makeCurName(char const* name) {
  curName.clear();
  if (name == nullptr) return;
  std::string_view const path = text();
  curName.appendBytes(path.data(), static_cast<int>(path.size()));
  curName.append('/');
  curName.appendBytes(name, static_cast<int>(std::strlen(name)) + 1);
}

void Gk_DirTraversor::close() noexcept {
  if (directory != nullptr) closedir(directory);
  directory = nullptr;
}
