// HTML indentation with linked braces.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Margin of a page. Each incr writes an opening brace and begins a block quote; each decr ends it and writes a closing
// brace. Each brace is an anchor and a link to the other one. dump writes nothing: the browser indents.
//
//   out.margin()->incr();  // <a name= "AM{"></a><a href="#AM}">{</a><BLOCKQUOTE>
//   out.margin()->decr();  // </BLOCKQUOTE><a name= "AM}"></a><a href="#AM{">}</a><br>
//
// The names of the anchors have a letter for each level, and a mark: AM{ and AM} for the first block, BM{ and BM} for
// the next one, AAM{ for the first block inside the first.
// Compatibility: a level is never reset, so that the first block inside B is BB if A had one inside. The letters after
// Z are the next bytes, with wrap-around. A name has at most 99 bytes, and deeper blocks share the names of the blocks
// around them.
class VREL_EXPORT Gk_HTMLMargin : public VRELStreamFormatter::VRELStreamFormatterMargin {
 public:
  // Writes the blocks to `formatter`; with null, only counts them.
  explicit Gk_HTMLMargin(VRELStreamFormatter* formatter);

  void dump(VRELStreamFormatter& formatter) const override;
  void incr() override;
  void decr() override;

 private:
  struct BlockName {
    char opening[100];
    char closing[100];
  };

  BlockName nameOfBlock() const;
  void writeBrace(char const* own, char const* other, char const* brace);

  VRELDynamicArray<int> levels;
};
