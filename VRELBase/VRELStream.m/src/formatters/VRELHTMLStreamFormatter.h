// Writes a dump as a page for a browser.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Brings objects of its own, so that the code that writes a plain dump writes a page: blocks are indented between
// braces that lead to each other, what is defined is an anchor, and a reference is a link to it.
//
//   VRELHTMLStreamFormatter out(&stream, "bracket", "#FFFFFF");
//   out << "part" << out.space() << out.define(12) << out.endline();  // part&nbsp;<a name= "12">12</a><br>
//
// Texts are written as they are and may hold markup.
class VREL_EXPORT VRELHTMLStreamFormatter : public VRELStreamFormatter {
 public:
  // Writes the head of the page. A null title or colour is left out.
  VRELHTMLStreamFormatter(VRELOutputStream* stream, char const* title, char const* backgroundColour);
  // Writes the end of the page.
  ~VRELHTMLStreamFormatter() override;

  VRELStreamFormatterObjectHandle define(void const* address) override;
  VRELStreamFormatterObjectHandle refer(void const* address) override;
  VRELStreamFormatterObjectHandle define(long number) override;
  VRELStreamFormatterObjectHandle refer(long number) override;
};
