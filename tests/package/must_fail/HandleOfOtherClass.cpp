// A handle takes objects of its own class only.
// error: invalid initialization of reference|no known conversion
#include "VRELTypedHandle.h"

class Sheet : public VRELReferenceCount {};
class Solid : public VRELReferenceCount {};

void Show(VRELTypedHandle<Sheet> const& sheet);

void Use(Sheet* sheet, [[maybe_unused]] Solid* solid) {
#ifdef WRONG
  Show(solid);
#endif
  Show(sheet);
}
