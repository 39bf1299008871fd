// Faceted shell of triangle strips.
#pragma once

#include "VRELSurfacicShell.h"

// VRELSurfacicShell whose faces are triangle strips.
//
//   VRELStrippedShell shell(1, 0, 0);
//   shell.IsStripped();  // true
//
// Everything else is as in VRELSurfacicShell.
class VREL_EXPORT VRELStrippedShell : public VRELSurfacicShell {
 public:
  using VRELSurfacicShell::VRELSurfacicShell;
  ~VRELStrippedShell() override;

  bool IsStripped() const override;
};
