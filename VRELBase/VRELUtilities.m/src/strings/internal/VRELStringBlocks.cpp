// A list is created when a thread first returns a block, and deleted by the destructor of a key of thread-specific
// data. A thread_local object with a destructor would keep the library loaded until the thread ends.
#include "VRELStringBlocks.h"

#include <pthread.h>

#include <atomic>
#include <new>

#if VREL_HAS_STRING_BLOCKS

namespace {

pthread_key_t key;
std::atomic<bool> isEnabled{false};

}  // namespace

__thread VRELStringBlocks::List* VRELStringBlocks::list = nullptr;

int VRELStringBlocks::GetFreeCount() noexcept {
  return list != nullptr ? list->count : 0;
}

VRELStringBlocks::Lifetime::Lifetime() noexcept {
  isEnabled = pthread_key_create(&key, DeleteList) == 0;
}

VRELStringBlocks::Lifetime::~Lifetime() {
  if (!isEnabled.exchange(false)) return;
  DeleteList(list);
  pthread_key_delete(key);
}

void VRELStringBlocks::ReturnToFullList(void* block) noexcept {
  if (list == nullptr && isEnabled) {
    auto* const created = new (std::nothrow) List;
    if (created != nullptr && pthread_setspecific(key, created) == 0) {
      list = created;
      list->blocks[list->count++] = block;
      return;
    }
    delete created;
  }
  icu::UnicodeString::operator delete(block);
}

void VRELStringBlocks::DeleteList(void* finished) noexcept {
  auto* const deleted = static_cast<List*>(finished);
  if (deleted == nullptr) return;
  list = nullptr;
  while (deleted->count > 0) icu::UnicodeString::operator delete(deleted->blocks[--deleted->count]);
  delete deleted;
}

#else

int VRELStringBlocks::GetFreeCount() noexcept {
  return 0;
}

VRELStringBlocks::Lifetime::Lifetime() noexcept = default;

VRELStringBlocks::Lifetime::~Lifetime() = default;

void VRELStringBlocks::ReturnToFullList(void* block) noexcept {
  icu::UnicodeString::operator delete(block);
}

#endif
