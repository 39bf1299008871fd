// VRELOptions::AddOption does not take a pointer for a bool.
// error: use of deleted function|call to deleted member function
#include "VRELOptions.h"

VRINResult Use(VRELOptions& options, [[maybe_unused]] void const* data) {
#ifdef WRONG
  return options.AddOption(L"AuthorName", data);
#else
  return options.AddOption(L"AuthorName", L"drawing office");
#endif
}
