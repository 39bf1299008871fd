#include "StepEntityStore.h"

#include <algorithm>
#include <cstring>

#include "VRELFloatUtil.h"

// Layout of an instance: its flags in one byte, its id (a size, or the digits as a text if they do not fit), then its
// known records. A record is its entity in two bytes, its values, and EndOfList. Two zero bytes end the records,
// followed by the number of the type (a size) if there are none. A value is its kind in one byte, followed by
//
//   Number               the double in eight bytes
//   Text, Enumeration    the size and the bytes
//   Reference            the ordinal in four bytes; if it is 0, the size and the bytes of the id
//   List                 values and EndOfList
//   Typed                the size and the bytes of the type, values and EndOfList
//
// A size is a variable-length number of seven bits to the byte, the lowest first.

namespace {

constexpr unsigned char kExternalMapping = 1;
constexpr unsigned char kLongId = 2;
constexpr std::size_t kUnknownTypeLimit = 4096;

std::size_t TakeSize(unsigned char const*& position) noexcept {
  std::size_t size = 0;
  for (unsigned shift = 0;; shift += 7) {
    unsigned char const byte = *position++;
    size |= static_cast<std::size_t>(byte & 0x7FU) << shift;
    if ((byte & 0x80U) == 0) return size;
  }
}

std::string_view TakeText(unsigned char const*& position) noexcept {
  std::size_t const size = TakeSize(position);
  std::string_view const text(reinterpret_cast<char const*>(position), size);
  position += size;
  return text;
}

template <class T>
T Take(unsigned char const*& position) noexcept {
  T value;
  std::memcpy(&value, position, sizeof value);
  position += sizeof value;
  return value;
}

// Takes one value, and moves to its content if it is a list.
StepValue TakeValue(unsigned char const*& position) noexcept {
  StepValue value;
  value.kind = static_cast<StepValue::Kind>(*position++);
  switch (value.kind) {
    case StepValue::Number:
      value.number = Take<double>(position);
      break;
    case StepValue::Text:
    case StepValue::Enumeration:
      value.text = TakeText(position);
      break;
    case StepValue::Reference:
      value.reference = Take<std::uint32_t>(position);
      if (value.reference == 0) value.text = TakeText(position);
      break;
    case StepValue::Typed:
      value.text = TakeText(position);
      value.content = position;
      break;
    case StepValue::List:
      value.content = position;
      break;
    default:
      break;
  }
  return value;
}

// Skips to the position after the end of the list that begins here.
void SkipList(unsigned char const*& position) noexcept {
  for (long depth = 1; depth > 0;) {
    StepValue::Kind const kind = TakeValue(position).kind;
    if (kind == StepValue::EndOfList) --depth;
    if (kind == StepValue::List || kind == StepValue::Typed) ++depth;
  }
}

}  // namespace

char const* StepValue::KindName() const noexcept {
  switch (kind) {
    case EndOfList:
      return "nothing";
    case Number:
      return "a number";
    case Text:
      return "a string";
    case Enumeration:
      return "an enumeration value";
    case Reference:
      return "a reference";
    case Unset:
      return "$";
    case Derived:
      return "*";
    case List:
      return "a list";
    case Typed:
      return "a typed parameter";
    case Other:
      break;
  }
  return "another parameter";
}

bool StepValues::Next() noexcept {
  if (position == nullptr) return false;
  if (current.content != nullptr) SkipList(position);
  current = TakeValue(position);
  if (current.kind == StepValue::EndOfList) position = nullptr;
  return position != nullptr;
}

// Iterates the records of an instance.
class StepEntityStore::Records {
 public:
  Records(StepEntityStore const& store, std::uint32_t instance) noexcept {
    std::size_t const offset = instance < store.offsets.size() ? store.offsets[instance] : 0;
    if (offset == 0) return;
    position = &store.bytes[offset];
    unsigned char const flags = *position++;
    isExternal = (flags & kExternalMapping) != 0;
    if ((flags & kLongId) != 0) {
      TakeText(position);
    } else {
      TakeSize(position);
    }
  }
  bool IsExternal() const noexcept { return isExternal; }
  bool Next() noexcept {
    if (position == nullptr || isEnded) return false;
    if (record.values != nullptr) SkipList(position);
    auto const entity = Take<std::uint16_t>(position);
    if (entity == 0) {
      isEnded = true;
      return false;
    }
    record = {static_cast<StepEntity>(entity), position};
    return true;
  }
  Record const& Current() const noexcept { return record; }
  // Returns the number of the type of an instance without known records.
  // Requires: Next returned false at its first call.
  std::size_t UnknownType() noexcept { return position == nullptr ? 0 : TakeSize(position); }

 private:
  unsigned char const* position = nullptr;
  Record record;
  bool isExternal = false;
  bool isEnded = false;
};

void StepEntityStore::BeginInstance(Id const& id, bool complex) {
  // Offset 0 means no instance.
  if (bytes.empty()) bytes.push_back(0);
  // Instances that could not be read are not passed, but have an ordinal.
  current = id.ordinal != 0 ? id.ordinal : static_cast<std::uint32_t>(offsets.size());
  if (offsets.size() <= current) offsets.resize(std::size_t(current) + 1);
  offsets[current] = bytes.size();
  unknownType = 0;
  isFirstRecord = true;
  hasKnown = false;
  bytes.push_back(static_cast<unsigned char>((complex ? kExternalMapping : 0) | (id.fits() ? 0 : kLongId)));
  if (id.fits()) {
    PutSize(static_cast<std::size_t>(id.number));
  } else {
    PutSize(id.digits.size());
    bytes.insert(bytes.end(), id.digits.begin(), id.digits.end());
  }
}

void StepEntityStore::EndInstance() {
  bytes.insert(bytes.end(), 2, 0);
  if (!hasKnown) PutSize(unknownType);
  current = 0;
}

void StepEntityStore::BeginRecord(std::string_view type) {
  // The parameters of a section are a record outside of instances.
  if (current == 0) return;
  StepEntity const entity = FindStepEntity(type);
  isKnown = entity != StepEntity::None;
  if (isKnown) {
    auto const number = static_cast<std::uint16_t>(entity);
    unsigned char encoded[sizeof number];
    std::memcpy(encoded, &number, sizeof number);
    bytes.insert(bytes.end(), encoded, encoded + sizeof number);
    hasKnown = true;
    byEntity[number].push_back(current);
  } else if (isFirstRecord) {
    NoteUnknownType(type);
  }
  isFirstRecord = false;
}

void StepEntityStore::NoteUnknownType(std::string_view type) {
  auto const found = unknownNumbers.find(std::string(type));
  if (found != unknownNumbers.end()) {
    unknownType = found->second;
  } else if (unknownTypes.size() <= kUnknownTypeLimit) {
    unknownType = static_cast<std::uint32_t>(unknownTypes.size());
    // The keys of a node-based map do not move.
    unknownTypes.push_back(unknownNumbers.emplace(type, unknownType).first->first);
  }
}

void StepEntityStore::EndRecord() {
  PutKind(StepValue::EndOfList);
  isKnown = false;
}

void StepEntityStore::PutKind(StepValue::Kind kind) {
  if (isKnown) bytes.push_back(kind);
}

void StepEntityStore::PutSize(std::size_t size) {
  for (; size >= 0x80; size >>= 7U) bytes.push_back(static_cast<unsigned char>(size | 0x80U));
  bytes.push_back(static_cast<unsigned char>(size));
}

void StepEntityStore::PutBytes(StepValue::Kind kind, std::string_view text) {
  if (!isKnown) return;
  bytes.push_back(kind);
  PutSize(text.size());
  bytes.insert(bytes.end(), text.begin(), text.end());
}

void StepEntityStore::PutNumber(std::string_view number) {
  if (!isKnown) return;
  char text[64];
  std::size_t const size = std::min(number.size(), sizeof text - 1);
  std::memcpy(text, number.data(), size);
  text[size] = '\0';
  double const value = VRELFloatUtil::vrelstrtod(text, nullptr);
  unsigned char encoded[1 + sizeof value] = {StepValue::Number};
  std::memcpy(encoded + 1, &value, sizeof value);
  bytes.insert(bytes.end(), encoded, encoded + sizeof encoded);
}

void StepEntityStore::String(DocumentVisitor::Text const& text) {
  PutBytes(StepValue::Text, text.utf8);
}

void StepEntityStore::Enumeration(std::string_view name) {
  PutBytes(StepValue::Enumeration, name);
}

void StepEntityStore::Binary(std::string_view /*digits*/) {
  PutKind(StepValue::Other);
}

void StepEntityStore::Reference(Id const& target, bool defined) {
  if (!isKnown) return;
  std::uint32_t const ordinal = defined ? target.ordinal : 0;
  unsigned char encoded[1 + sizeof ordinal] = {StepValue::Reference};
  std::memcpy(encoded + 1, &ordinal, sizeof ordinal);
  bytes.insert(bytes.end(), encoded, encoded + sizeof encoded);
  if (ordinal == 0) {
    PutSize(target.digits.size());
    bytes.insert(bytes.end(), target.digits.begin(), target.digits.end());
  }
}

void StepEntityStore::BeginTyped(std::string_view type) {
  PutBytes(StepValue::Typed, type);
}

void StepEntityStore::Name(std::string_view /*name*/) {
  PutKind(StepValue::Other);
}

void StepEntityStore::Resource(std::string_view /*resource*/) {
  PutKind(StepValue::Other);
}

void StepEntityStore::BeginBraces(std::string_view tag) {
  PutBytes(StepValue::Typed, tag);
}

std::vector<std::uint32_t> StepEntityStore::InstancesOf(StepEntity entity) const {
  std::vector<std::uint32_t> found;
  for (std::size_t i = 1; i < kStepEntityCount; ++i) {
    if (IsA(static_cast<StepEntity>(i), entity)) found.insert(found.end(), byEntity[i].begin(), byEntity[i].end());
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

bool StepEntityStore::Is(std::uint32_t instance, StepEntity entity) const noexcept {
  for (Records records(*this, instance); records.Next();) {
    if (IsA(records.Current().entity, entity)) return true;
  }
  return false;
}

StepEntity StepEntityStore::EntityOf(std::uint32_t instance) const noexcept {
  Records records(*this, instance);
  return records.Next() ? records.Current().entity : StepEntity::None;
}

// With external mapping a record holds the attributes of its own entity alone; with internal mapping the only record
// holds those of its supertypes first.
StepValue StepEntityStore::Get(std::uint32_t instance, StepAttribute const& attribute) const noexcept {
  Records records(*this, instance);
  while (records.Next()) {
    Record const record = records.Current();
    bool const matches =
        records.IsExternal() ? record.entity == attribute.entity : IsA(record.entity, attribute.entity);
    if (!matches) continue;
    int index = records.IsExternal() ? attribute.own : attribute.position;
    StepValues values(record.values);
    while (values.Next()) {
      if (index-- == 0) return values.Current();
    }
    return {};
  }
  return {};
}

std::string_view StepEntityStore::TypeNameOf(std::uint32_t instance) const noexcept {
  Records records(*this, instance);
  if (records.Next()) return DefinitionOf(records.Current().entity).name;
  return unknownTypes[records.UnknownType()];
}

std::string StepEntityStore::IdOf(std::uint32_t instance) const {
  std::size_t const offset = instance < offsets.size() ? offsets[instance] : 0;
  if (offset == 0) return "#?";
  unsigned char const* position = &bytes[offset];
  bool const isLong = (*position++ & kLongId) != 0;
  return "#" + (isLong ? std::string(TakeText(position)) : std::to_string(TakeSize(position)));
}
