// Instances of a document in compressed blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "PageWriter.h"

class DataElements;

// Writes the data sections of a document to data elements "instances-0", "instances-1", ..., each of about 256 KB
// before compression. The scripts of the page render them as the plain listing shows them.
//
// A block is a sequence of items in UTF-8. Control bytes mark what is not text; the text itself contains none, because
// strings of documents are escaped. Ids are stored as differences, which compress well:
//
// - 01 TEXT: instance
// - 02 TEXT: line that is no instance: the parameters of a section, an entry
// - 03 TEXT: heading of a section
// - 08: the referrers of the instance follow
// - 04 NUMBER: definition, the difference to the definition before, which is 0 at the beginning of a block
// - 05 NUMBER: reference, the number of the present instance minus the target
// - 06 ORDINAL:DIGITS; definition with an id beyond 2^53 - 1, with the position of the instance in the document
// - 07 ORDINAL:DIGITS; reference to such an instance; DIGITS as they are shown, cut if they are very many
//
// The attributes of an element are the index of its block: data-items, the number of items that begin in it;
// data-first, the position in the document of the first instance that begins in it, from 1; data-low and data-high, the
// smallest and the largest id as a number, absent if there are none; data-far, if there are other ids. An item that is
// longer than kLongItem continues in the next block, which begins with the kind of the item, and with 08 if that came
// before, and has data-part, the number of the present instance.
class InstanceBlocks final : public PageWriter {
 public:
  static constexpr std::size_t kBlockBytes = 262144;
  static constexpr std::size_t kLongItem = 1048576;
  // The blocks grow with their number, so that the page has few elements: each time after so many blocks they double.
  static constexpr long kBlocksOfOneSize = 2000;
  static constexpr std::int64_t kLargestNumber = 9007199254740991;  // that scripts represent exactly

  explicit InstanceBlocks(DataElements& target) : elements(target) {}

  // Writes all blocks of the document.
  //
  // Errors: those of Document::Describe; CheckedOutputStream::Failure.
  VRINResult Write(BrivetWriteRequest& request);

  // Returns the number of items and blocks that were written.
  long Items() const noexcept { return allItems; }
  long Blocks() const noexcept { return blocks; }

  void BeginInstance(Id const& id, bool complex) override;
  void EndInstance() override;
  void BeginEntry(std::string_view name) override;
  void EndEntry() override;

 private:
  void Put(std::string_view utf8) override;
  void EndLine() override;
  void PutDefinition(Id const& id) override;
  void PutReference(std::string_view before, Id const& id) override;
  void PutHeading(std::string_view heading) override;
  void BeginReferrers() override;
  void EndReferrers() override {}
  void Check() override {}
  // Not part of the data sections.
  void PutTitle(std::string_view /*title*/) override {}
  void BeginTable() override {}
  void PutRow(std::string_view /*key*/, std::string_view /*value*/) override {}
  void EndTable() override {}

  void BeginItem(char kind);
  void EndItem() { inItem = false; }
  void PutNumber(std::string_view before, char mark, std::int64_t number);
  void PutFar(char mark, Id const& id);
  void SplitLongItem();
  void Flush();
  std::string Attributes() const;

  DataElements& elements;
  std::string block;
  std::string valid;  // the block with invalid bytes replaced
  std::size_t blockBytes = kBlockBytes;
  std::size_t itemBegin = 0;  // of the present item within the block
  std::int64_t own = 0;       // number of the present instance, 0 if it has none
  std::int64_t previous = 0;  // number of the definition before
  std::int64_t low = -1;      // -1: the block defines no number
  std::int64_t high = -1;
  std::int64_t part = -1;  // the block begins within an item of this number, or -1
  long items = 0;          // of the present block
  long ordinal = 0;        // instances begun
  long first = 0;          // ordinal of the first instance of the block
  long blocks = 0;
  long allItems = 0;
  bool inItem = false;
  bool inReferrers = false;
  bool hasFar = false;
};
