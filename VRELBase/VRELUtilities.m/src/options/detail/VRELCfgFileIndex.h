// Finds the first of many objects with a name.
#pragma once

#include <cstddef>
#include <unordered_map>

#include "detail/VRELSeededHash.h"

// Index of the objects of an owner that keeps them in order and never removes one.
//
//   VRELCfgFileIndex<std::string_view, VRELCfgFileSection> index;
//   VRELCfgFileSection* const found = index.Find(sections.begin(), sections.size(), name, nameOf);
//
// A few objects are compared one by one. More are indexed by a hash table, which each search extends by the objects
// that were added since the last one, so that a file of many sections is read in linear time, and sections of few keys
// need no table. The hash is seeded, so that no file can contain names that are made to collide.
//
// View is a view of a name that is valid as long as its object.
// Thread safety: none, for searches too.
template <class View, class Object>
class VRELCfgFileIndex {
 public:
  // Returns the first of `count` objects for which nameOf(object) equals `name`, or null.
  template <class NameOf>
  Object* Find(Object* const* objects, int count, View name, NameOf const& nameOf) {
    if (count <= kFewObjects) {
      for (int i = 0; i < count; ++i) {
        if (nameOf(*objects[i]) == name) return objects[i];
      }
      return nullptr;
    }
    for (; indexed < count; ++indexed) first.emplace(nameOf(*objects[indexed]), objects[indexed]);
    auto const found = first.find(name);
    return found != first.end() ? found->second : nullptr;
  }

 private:
  static constexpr int kFewObjects = 16;

  struct Hash {
    std::size_t operator()(View name) const noexcept { return VRELSeededHash::Of(name); }
  };

  std::unordered_map<View, Object*, Hash> first;
  int indexed = 0;
};
