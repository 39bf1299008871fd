// Gk_OptionDoc::addOption does not take a pointer for a bool.
// error: use of deleted function|call to deleted
#include "Gk_OptionDoc.h"

Gk_Option* Use([[maybe_unused]] VRELString const* path) {
#ifdef WRONG
  return Gk_OptionDoc::addOption(L"reader/unit", path);
#else
  return Gk_OptionDoc::addOption(L"reader/unit", "mm");
#endif
}
