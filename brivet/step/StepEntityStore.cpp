#include "StepEntityStore.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

#include "StepInstanceText.h"
#include "StepReferences.h"
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
//
// Instances are composed in a buffer and then copied to a chunk, or become one if they are long. There is a
// kind for each instance, so that most questions about types are answered without its bytes. A model asks for less
// than half of the instances of a boundary representation: surfaces, and the points and directions of straight lines,
// are never loaded.

namespace {

constexpr unsigned char kExternalMapping = 1;
constexpr unsigned char kLongId = 2;
constexpr std::size_t kUnknownTypeLimit = 4096;
constexpr std::size_t kNumberLimit = 63;  // bytes of a number that are read

// The entities of which most of a document consists. They are found by references, and hardly ever by their entity.
constexpr bool IsShapeEntity(StepEntity entity) {
  for (StepEntity const each : {StepEntity::Point, StepEntity::Direction, StepEntity::Vector, StepEntity::Placement,
                                StepEntity::Curve, StepEntity::TopologicalRepresentationItem}) {
    if (IsA(entity, each)) return true;
  }
  return false;
}

constexpr auto FindShapeEntities() {
  std::array<bool, kStepEntityCount> isShape{};
  for (std::size_t i = 0; i < kStepEntityCount; ++i) isShape[i] = IsShapeEntity(static_cast<StepEntity>(i));
  return isShape;
}

constexpr std::array<bool, kStepEntityCount> kIsShapeEntity = FindShapeEntities();

// Returns whether one of them is the entity or a subtype of it.
bool HasShapeEntities(StepEntity entity) {
  for (std::size_t i = 0; i < kStepEntityCount; ++i) {
    if (kIsShapeEntity[i] && kStepEntityTable.IsA(static_cast<StepEntity>(i), entity)) return true;
  }
  return false;
}

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
    if (instance >= store.kinds.size()) return;
    Kind const& kind = store.kinds[instance];
    if (kind.state == Listed && kind.entity != 0) store.source->Load(instance);
    if (kind.state != Stored) return;
    position = store.BytesOf(instance);
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

void StepEntityStore::Bytes::Grow(std::size_t wanted) {
  std::size_t const larger = std::max(size + wanted, capacity + capacity / 2 + 4096);
  void* const grown = std::realloc(block.get(), larger);
  if (grown == nullptr) throw std::bad_alloc();
  static_cast<void>(block.release());
  block.reset(static_cast<unsigned char*>(grown));
  capacity = larger;
}

void StepEntityStore::Bytes::Put(void const* data, std::size_t length) {
  if (length == 0) return;
  std::memcpy(Room(length), data, length);
  size += length;
}

void StepEntityStore::Bytes::PutSize(std::size_t number) {
  unsigned char* const room = Room(10);
  unsigned char* end = room;
  for (; number >= 0x80; number >>= 7U) *end++ = static_cast<unsigned char>(number | 0x80U);
  *end++ = static_cast<unsigned char>(number);
  size += static_cast<std::size_t>(end - room);
}

void StepEntityStore::StartInstance(Id const& id, bool complex) {
  // Instances that could not be read are not passed, but have an ordinal.
  current = id.ordinal != 0 ? id.ordinal : static_cast<std::uint32_t>(kinds.size());
  if (kinds.size() <= current) kinds.resize(std::size_t(current) + 1);
  // A listed instance keeps its type.
  if (kinds[current].state != Listed) Select(current);
  kinds[current] = Kind(StepEntity::None, None, complex);
  bytes.Clear();
  bytes.Put(static_cast<unsigned char>((complex ? kExternalMapping : 0) | (id.fits() ? 0 : kLongId)));
  if (id.fits()) {
    bytes.PutSize(static_cast<std::size_t>(id.number));
  } else {
    bytes.PutSize(id.digits.size());
    bytes.Put(id.digits.data(), id.digits.size());
  }
}

void StepEntityStore::BeginInstance(Id const& id, bool complex) {
  StartInstance(id, complex);
  unknownType = 0;
  isFirstRecord = true;
  hasKnown = false;
}

void StepEntityStore::EndInstance() {
  bytes.Put("\0", 2);
  if (!hasKnown) bytes.PutSize(unknownType);
  PlaceInstance();
  current = 0;
}

void StepEntityStore::BeginGroup(std::uint32_t ordinal, std::uint64_t offset) {
  groupOffsets.resize(ordinal / kGroup + 1, offset);
  groupOffset = offset;
  groupEnd = (ordinal / kGroup + 1) * kGroup;
}

// Copies the present instance to a chunk. One that would fill much of a chunk becomes one itself.
void StepEntityStore::PlaceInstance() {
  constexpr std::size_t kChunkSize = std::size_t(1) << kChunkBits;
  std::size_t chunk = lastChunk;
  std::size_t offset = 0;
  if (bytes.Size() > kChunkSize / 4) {
    chunk = chunks.size();
    chunks.push_back(bytes.Release());
  } else {
    if (kChunkSize - filled < bytes.Size()) {
      chunks.emplace_back(static_cast<unsigned char*>(std::malloc(kChunkSize)));
      if (chunks.back() == nullptr) throw std::bad_alloc();
      lastChunk = chunks.size() - 1;
      chunk = lastChunk;
      filled = 0;
    }
    offset = filled;
    std::memcpy(chunks[chunk].get() + filled, bytes.Begin(), bytes.Size());
    filled += bytes.Size();
  }
  places[current] = chunk << kChunkBits | offset;
  kinds[current].state = Stored;
}

void StepEntityStore::PutEntity(StepEntity entity) {
  auto const number = static_cast<std::uint16_t>(entity);
  bytes.Put(&number, sizeof number);
  if (kinds[current].entity == 0) kinds[current].entity = number & 0x1FFFU;
}

void StepEntityStore::BeginRecord(std::string_view type) {
  // The parameters of a section are a record outside of instances.
  if (current == 0) return;
  StepEntity const entity = FindStepEntity(type);
  isKnown = entity != StepEntity::None;
  if (isKnown) {
    PutEntity(entity);
    hasKnown = true;
  } else if (isFirstRecord) {
    unknownType = NumberOfUnknown(type);
  }
  isFirstRecord = false;
}

std::uint32_t StepEntityStore::NumberOfUnknown(std::string_view type) {
  auto const found = unknownNumbers.find(std::string(type));
  if (found != unknownNumbers.end()) return found->second;
  if (unknownTypes.size() > kUnknownTypeLimit) return 0;
  auto const number = static_cast<std::uint32_t>(unknownTypes.size());
  // The keys of a node-based map do not move.
  unknownTypes.push_back(unknownNumbers.emplace(type, number).first->first);
  return number;
}

StepEntityStore::Type StepEntityStore::FindType(std::string_view name) {
  Type type;
  if (name.empty() || name.front() != '(') {
    type.entity = FindStepEntity(name);
    if (type.entity == StepEntity::None) type.number = NumberOfUnknown(name);
    type.isSelected = type.entity != StepEntity::None && !kIsShapeEntity[static_cast<std::size_t>(type.entity)];
    return type;
  }
  std::string_view names = name.substr(1, name.size() - 2);
  std::string_view const first = names.substr(0, names.find(' '));
  // The name of all types beyond a limit is "(other types)".
  type.isComplete = first != "other";
  type.isComplex = true;
  std::vector<StepEntity> records;
  while (!names.empty()) {
    std::string_view const each = names.substr(0, names.find(' '));
    StepEntity const entity = FindStepEntity(each);
    if (entity != StepEntity::None) records.push_back(entity);
    names.remove_prefix(std::min(names.size(), each.size() + 1));
  }
  if (records.empty()) {
    type.isComplex = false;
    type.number = NumberOfUnknown(first);
  } else {
    type.isSelected = true;
    type.entity = records.front();
    type.number = static_cast<std::uint32_t>(recordLists.size());
    recordLists.push_back(std::move(records));
  }
  return type;
}

// Receives the records of an instance in the usual form. A simple one has the entity of its type, which is not looked
// up again.
class StepEntityStore::Sink : public StepInstanceText::Ignore {
 public:
  Sink(StepEntityStore& target, StepEntity recordEntity, StepReferences const& resolved)
      : store(target), references(resolved), entity(recordEntity) {}

  void BeginRecord(std::string_view type) {
    if (entity == StepEntity::None) return store.BeginRecord(type);
    store.isKnown = true;
    store.hasKnown = true;
    store.PutEntity(entity);
  }
  void EndRecord() { store.EndRecord(); }
  // Not copied: a byte follows that no number contains.
  void Number(std::string_view number, bool /*isReal*/) {
    if (!store.isKnown) return;
    if (number.size() > kNumberLimit) return store.PutNumber(number);
    store.PutDouble(VRELFloatUtil::vrelstrtod(number.data(), nullptr));
  }
  void String(std::string_view text, bool isDoubled, long /*lines*/) {
    if (!isDoubled) return store.PutBytes(StepValue::Text, text);
    std::string reduced;
    for (std::size_t i = 0; i < text.size(); ++i) {
      reduced += text[i];
      if (text[i] == '\'') ++i;
    }
    store.PutBytes(StepValue::Text, reduced);
  }
  void Enumeration(std::string_view name) { store.PutBytes(StepValue::Enumeration, name); }
  void Reference(StepInstanceText::Number const& target) {
    if (!store.isKnown) return;
    Id id;
    id.digits = target.digits;
    id.number = target.value;
    store.PutReference(references.Resolve(id) ? id.ordinal : 0, id.digits);
  }
  void Unset() { store.PutKind(StepValue::Unset); }
  void Derived() { store.PutKind(StepValue::Derived); }
  void BeginList() { store.PutKind(StepValue::List); }
  void EndList() { store.PutKind(StepValue::EndOfList); }
  void BeginTyped(std::string_view type) { store.PutBytes(StepValue::Typed, type); }
  void EndTyped() { store.PutKind(StepValue::EndOfList); }

 private:
  StepEntityStore& store;
  StepReferences const& references;
  StepEntity const entity;
};

bool StepEntityStore::Add(Id const& id, Type const& type, StepInstanceText& text, std::size_t limit,
                          StepReferences const& references) {
  bool const isComplex = text.AtList();
  Kind const listed = KindOf(id.ordinal);
  BeginInstance(id, isComplex);
  std::uint32_t const ordinal = current;
  Sink sink(*this, isComplex ? StepEntity::None : type.entity, references);
  if (text.ReadRecords(sink) && text.Size() <= limit) {
    EndInstance();
    return true;
  }
  kinds[ordinal] = listed;
  isKnown = false;
  current = 0;
  return false;
}

void StepEntityStore::EndRecord() {
  PutKind(StepValue::EndOfList);
  isKnown = false;
}

void StepEntityStore::PutKind(StepValue::Kind kind) {
  if (isKnown) bytes.Put(kind);
}

void StepEntityStore::PutBytes(StepValue::Kind kind, std::string_view text) {
  if (!isKnown) return;
  bytes.Put(kind);
  bytes.PutSize(text.size());
  bytes.Put(text.data(), text.size());
}

void StepEntityStore::PutNumber(std::string_view number) {
  if (!isKnown) return;
  char text[kNumberLimit + 1];
  std::size_t const size = std::min(number.size(), kNumberLimit);
  std::memcpy(text, number.data(), size);
  text[size] = '\0';
  PutDouble(VRELFloatUtil::vrelstrtod(text, nullptr));
}

void StepEntityStore::PutDouble(double value) {
  unsigned char* const room = bytes.Room(1 + sizeof value);
  *room = StepValue::Number;
  std::memcpy(room + 1, &value, sizeof value);
  bytes.Extend(1 + sizeof value);
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
  PutReference(defined ? target.ordinal : 0, target.digits);
}

void StepEntityStore::PutReference(std::uint32_t ordinal, std::string_view digits) {
  unsigned char* const room = bytes.Room(1 + sizeof ordinal);
  *room = StepValue::Reference;
  std::memcpy(room + 1, &ordinal, sizeof ordinal);
  bytes.Extend(1 + sizeof ordinal);
  if (ordinal != 0) return;
  bytes.PutSize(digits.size());
  bytes.Put(digits.data(), digits.size());
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

// A distribution sort of the records by entity. An instance with two records of one entity is listed twice.
void StepEntityStore::SortByEntity() const {
  begins.assign(kStepEntityCount + 1, 0);
  auto const forEach = [this](auto const& take) {
    for (std::uint32_t const instance : selected) {
      Kind const kind = kinds[instance];
      if (!kind.isComplex) {
        if (kind.entity != 0) take(std::size_t(kind.entity), instance);
        continue;
      }
      if (kind.state == Listed) {
        for (StepEntity const each : RecordsOf(instance)) take(static_cast<std::size_t>(each), instance);
        continue;
      }
      for (Records records(*this, instance); records.Next();) {
        take(static_cast<std::size_t>(records.Current().entity), instance);
      }
    }
  };
  forEach([this](std::size_t entity, std::uint32_t /*instance*/) { ++begins[entity + 1]; });
  for (std::size_t i = 0; i < kStepEntityCount; ++i) begins[i + 1] += begins[i];
  sorted.resize(begins.back());
  std::vector<std::size_t> next(begins);
  forEach([&](std::size_t entity, std::uint32_t instance) { sorted[next[entity]++] = instance; });
}

std::vector<std::uint32_t> StepEntityStore::InstancesOf(StepEntity entity) const {
  std::vector<std::uint32_t> found;
  if (HasShapeEntities(entity)) {
    for (std::uint32_t instance = 1; instance < kinds.size(); ++instance) {
      if (Is(instance, entity)) found.push_back(instance);
    }
    return found;
  }
  if (begins.empty()) SortByEntity();
  for (std::size_t i = 1; i < kStepEntityCount; ++i) {
    if (!kStepEntityTable.IsA(static_cast<StepEntity>(i), entity)) continue;
    found.insert(found.end(), sorted.begin() + static_cast<std::ptrdiff_t>(begins[i]),
                 sorted.begin() + static_cast<std::ptrdiff_t>(begins[i + 1]));
  }
  if (!std::is_sorted(found.begin(), found.end())) std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

bool StepEntityStore::HasRecord(std::uint32_t instance, StepEntity entity) const noexcept {
  if (kinds[instance].state == Listed) {
    for (StepEntity const each : RecordsOf(instance)) {
      if (kStepEntityTable.IsA(each, entity)) return true;
    }
    return false;
  }
  for (Records records(*this, instance); records.Next();) {
    if (kStepEntityTable.IsA(records.Current().entity, entity)) return true;
  }
  return false;
}

// With external mapping a record holds the attributes of its own entity alone; with internal mapping the only record
// holds those of its supertypes first.
StepValue StepEntityStore::Get(std::uint32_t instance, StepAttribute const& attribute) const noexcept {
  // A listed instance of another entity is not loaded.
  StepEntity const simple = SimpleEntityOf(instance);
  if (simple != StepEntity::None && !kStepEntityTable.IsA(simple, attribute.entity)) return {};
  Records records(*this, instance);
  while (records.Next()) {
    Record const record = records.Current();
    bool const matches = records.IsExternal() ? record.entity == attribute.entity
                                              : kStepEntityTable.IsA(record.entity, attribute.entity);
    if (!matches) continue;
    int place = records.IsExternal() ? attribute.own : attribute.position;
    StepValues values(record.values);
    while (values.Next()) {
      if (place-- == 0) return values.Current();
    }
    return {};
  }
  return {};
}

bool StepEntityStore::ReadReferences(std::uint32_t instance, StepAttribute const& attribute,
                                     std::vector<std::uint32_t>& targets) const {
  std::size_t const old = targets.size();
  bool const isRead = RecordFrom(instance, attribute).References([&](std::int64_t id) {
    std::uint32_t const target = Find(id);
    if (target != 0) targets.push_back(target);
    return target != 0;
  });
  if (!isRead) targets.resize(old);
  return isRead;
}

bool StepEntityStore::ReadNumbers(std::uint32_t instance, StepAttribute const& attribute,
                                  std::vector<double>& numbers) const {
  std::size_t const old = numbers.size();
  bool const isRead = RecordFrom(instance, attribute).Numbers([&](double number) {
    numbers.push_back(number);
    return true;
  });
  if (!isRead) numbers.resize(old);
  return isRead;
}

bool StepEntityStore::ReadNumber(std::uint32_t instance, StepAttribute const& attribute,
                                 double& number) const noexcept {
  return RecordFrom(instance, attribute).Number(number);
}

bool StepEntityStore::ReadFlag(std::uint32_t instance, StepAttribute const& attribute, bool& flag) const noexcept {
  std::string_view name;
  if (!RecordFrom(instance, attribute).Enumeration(name)) return false;
  flag = name == "T";
  return true;
}

bool StepEntityStore::IsUnset(std::uint32_t instance, StepAttribute const& attribute) const noexcept {
  return RecordFrom(instance, attribute).AtUnset();
}

std::string_view StepEntityStore::TypeNameOf(std::uint32_t instance) const noexcept {
  if (StepEntity const entity = EntityOf(instance); entity != StepEntity::None) return DefinitionOf(entity).name;
  if (KindOf(instance).state == Listed) return unknownTypes[source->TypeNumberOf(instance)];
  Records records(*this, instance);
  return records.Next() ? std::string_view() : unknownTypes[records.UnknownType()];
}

std::string StepEntityStore::IdOf(std::uint32_t instance) const {
  if (KindOf(instance).state == None) return "#?";
  if (source != nullptr) return source->IdOf(instance);
  unsigned char const* position = BytesOf(instance);
  bool const isLong = (*position++ & kLongId) != 0;
  return "#" + (isLong ? std::string(TakeText(position)) : std::to_string(TakeSize(position)));
}
