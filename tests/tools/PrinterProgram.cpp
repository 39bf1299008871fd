// Defines one variable of each kind that has a printer, and waits for the debugger.
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "Gk_Domain.h"
#include "Gk_RWString.h"
#include "Gk_String.h"
#include "VRELAffine3D.h"
#include "VRELBox2D.h"
#include "VRELBox3D.h"
#include "VRELDirectionf.h"
#include "VRELDynamicArray.h"
#include "VRELHashList.h"
#include "VRELHashMap.h"
#include "VRELMorph2D.h"
#include "VRELMorph3D.h"
#include "VRELOption.h"
#include "VRELPoint2D.h"
#include "VRELPoint3D.h"
#include "VRELPointf.h"
#include "VRELReferenceHandle.h"
#include "VRELString.h"
#include "VRELTypedHandle.h"
#include "VRELValue.h"
#include "VRELVectorf.h"
#include "VRELWeightPoint3D.h"
#include "VRINResult.h"

namespace shop {

class Part : public VRELReferenceCount {
 public:
  int holes = 4;
};

class Bracket : public Part {};

class PartHandle : public VRELTypedHandle<Part> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};

struct Drawing {
  VRELString title;
  VRINResult result;
};

}  // namespace shop

// Reports on standard output that all variables are set, and returns when standard input ends.
extern "C" [[gnu::noinline]] void WaitForDebugger() {
  char byte = '\n';
  if (write(STDOUT_FILENO, &byte, 1) != 1) return;
  while (read(STDIN_FILENO, &byte, 1) > 0) {
  }
}

int main() {
  VRELString uninitialized(L"moved away");
  VRELString const moved(std::move(uninitialized));
  VRELString const empty(L"");
  VRELString const shortText(L"Winkel für Träger \U0001F529");
  VRELString const longText(L"a string that does not fit into the object itself, \"quoted\"");

  Gk_String const bytes("bolt");
  Gk_String const unended("bolt", 3);
  Gk_String const noBytes;
  Gk_ROString view("bolts/m8");
  view.offset(6);
  Gk_RWString const writable = bytes.dataStr();
  Gk_ROString viewBefore("bolt");
  viewBefore.offset(-3);
  Gk_ROString viewAfter("bolt");
  viewAfter.offset(9);

  VRELDynamicArray<int> numbers;
  for (int number : {3, 1, 2}) numbers.add(number);
  VRELDynamicArray<VRELString> names(1, VRELString(L"hub"));
  VRELDynamicArray<VRELString> const sameNames = names;
  VRELDynamicArray<int> const noNumbers;

  VRELHashList<int> list;
  list.SetFunctions([](int const& number) { return static_cast<unsigned int>(number); }, nullptr);
  list.Add(19);
  list.Add(1);
  VRELHashMap<VRELString, int> map;
  map.Put(L"hub", 3);
  VRELHashMap<int, VRELString> const emptyMap;

  shop::PartHandle const part(new shop::Bracket);
  VRELReferenceHandle const samePart = part;
  shop::PartHandle const noPart;

  VRELValue const noValue;
  VRELValue const doubleValue(0.5);
  VRELValue const intValue(-7);
  VRELValue const boolValue(true);
  VRELValue const textValue(VRELString(L"On"));

  VRELPoint2D const point2D(1.5, -2.0);
  VRELPoint3D const point3D(1.0, 2.0, 3.25);
  VRELWeightPoint3D const weightPoint(point3D, 0.5, true);
  [[maybe_unused]] VRELPointf const pointf(1.0F, 2.0F, 3.5F);
  [[maybe_unused]] VRELVectorf const vectorf(0.0F, -1.0F, 0.5F);
  [[maybe_unused]] VRELDirectionf const directionf(0.0F, 0.0F, 2.0F);
  [[maybe_unused]] Gk_Domain const unbounded;
  VRELBox2D const emptyBox;
  VRELBox3D const box(point3D, VRELPoint3D(0.0, 4.0, 5.0));
  VRELMorph2D const identity;
  VRELAffine3D affine;
  affine.MakeIdentity();
  affine.SetElement(0, 2, 0.5);
  VRELMorph3D const morph(affine, point3D, 2.0);
  VRELOption option(VRELString(L"Step.Reader.Limit"));
  option.SetValue(7);
  option.SetValue(9);

  [[maybe_unused]] VRINResult const ok = VREL_S_OK;
  [[maybe_unused]] VRINResult const invalid = VREL_E_INVALID_FILE;
  [[maybe_unused]] VRINResult const foreign = 0x1050003;
  [[maybe_unused]] VRINResult const outside = static_cast<long>(0x91000001);
  VRINResult const& aborted = VREL_E_ABORTED;

  shop::Drawing const drawing = {VRELString(L"bracket"), VREL_S_PARTIAL};

  alignas(16) unsigned char garbage[256];
  std::fill(std::begin(garbage), std::end(garbage), static_cast<unsigned char>('Z'));

  // By default a debugger may attach only to its own children.
  prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
  WaitForDebugger();
  return garbage[0] == 'Z' && aborted.IsFailure() ? 0 : 1;
}
