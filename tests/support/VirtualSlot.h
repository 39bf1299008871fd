// Position of a virtual function in its virtual table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

// Returns the index of a virtual function in the virtual table, counted from 0 and with two entries for a destructor,
// as a pointer to member of the Itanium C++ ABI stores it.
template <class Member>
std::size_t SlotOf(Member member) {
  static_assert(std::is_member_function_pointer_v<Member>);
  std::uintptr_t word = 0;
  std::memcpy(&word, &member, sizeof word);
  return (word - 1) / sizeof(void*);
}
