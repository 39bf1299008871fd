// Folder of the process-wide tree of options and observables.
#pragma once

#include <string_view>

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELRoloNode.h"

class Gk_Observable;
class Gk_Option;

// Folder in which options and observables are found by paths such as "component/group/name". All segments but the last
// name folders; the last one names an item. A leading "/" is ignored. Names are case-sensitive.
//
//   Gk_String const path("step/reader/tolerance");
//   Gk_Option* const option = Gk_Nest::fetchOption(path.dataStr(), true);
//
// Ownership: a folder owns its items. Items are not removed; pointers are valid until the process exits.
// Thread safety: none, except for the creation of the root.
class VREL_EXPORT Gk_Nest : public VRELRoloNode {
 public:
  Gk_Nest();
  ~Gk_Nest() override;

  // Returns the root, a folder named "/". It is made by the first call and destroyed at exit.
  static Gk_Nest& fetchRoot();

  // Returns the folder of a path whose last segment names an item (see VRELRoloTraits::fetch). Null for a node that is
  // not a Gk_Nest, which only a client can have added.
  static Gk_Nest* fetch(Gk_ROString* path, bool create);

  // Return the last item of that name in the folder of the path, or null. With `create`, a missing item and missing
  // folders are made, and the abort flag is polled.
  static Gk_Option* fetchOption(Gk_ROString const& path, bool create);
  static Gk_Observable* fetchObservable(Gk_ROString const& path, bool create);

  // Does the same as fetchOption without `create`, for a path without a zero byte.
  static Gk_Option* findOption(std::string_view path);

  VRELDynamicArray<Gk_Option*> const& getOptions() const noexcept { return options; }

 protected:
  VRELRoloNode* newNode() const override;

 private:
  explicit Gk_Nest(Gk_String const& name);

  template <class Item>
  static Item* findItem(std::string_view path, VRELDynamicArray<Item*> Gk_Nest::*items);
  template <class Item>
  Item* itemNamed(std::string_view name, VRELDynamicArray<Item*> Gk_Nest::*items);
  template <class Item>
  static Item* fetchItem(Gk_ROString const& path, bool create, VRELDynamicArray<Item*> Gk_Nest::*items);

  VRELDynamicArray<Gk_Option*> options;
  VRELDynamicArray<Gk_Observable*> observables;
};
