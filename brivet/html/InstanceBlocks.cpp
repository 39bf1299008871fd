#include "InstanceBlocks.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include "BrivetModule.h"
#include "DataElements.h"
#include "Document.h"
#include "ValidUtf8.h"

namespace {

constexpr char kInstance = '\x01';
constexpr char kLine = '\x02';
constexpr char kHeading = '\x03';
constexpr char kDefinition = '\x04';
constexpr char kReference = '\x05';
constexpr char kFarDefinition = '\x06';
constexpr char kFarReference = '\x07';
constexpr char kReferrers = '\x08';

}  // namespace

VRINResult InstanceBlocks::Write(BrivetWriteRequest& request) {
  VRINResult const result = request.document->Describe(*this, *request.progress, true);
  if (!block.empty()) Flush();
  return result;
}

void InstanceBlocks::BeginInstance(Id const& id, bool complex) {
  // The line of a section's parameters ends with its first instance.
  EndItem();
  BeginItem(kInstance);
  if (first == 0) first = ordinal + 1;
  ++ordinal;
  PageWriter::BeginInstance(id, complex);
  inItem = true;
}

void InstanceBlocks::EndInstance() {
  PageWriter::EndInstance();
  EndItem();
}

void InstanceBlocks::BeginEntry(std::string_view name) {
  BeginItem(kLine);
  PageWriter::BeginEntry(name);
}

void InstanceBlocks::EndEntry() {
  PageWriter::EndEntry();
  EndItem();
}

void InstanceBlocks::BeginItem(char kind) {
  if (block.size() >= blockBytes) Flush();
  itemBegin = block.size();
  block += kind;
  ++items;
  ++allItems;
  own = 0;
  inItem = true;
  inReferrers = false;
}

void InstanceBlocks::Put(std::string_view utf8) {
  if (!inItem) BeginItem(kLine);
  SplitLongItem();
  block += utf8;
}

// An instance has one line and its referrers; other items end with their line.
void InstanceBlocks::EndLine() {
  if (inItem && block[itemBegin] == kLine) EndItem();
}

void InstanceBlocks::PutHeading(std::string_view heading) {
  BeginItem(kHeading);
  block += heading;
  EndItem();
}

void InstanceBlocks::BeginReferrers() {
  SplitLongItem();
  block += kReferrers;
  inReferrers = true;
}

void InstanceBlocks::PutNumber(std::string_view before, char mark, std::int64_t number) {
  char digits[24];
  char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  std::size_t const size = block.size();
  block.resize(size + before.size() + 1 + static_cast<std::size_t>(end - digits));
  char* at = std::copy(before.begin(), before.end(), &block[size]);
  *at++ = mark;
  std::copy(digits, end, at);
}

void InstanceBlocks::PutFar(char mark, Id const& id) {
  block += mark;
  block += std::to_string(id.ordinal);
  block += ':';
  block += DisplayDigits(id);
  block += ';';
}

void InstanceBlocks::PutDefinition(Id const& id) {
  if (!id.fits() || id.number > kLargestNumber) {
    hasFar = true;
    PutFar(kFarDefinition, id);
    return;
  }
  own = id.number;
  PutNumber("", kDefinition, own - previous);
  previous = own;
  if (low < 0 || own < low) low = own;
  if (own > high) high = own;
}

void InstanceBlocks::PutReference(std::string_view before, Id const& id) {
  if (!inItem) BeginItem(kLine);
  SplitLongItem();
  if (!id.fits() || id.number > kLargestNumber) {
    block += before;
    PutFar(kFarReference, id);
  } else {
    PutNumber(before, kReference, own - id.number);
  }
}

void InstanceBlocks::SplitLongItem() {
  if (block.size() - itemBegin < kLongItem) return;
  char const kind = block[itemBegin];
  Flush();
  part = own;
  itemBegin = 0;
  block += kind;
  if (inReferrers) block += kReferrers;
}

void InstanceBlocks::Flush() {
  std::string_view bytes = block;
  if (!IsValidUtf8(block)) {
    valid.clear();
    AppendValidUtf8(valid, block);
    bytes = valid;
  }
  elements.Write("instances-" + std::to_string(blocks), Attributes(), bytes);
  if (++blocks % kBlocksOfOneSize == 0) blockBytes *= 2;
  block.clear();
  itemBegin = 0;
  previous = 0;
  low = -1;
  high = -1;
  part = -1;
  items = 0;
  first = 0;
  hasFar = false;
}

std::string InstanceBlocks::Attributes() const {
  std::string text = " data-items=\"" + std::to_string(items) + "\"";
  if (first != 0) text += " data-first=\"" + std::to_string(first) + "\"";
  if (low >= 0) text += " data-low=\"" + std::to_string(low) + "\" data-high=\"" + std::to_string(high) + "\"";
  if (hasFar) text += " data-far=\"1\"";
  if (part >= 0) text += " data-part=\"" + std::to_string(part) + "\"";
  return text;
}
