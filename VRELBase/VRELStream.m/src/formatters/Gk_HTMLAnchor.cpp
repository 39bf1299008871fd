#include "Gk_HTMLAnchor.h"

Gk_HTMLAnchor::Gk_HTMLAnchor(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& anchorName,
                             VRELStreamFormatter::VRELStreamFormatterObjectHandle const& shownText)
    : name(anchorName), text(shownText.IsValid() ? shownText : anchorName) {}

void Gk_HTMLAnchor::dump(VRELStreamFormatter& formatter) const {
  formatter << "<a name= \"" << name << "\">" << text << "</a>";
}
