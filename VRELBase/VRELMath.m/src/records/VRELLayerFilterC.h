// Named selection of layers.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRINResult.h"

class VRELString;

// Type of a layer filter. Other values are defined by the format modules.
enum eLayerFilterType : int {
  eLayerFilterAll = 0,      // passes all layers
  eLayerFilterDefault = 2,  // initial value
};

// Layer filter: a list of layer numbers with an optional name, a type, and a flag for the current filter. The numbers
// keep their order and duplicates.
//
//   int const layers[] = {3, 7};
//   VRELLayerFilterC filter(2, layers, L"Sheet metal", true, eLayerFilterDefault);
//
// Errors: operations return VREL_S_OK or VREL_E_FAIL; a failed operation changes nothing unless noted otherwise.
// Ownership: copies are deep.
class VREL_EXPORT VRELLayerFilterC {
 public:
  // Creates a filter of the default type without name and layers that is not current.
  VRELLayerFilterC();
  // Calls Set. If Set fails, the filter equals a default-constructed one.
  VRELLayerFilterC(int count, int const* layers, VRELString const& name, bool current, eLayerFilterType type);
  VRELLayerFilterC(VRELLayerFilterC const& other);
  VRELLayerFilterC& operator=(VRELLayerFilterC const& other);
  ~VRELLayerFilterC();

  // Replaces everything. An empty `name` removes the name.
  //
  // Errors: VREL_E_FAIL unless `count` is above 0 and `layers` is not null, or `count` is 0 and `layers` is null.
  VRINResult Set(int count, int const* layers, VRELString const& name, bool current, eLayerFilterType type);

  // Sets the name.
  // Errors: VREL_E_FAIL if `name` is empty.
  VRINResult SetName(VRELString const& name);
  // Returns the name.
  // Errors: VREL_E_FAIL, with `out` unchanged, if there is none.
  VRINResult GetName(VRELString& out) const;

  // Returns the number of layers.
  VRINResult GetNumLayers(int& out) const noexcept;
  // Returns the layer with this index.
  // Errors: VREL_E_FAIL, with `out` set to -1, if the index is out of range.
  VRINResult GetLayerAt(int index, int& out) const noexcept;

  VRINResult SetCurrent(bool current) noexcept;
  VRINResult IsCurrent(bool& out) const noexcept;

  VRINResult SetLayerFilterType(eLayerFilterType type) noexcept;
  VRINResult GetLayerFilterType(eLayerFilterType& out) const noexcept;
  // Sets `out` to true if the type is eLayerFilterAll.
  VRINResult IsALLLayerFilter(bool& out) const noexcept;

 private:
  void init(VRELLayerFilterC const& other);
  void ReplaceName(VRELString const* name);

  VRELString* nameText;
  bool currentFilter;
  eLayerFilterType filterType;
  VRELDynamicArray<int> layerNumbers;
};
