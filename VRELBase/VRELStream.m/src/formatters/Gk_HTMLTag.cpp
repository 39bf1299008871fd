#include "Gk_HTMLTag.h"

Gk_HTMLTag::Gk_HTMLTag(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& linkTarget,
                       VRELStreamFormatter::VRELStreamFormatterObjectHandle const& linkText)
    : target(linkTarget), text(linkText.IsValid() ? linkText : linkTarget) {}

void Gk_HTMLTag::dump(VRELStreamFormatter& formatter) const {
  formatter << "<a href=\"#" << target << "\">" << text << "</a>";
}
