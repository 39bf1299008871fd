// Uses a placement and the morph built from it, a selection set, a layer filter and a colour.
#include <iostream>

#include "VRELAssemblyComponentTransform.h"
#include "VRELFileOutputStream.h"
#include "VRELLayerFilterC.h"
#include "VRELMorph3D.h"
#include "VRELPoint3D.h"
#include "VRELRGBColor.h"
#include "VRELSelectionSet.h"
#include "VRELStreamFormatter.h"
#include "VRELString.h"
#include "VRINResult.h"

void Placement() {
  VRELAssemblyComponentTransform placement;
  double const shift[] = {0.0, 0.0, 25.0};
  placement.SetTranslation(shift);
  placement.SetScale(2.0);
  float point[] = {1.0F, 2.0F, 3.0F};
  placement.ApplyTransform(point);
  std::cout << point[0] << " " << point[1] << " " << point[2] << "\n";

  VRELMorph3D morph(placement);
  VRELPoint3D p(1.0, 2.0, 3.0);
  p.Transform(morph, false);
  std::cout << p[0] << " " << p[1] << " " << p[2] << "\n";
  morph.fixMorphFlags();
  p.Transform(morph, false);
  std::cout << p[0] << " " << p[1] << " " << p[2] << "\n";
}

void Selections() {
  int bolt = 8;
  VRELSelectionSet fasteners(L"Fasteners", false);
  fasteners.AddMember(&bolt);
  fasteners.AddMember(&bolt);
  std::cout << fasteners.SelectionSetLength() << " member, null: " << fasteners.AddMember(nullptr).GetMessage() << "\n";

  int const layers[] = {3, 7};
  VRELLayerFilterC const filter(2, layers, L"Sheet metal", true, eLayerFilterDefault);
  int layer = 0;
  filter.GetLayerAt(1, layer);
  std::cout << "layer " << layer;
  filter.GetLayerAt(2, layer);
  std::cout << ", out of range " << layer << "\n";
}

void Colours() {
  VRELRGBColor const red(255u, 0u, 0u, 0u);
  VRELRGBColor const none;
  unsigned int integers[4];
  VRELRGBColor(0.999F, 0.0F, 0.0F, 1.0F).GetRGBA(integers);
  std::cout << red.IsValid() << none.IsValid() << " " << integers[0] << std::endl;
  VRELStreamFormatter out(&VRELFileOutputStream::console);
  out << red << out.endline();
}

int main() {
  Placement();
  Selections();
  Colours();
}
