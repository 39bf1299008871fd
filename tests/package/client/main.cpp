// Uses some classes of the API through the umbrella header, and prints the result.
#include <cstdio>

#include "VRELBase.h"

namespace {

class Counted : public VRELReferenceCount {};

using CountedHandle = VRELTypedHandle<Counted>;

}  // namespace

int main() {
  CountedHandle const handle(new Counted);
  VRINResult result = VREL_S_OK;
  result &= VREL_S_PARTIAL;
  if (!handle.IsLastCall() || !result.IsPartialSuccess()) return 1;
  std::puts("client ok");
  return 0;
}
