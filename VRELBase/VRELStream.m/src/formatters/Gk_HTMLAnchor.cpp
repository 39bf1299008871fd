#include "Gk_HTMLAnchor.h"

Gk_HTMLAnchor::Gk_HTMLAnchor(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& anchorName,
                             VRELStreamFormatter::VRELStreamFormatterObjectHandle const& anchorText)
    : name(anchorName), text(anchorText.IsValid() ? anchorText : anchorName) {}

void Gk_HTMLAnchor::dump(VRELStreamFormatter& formatter) const {
  formatter << "<a name= \"" << name << "\">" << text << "</a>";
}
