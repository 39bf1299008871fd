// A named choice of a model's layers.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRINResult.h"

class VRELString;

// What a filter does with its layers. Each format module gives its own meaning to the other values.
enum eLayerFilterType : int {
  eLayerFilterAll = 0,      // passes every layer
  eLayerFilterDefault = 2,  // of a filter that nobody has set
};

// Layer numbers in the order given, with their duplicates, under a name, which may be missing, with a type and a mark
// for the one filter that is current.
//
//   int const layers[] = {3, 7};
//   VRELLayerFilterC filter(2, layers, L"Sheet metal", true, eLayerFilterDefault);
//
// Results are VREL_S_OK or VREL_E_FAIL; an operation that fails changes nothing except where it says so. A copy owns
// everything that it has.
class VREL_EXPORT VRELLayerFilterC {
 public:
  // No name, no layers, not current, of the default type.
  VRELLayerFilterC();
  // As Set; with arguments that Set refuses the filter is as the default one.
  VRELLayerFilterC(int count, int const* layers, VRELString const& name, bool current, eLayerFilterType type);
  VRELLayerFilterC(VRELLayerFilterC const& other);
  VRELLayerFilterC& operator=(VRELLayerFilterC const& other);
  ~VRELLayerFilterC();

  // Replaces everything; an empty name leaves the filter without one. Takes either at least 1 layer, or a count of 0
  // with a null array, and nothing else.
  VRINResult Set(int count, int const* layers, VRELString const& name, bool current, eLayerFilterType type);

  // Fails for an empty name.
  VRINResult SetName(VRELString const& name);
  // Fails where there is no name, and then leaves `out` alone.
  VRINResult GetName(VRELString& out) const;

  VRINResult GetNumLayers(int& out) const noexcept;
  // Fails for an index outside, and then sets `out` to -1.
  VRINResult GetLayerAt(int index, int& out) const noexcept;

  VRINResult SetCurrent(bool current) noexcept;
  VRINResult IsCurrent(bool& out) const noexcept;

  VRINResult SetLayerFilterType(eLayerFilterType type) noexcept;
  VRINResult GetLayerFilterType(eLayerFilterType& out) const noexcept;
  // Whether the filter passes every layer.
  VRINResult IsALLLayerFilter(bool& out) const noexcept;

 private:
  void init(VRELLayerFilterC const& other);
  void ReplaceName(VRELString const* name);

  VRELString* nameText;
  bool currentFilter;
  eLayerFilterType filterType;
  VRELDynamicArray<int> layerNumbers;
};
