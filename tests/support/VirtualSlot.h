// Tells where a virtual operation stands in its table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

// The place of a virtual operation in the table, counted from 0 with both destructor entries, as a member pointer of
// the Itanium ABI holds it.
template <class Member>
std::size_t SlotOf(Member member) {
  static_assert(std::is_member_function_pointer_v<Member>);
  std::uintptr_t word = 0;
  std::memcpy(&word, &member, sizeof word);
  return (word - 1) / sizeof(void*);
}
