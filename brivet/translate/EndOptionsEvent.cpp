#include "EndOptionsEvent.h"

#include "VRELStreamFormatter.h"

EndOptionsEvent::EndOptionsEvent(VRINResult const& result, int setCount, int unknownCount)
    : VRELEndOptionsTaskEvent(result), set(setCount), unknown(unknownCount) {}

void EndOptionsEvent::GetFormattedDescription(VRELOutputStream* stream) {
  VRELStreamFormatter formatter(stream);
  formatter << "Options : " << set << " set, " << unknown << " unknown" << formatter.endline();
  formatter << "------------------------------------------------------------" << formatter.endline();
}
