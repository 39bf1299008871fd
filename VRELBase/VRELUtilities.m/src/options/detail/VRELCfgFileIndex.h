// Finds the first of many objects that bears a name.
#pragma once

#include <unordered_map>

// For an owner that keeps its objects in order and never takes one away. Few objects are found by a walk, many by an
// index that goes on from where the last search left it: a file of many sections is read in linear time, and nothing is
// paid for sections of few keys.
//
// View is a view of a name that lives as long as its object. Searches of constant owners write here; one thread.
template <class View, class Object>
class VRELCfgFileIndex {
 public:
  // The first of the `count` objects whose name, as nameOf(object) gives it, is `name`; null where there is none.
  template <class NameOf>
  Object* Find(Object* const* objects, int count, View name, NameOf const& nameOf) {
    if (count <= fewObjects) {
      for (int i = 0; i < count; ++i) {
        if (nameOf(*objects[i]) == name) return objects[i];
      }
      return nullptr;
    }
    for (; indexed < count; ++indexed) first.emplace(nameOf(*objects[indexed]), objects[indexed]);
    auto const place = first.find(name);
    return place != first.end() ? place->second : nullptr;
  }

 private:
  static constexpr int fewObjects = 16;

  std::unordered_map<View, Object*> first;
  int indexed = 0;
};
