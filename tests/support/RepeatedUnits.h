// Huge strings that need little memory.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <string>
#include <string_view>

// Maps `units` UTF-16 units, all of the same value, and zeros after them, with the memory of 2 MiB only.
class RepeatedUnits {
 public:
  RepeatedUnits(char16_t unit, std::size_t units) : count(units), size(units * sizeof(char16_t)) {
    constexpr std::size_t block = std::size_t(1) << 21;
    std::u16string const content(block / sizeof(char16_t), unit);
    int const file = memfd_create("units", 0);
    if (file < 0 || write(file, content.data(), block) != static_cast<ssize_t>(block)) return;
    void* const place = mmap(nullptr, size + block, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (place == MAP_FAILED) return;
    base = static_cast<char*>(place);
    for (std::size_t at = 0; at < size; at += block) {
      if (mmap(base + at, block, PROT_READ, MAP_SHARED | MAP_FIXED, file, 0) == MAP_FAILED) isMapped = false;
    }
    close(file);
  }
  ~RepeatedUnits() {
    if (base != nullptr) munmap(base, size + (std::size_t(1) << 21));
  }

  bool IsMapped() const { return base != nullptr && isMapped; }
  std::u16string_view View() const { return {reinterpret_cast<char16_t const*>(base), count}; }

 private:
  std::size_t count;
  std::size_t size;
  char* base = nullptr;
  bool isMapped = true;
};
