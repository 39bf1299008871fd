#include "Gk_HTMLEndline.h"

void Gk_HTMLEndline::dump(VRELStreamFormatter& formatter) const {
  formatter << "<br>\r\n";
}
