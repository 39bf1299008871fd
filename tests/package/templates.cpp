// Instantiates templates of the public headers and calls overloads, for the check of client warnings.
#include "VRELBase.h"

struct Part : VRELReferenceCount {
  int x;
};
template class VRELTypedHandle<Part>;
template class VRELDynamicArray<int>;
template class VRELDynamicArray<VRELString>;
template class VRELHashMap<VRELString, int>;
template class VRELHashMap<int, VRELString>;
template class VRELHashList<VRELString>;
bool Use(VRELTypedHandle<Part> const& handle, VRELDynamicArray<int>& array) {
  int seven = 7;
  vrelArrayAddUnique<int>(array, seven);
  vrelArrayRemove<int>(array, seven);
  VRELMessageEvent event("%d", false, 3);
  return handle == nullptr || nullptr != handle || vrelArrayFind<int>(array, seven) >= 0 || VRINValue(L"x").IsValid() ||
         VRINFile(3).IsValid();
}
