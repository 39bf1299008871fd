// A shell of triangle strips.
#pragma once

#include "VRELSurfacicShell.h"

// A VRELSurfacicShell whose faces are strips; nothing else differs.
class VREL_EXPORT VRELStrippedShell : public VRELSurfacicShell {
 public:
  using VRELSurfacicShell::VRELSurfacicShell;
  ~VRELStrippedShell() override;

  bool IsStripped() const override;
};
