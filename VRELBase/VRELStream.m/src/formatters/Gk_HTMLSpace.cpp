#include "Gk_HTMLSpace.h"

void Gk_HTMLSpace::dump(VRELStreamFormatter& formatter) const {
  formatter << "&nbsp;";
}
