// The indentation of a page, by nested blocks whose braces lead to each other.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Each step in opens a block quote behind an opening brace, each step out closes it and writes a closing brace; each
// brace is a link to the anchor of the other. The margin itself writes nothing: the browser indents.
//
// The anchors are named after the block, a letter for each level, and a mark: AM{ and AM} for the first block, BM{ and
// BM} for the next, AAM{ for the first one inside the first. That a level counts on over the whole page is promised:
// the first block inside B is BB where A has had one inside. Behind 'Z' follow the bytes that follow it in ASCII, and
// at last wrap around. A name has at most 99 bytes: deeper blocks have the names of those around them.
class VREL_EXPORT Gk_HTMLMargin : public VRELStreamFormatter::VRELStreamFormatterMargin {
 public:
  // Where the blocks are written; with null they are only counted.
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
