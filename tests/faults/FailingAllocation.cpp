// Replaces malloc and related functions by versions that fail according to a plan. operator new and the allocators of
// ICU, of the C library and of the loader call these functions. They call those of glibc by their internal names.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "FaultPlan.h"

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

__attribute__((visibility("default"))) FaultPlan* faultPlan = nullptr;
}

namespace {

bool isPlanSearched = false;

// The loader allocates before the C library is initialized, so that only system calls may be used.
void FindPlan() {
  if (environ == nullptr) return;
  isPlanSearched = true;
  char const* const path = std::getenv(kFaultPlanVariable);
  int const file = path != nullptr ? open(path, O_RDWR | O_CLOEXEC) : -1;
  if (file < 0) return;
  void* const map = mmap(nullptr, sizeof(FaultPlan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  close(file);
  if (map != MAP_FAILED) faultPlan = static_cast<FaultPlan*>(map);
}

bool MustFail() {
  if (!isPlanSearched) FindPlan();
  if (faultPlan == nullptr) return false;
  long const number = ++faultPlan->count;
  if (number < faultPlan->first || number > faultPlan->last) return false;
  errno = ENOMEM;
  return true;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
  return MustFail() ? nullptr : __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
  return MustFail() ? nullptr : __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) noexcept {
  return MustFail() ? nullptr : __libc_realloc(block, size);
}

__attribute__((visibility("default"))) void* memalign(std::size_t alignment, std::size_t size) noexcept {
  return MustFail() ? nullptr : __libc_memalign(alignment, size);
}

__attribute__((visibility("default"))) void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return memalign(alignment, size);
}

__attribute__((visibility("default"))) int posix_memalign(void** block, std::size_t alignment,
                                                          std::size_t size) noexcept {
  void* const made = memalign(alignment, size);
  if (made == nullptr) return ENOMEM;
  *block = made;
  return 0;
}
}
