// Memory of the ICU strings that VRELString owns.
#pragma once

#include <unicode/unistr.h>

#include <cstddef>

#include "VRELExport.h"

// Sanitizers must see each allocation to detect uses of deleted strings.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VREL_HAS_STRING_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VREL_HAS_STRING_BLOCKS 0
#endif
#endif
#ifndef VREL_HAS_STRING_BLOCKS
#define VREL_HAS_STRING_BLOCKS 1
#endif

// Free list of blocks of the size of an icu::UnicodeString, one for each thread. Most strings are short and exist only
// for a moment, so that creating and deleting one took most of its time in the allocator of ICU.
//
// A block comes from the allocator of ICU and returns to it if the list of the thread is full. The list is not in the
// free blocks but next to them, so that a write through a dangling pointer cannot change it.
//
// Ownership: the blocks in a list belong to the thread, which deletes them at its end. The main thread deletes its own
// when the library is unloaded or the process exits.
// Thread safety: a block may be returned on another thread than the one that took it.
class VRELStringBlocks {
 public:
  static constexpr int kCapacity = 256;

  // Returns a block, or null if memory runs out.
  static void* Take() noexcept {
#if VREL_HAS_STRING_BLOCKS
    if (list != nullptr && list->count > 0) return list->blocks[--list->count];
#endif
    return icu::UnicodeString::operator new(sizeof(icu::UnicodeString));
  }

  // Takes back a block whose object was destroyed.
  static void Return(void* block) noexcept {
#if VREL_HAS_STRING_BLOCKS
    if (list != nullptr && list->count < kCapacity) {
      list->blocks[list->count++] = block;
      return;
    }
#endif
    ReturnToFullList(block);
  }

  // Returns the number of free blocks of this thread.
  VREL_EXPORT static int GetFreeCount() noexcept;

  // Enables the lists while it exists.
  class Lifetime {
   public:
    Lifetime() noexcept;
    ~Lifetime();
    Lifetime(Lifetime const&) = delete;
    Lifetime& operator=(Lifetime const&) = delete;
  };

 private:
  struct List {
    int count = 0;
    void* blocks[kCapacity];
  };

  static void ReturnToFullList(void* block) noexcept;
  static void DeleteList(void* finished) noexcept;

#if VREL_HAS_STRING_BLOCKS
  // Not thread_local, which would need a call for each access. Eight bytes fit in the reserve that the loader keeps for
  // libraries which are loaded while the program runs.
  __attribute__((tls_model("initial-exec"))) static __thread List* list;
#endif
};
