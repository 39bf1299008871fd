#include "VRELStrippedShell.h"

VRELStrippedShell::~VRELStrippedShell() = default;

bool VRELStrippedShell::IsStripped() const {
  return true;
}
