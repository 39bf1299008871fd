#include "VRELHTMLStreamFormatter.h"

#include <initializer_list>

#include "Gk_HTMLAnchor.h"
#include "Gk_HTMLEndline.h"
#include "Gk_HTMLMargin.h"
#include "Gk_HTMLSpace.h"
#include "Gk_HTMLTag.h"

VRELHTMLStreamFormatter::VRELHTMLStreamFormatter(VRELOutputStream* stream, char const* title,
                                                 char const* backgroundColour)
    : VRELStreamFormatter(stream) {
  endline() = new Gk_HTMLEndline;
  space() = new Gk_HTMLSpace;
  margin() = new Gk_HTMLMargin(this);
  for (char const* const piece : {"<HTML> <title>", title, "</title>", "<BODY BGCOLOR=\"", backgroundColour, "\" > "}) {
    VRELStreamFormatter::dump(piece);
  }
}

VRELHTMLStreamFormatter::~VRELHTMLStreamFormatter() {
  VRELStreamFormatter::dump("</BODY> </HTML>");
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELHTMLStreamFormatter::define(void const* address) {
  return new Gk_HTMLAnchor(VRELStreamFormatter::define(address), nullptr);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELHTMLStreamFormatter::refer(void const* address) {
  return new Gk_HTMLTag(VRELStreamFormatter::refer(address), nullptr);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELHTMLStreamFormatter::define(long number) {
  return new Gk_HTMLAnchor(VRELStreamFormatter::define(number), nullptr);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELHTMLStreamFormatter::refer(long number) {
  return new Gk_HTMLTag(VRELStreamFormatter::refer(number), nullptr);
}
