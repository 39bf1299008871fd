#include "Gk_HTMLTag.h"

Gk_HTMLTag::Gk_HTMLTag(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& linkTarget,
                       VRELStreamFormatter::VRELStreamFormatterObjectHandle const& shownText)
    : target(linkTarget), text(shownText.IsValid() ? shownText : linkTarget) {}

void Gk_HTMLTag::dump(VRELStreamFormatter& formatter) const {
  formatter << "<a href=\"#" << target << "\">" << text << "</a>";
}
