#include "EndOptionsEvent.h"

#include "VRELStreamFormatter.h"

EndOptionsEvent::EndOptionsEvent(VRINResult const& result, int storedCount, int unknownNameCount)
    : VRELEndOptionsTaskEvent(result), setCount(storedCount), unknownCount(unknownNameCount) {}

void EndOptionsEvent::GetFormattedDescription(VRELOutputStream* stream) {
  VRELStreamFormatter formatter(stream);
  formatter << "Options : " << setCount << " set, " << unknownCount << " unknown" << formatter.endline();
  formatter << "------------------------------------------------------------" << formatter.endline();
}
