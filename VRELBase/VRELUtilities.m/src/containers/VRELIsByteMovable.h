// Which element types may be moved by byte copy.
#pragma once

#include <cstddef>
#include <type_traits>

namespace VRELByteMovableDetail {

// Returns whether `name` begins with `prefix`.
constexpr bool StartsWith(char const* name, char const* prefix) noexcept {
  for (; *prefix != '\0'; ++name, ++prefix) {
    if (*name != *prefix) return false;
  }
  return true;
}

// Returns whether `name`, as the compiler spells a type, is one of the standard class templates `names` with its
// arguments. The inline namespaces of libstdc++ and libc++ are skipped.
template <std::size_t n>
constexpr bool IsStandardTemplate(char const* name, char const* const (&names)[n]) noexcept {
  if (!StartsWith(name, "std::")) return false;
  name += 5;
  while (*name == '_' && *(name + 1) == '_') {
    while (*name != ':') {
      if (*name == '\0') return false;
      ++name;
    }
    name += 2;
  }
  for (char const* const each : names) {
    if (!StartsWith(name, each)) continue;
    char const* rest = name;
    for (char const* c = each; *c != '\0'; ++c) ++rest;
    if (*rest == '<' || *rest == '\0' || *rest == ']' || *rest == ';') return true;
  }
  return false;
}

// The spelling of T, followed by other text. Naming the type instead of including its header keeps a dozen standard
// headers out of each source that uses an array.
template <class T>
constexpr char const* NameOf() noexcept {
  char const* name = __PRETTY_FUNCTION__;
  while (!StartsWith(name, "T = ")) ++name;
  return name + 4;
}

template <class T>
constexpr bool IsSelfReferential() noexcept {
  constexpr char const* kNames[] = {"basic_string", "list",          "map",           "multimap",
                                    "set",          "multiset",      "unordered_map", "unordered_multimap",
                                    "deque",        "unordered_set", "function",      "unordered_multiset",
                                    "any"};
  return std::is_class_v<T> && IsStandardTemplate(NameOf<T>(), kNames);
}

// Whether T stores objects of its template arguments in itself, so that it is as movable as they are.
template <class T>
constexpr bool IsAggregateOfArguments() noexcept {
  constexpr char const* kNames[] = {"array", "optional", "pair", "tuple", "variant"};
  return std::is_class_v<T> && IsStandardTemplate(NameOf<T>(), kNames);
}

}  // namespace VRELByteMovableDetail

// Whether objects of type T survive a move by byte copy: whether T keeps no pointer to itself and registers its address
// nowhere. Arrays and hash containers move their elements that way, and do not compile for other types.
//
// False for the standard types that are known to fail in libstdc++ or libc++ (std::string, list, deque, map, set, the
// unordered containers, function, any), and for an array, optional, pair, tuple or variant of them. True for all other
// types, because the members of a class cannot be examined. Specialize it for your own class that must not be
// moved, or for a standard type that your program may move:
//
//   struct Node { Node* self = this; };
//   template <>
//   struct VRELIsByteMovable<Node> : std::false_type {};
template <class T>
struct VRELIsByteMovable : std::bool_constant<!VRELByteMovableDetail::IsSelfReferential<T>()> {};

template <class T>
struct VRELIsByteMovable<T const> : VRELIsByteMovable<T> {};

template <class T, std::size_t n>
struct VRELIsByteMovable<T[n]> : VRELIsByteMovable<T> {};

template <template <class, std::size_t> class Array, class T, std::size_t n>
struct VRELIsByteMovable<Array<T, n>>
    : std::bool_constant<!VRELByteMovableDetail::IsAggregateOfArguments<Array<T, n>>() || VRELIsByteMovable<T>::value> {
};

template <template <class...> class Template, class... Arguments>
struct VRELIsByteMovable<Template<Arguments...>>
    : std::bool_constant<VRELByteMovableDetail::IsAggregateOfArguments<Template<Arguments...>>()
                             ? (VRELIsByteMovable<Arguments>::value&&...)
                             : !VRELByteMovableDetail::IsSelfReferential<Template<Arguments...>>()> {};
