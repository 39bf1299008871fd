// Formatter for HTML pages.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Replaces the format objects of VRELStreamFormatter, so that the code of a plain dump writes a page for a browser:
// blocks are indented between linked braces, definitions are anchors, and references are links to them.
//
//   VRELHTMLStreamFormatter out(&stream, "bracket", "#FFFFFF");
//   out << "part" << out.space() << out.define(12) << out.endline();  // part&nbsp;<a name= "12">12</a><br>
//
// Strings are written unchanged: escape them if they can contain markup.
class VREL_EXPORT VRELHTMLStreamFormatter : public VRELStreamFormatter {
 public:
  // Writes the head of the page. A null title or colour is omitted.
  VRELHTMLStreamFormatter(VRELOutputStream* stream, char const* title, char const* backgroundColour);
  // Writes the end of the page.
  ~VRELHTMLStreamFormatter() override;

  VRELStreamFormatterObjectHandle define(void const* address) override;
  VRELStreamFormatterObjectHandle refer(void const* address) override;
  VRELStreamFormatterObjectHandle define(long number) override;
  VRELStreamFormatterObjectHandle refer(long number) override;
};
