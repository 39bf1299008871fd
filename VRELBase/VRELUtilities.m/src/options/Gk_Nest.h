// The folders of the process: where options and observables are found by paths such as "component/group/name".
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELRoloNode.h"

class Gk_Observable;
class Gk_Option;

// A folder of the tree. It owns the options and observables that it holds, and nothing takes one out again: a pointer
// to one is good until the exit of the process.
//
// All segments of a path but the last name folders, the last one an option or observable; a leading "/" counts for
// nothing. Names count with their case.
//
// The tree is made on first use and torn down at exit. No locking.
class VREL_EXPORT Gk_Nest : public VRELRoloNode {
 public:
  Gk_Nest();
  ~Gk_Nest() override;

  // The root of the tree, a folder by the name "/".
  static Gk_Nest& fetchRoot();

  // The folder of a path whose last segment names something in it, as VRELRoloTraits::fetch gives it with its last
  // argument true. Null for a node that is no folder, which only a client can have put into the tree.
  static Gk_Nest* fetch(Gk_ROString* path, bool create);

  // The latest option or observable of that name in the folder of the path. With `create` it is made where it is
  // missing, with the folders that lead to it, and an abort that is asked for is thrown; otherwise the answer is null.
  static Gk_Option* fetchOption(Gk_ROString const& path, bool create);
  static Gk_Observable* fetchObservable(Gk_ROString const& path, bool create);

  VRELDynamicArray<Gk_Option*> const& getOptions() const noexcept { return options; }

 protected:
  VRELRoloNode* newNode() const override;

 private:
  explicit Gk_Nest(Gk_String const& name);

  template <class Item>
  static Item* fetchItem(Gk_ROString const& path, bool create, VRELDynamicArray<Item*> Gk_Nest::*items);

  VRELDynamicArray<Gk_Option*> options;
  VRELDynamicArray<Gk_Observable*> observables;
};
