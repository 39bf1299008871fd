// Compact storage of the instances that the product model needs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "DocumentVisitor.h"
#include "StepBlockCache.h"
#include "StepEntities.h"
#include "StepHash.h"
#include "StepIds.h"
#include "StepRecordText.h"

class StepInstanceText;
class StepReferences;

// Parameter of a record. Lists and typed parameters are decoded when they are iterated.
struct StepValue {
  enum Kind : unsigned char { EndOfList, Number, Text, Enumeration, Reference, Unset, Derived, List, Typed, Other };

  Kind kind = EndOfList;
  double number = 0.0;    // of Number
  std::string_view text;  // of Text (UTF-8), Enumeration, the type name of Typed, and the id of a dangling Reference
  std::uint32_t reference = 0;  // of Reference: the ordinal of the instance, 0 if the document does not contain it
  unsigned char const* content = nullptr;  // of List and Typed

  // Returns the name of the kind for messages: "a number".
  char const* KindName() const noexcept;
};

// Iterates the values of a list or a record.
//
//   for (StepValues values(list); values.Next();) Use(values.Current());
class StepValues {
 public:
  explicit StepValues(StepValue const& list) noexcept : position(list.content) {}
  explicit StepValues(unsigned char const* start) noexcept : position(start) {}

  bool Next() noexcept;
  StepValue const& Current() const noexcept { return current; }

 private:
  unsigned char const* position;
  StepValue current;
};

// Visitor that stores the instances of known entities, by their ordinal. Of other instances only the id and the type
// are stored. With a source, instances can be listed with their types alone; they are loaded when they are asked for,
// and stored then. Stored instances do not move.
//
// Memory: 4 bytes for each instance of the document, and 8 for those that are not part of a shape. For each stored
// instance about 40 bytes and the id, 9 for each number, 5 for each reference, and one for each other value.
//
//   StepEntityStore store;
//   document.Describe(store, progress, false);
//   for (std::uint32_t const product : store.InstancesOf(StepEntity::Product)) {
//     StepValue const name = store.Get(product, STEP_ATTRIBUTE(Product, "name"));
//   }
class StepEntityStore final : public DocumentVisitor {
 public:
  // Where listed instances come from.
  class Source {
   public:
    virtual ~Source() = default;
    // Passes an instance to the store, or does nothing if that fails.
    virtual void Load(std::uint32_t instance) noexcept = 0;
    // Returns "#12".
    virtual std::string IdOf(std::uint32_t instance) const = 0;
    // Returns Type::number of a listed instance.
    virtual std::uint32_t TypeNumberOf(std::uint32_t instance) const noexcept = 0;
    // Returns the offset of the records of a listed instance in the file.
    virtual std::uint64_t OffsetOf(std::uint32_t instance) const noexcept = 0;
    // Returns the ordinal of an id, or 0 if the document does not contain it.
    virtual std::uint32_t Find(std::int64_t /*id*/) const noexcept { return 0; }
  };

  StepEntityStore() = default;
  // Begins with so many instances, of which nothing is known. Without the bytes of the file, attributes are not read
  // from them. The ids of `run` are found without a call.
  // Ownership: `instanceSource` and `fileBytes` are not owned.
  StepEntityStore(std::uint32_t instances, Source& instanceSource, StepBlockCache* fileBytes = nullptr,
                  StepIds::Run const& run = {})
      : source(&instanceSource), blocks(fileBytes), consecutive(run), kinds(std::size_t(instances) + 1) {}

  void BeginInstance(Id const& id, bool complex) override;
  void EndInstance() override;
  void BeginRecord(std::string_view type) override;
  void EndRecord() override;
  void Integer(std::string_view number) override { PutNumber(number); }
  void Real(std::string_view number) override { PutNumber(number); }
  void String(DocumentVisitor::Text const& text) override;
  void Enumeration(std::string_view name) override;
  void Binary(std::string_view digits) override;
  void Reference(Id const& target, bool defined) override;
  void Unset() override { PutKind(StepValue::Unset); }
  void Derived() override { PutKind(StepValue::Derived); }
  void BeginList() override { PutKind(StepValue::List); }
  void EndList() override { PutKind(StepValue::EndOfList); }
  void BeginTyped(std::string_view type) override;
  void EndTyped() override { PutKind(StepValue::EndOfList); }
  void Name(std::string_view name) override;
  void Resource(std::string_view resource) override;
  void BeginBraces(std::string_view tag) override;
  void EndBraces() override { PutKind(StepValue::EndOfList); }

  // Type of instances.
  struct Type {
    StepEntity entity = StepEntity::None;  // of the first known record
    std::uint32_t number = 0;              // of an unknown type, or of the known records of an instance with several
    bool isComplex = false;
    bool isComplete = true;   // otherwise the records are not those of the name
    bool isSelected = false;  // has an entity that is not only found by references
  };
  // Returns the type with a name of StepTypes: "A", or "(A B)" for several records.
  Type FindType(std::string_view name);
  // Stores the records that follow "=" in `text`. Returns false, and stores nothing, if they are not in the usual form
  // or have more than `limit` bytes.
  // Requires: `type` is that of the instance. The digits of the id may be empty if its number fits.
  bool Add(Id const& id, Type const& type, StepInstanceText& text, std::size_t limit, StepReferences const& references);
  // Lists an instance by its type and the offset of its records in the file.
  // Requires: a source; an ordinal of the document, in ascending order; the type is complete.
  void List(std::uint32_t ordinal, Type const& type, std::uint64_t offset) {
    if (ordinal >= groupEnd) BeginGroup(ordinal, offset);
    std::uint64_t const distance = offset - groupOffset;
    Kind kind(type.entity, Listed, type.isComplex);
    kind.distance = static_cast<std::uint16_t>(distance < kFar ? distance : kFar);
    kinds[ordinal] = kind;
    if (type.isSelected) Select(ordinal);
  }

  // Returns the highest ordinal; the lowest is 1.
  std::uint32_t InstanceCount() const noexcept { return static_cast<std::uint32_t>(kinds.size()) - 1; }
  // Returns the instances that have a record of this entity or one of its subtypes, in the document's order.
  std::vector<std::uint32_t> InstancesOf(StepEntity entity) const;
  // Returns whether the instance has a record of the entity or one of its subtypes.
  bool Is(std::uint32_t instance, StepEntity entity) const noexcept {
    Kind const kind = KindOf(instance);
    return kind.isComplex ? HasRecord(instance, entity)
                          : kStepEntityTable.IsA(kind.Entity(), entity) && kind.Entity() != StepEntity::None;
  }
  // Returns the entity of the first known record, or None.
  StepEntity EntityOf(std::uint32_t instance) const noexcept { return KindOf(instance).Entity(); }
  // Returns the value of an attribute, with internal or external mapping. The kind is EndOfList if the instance is not
  // of the attribute's entity, or if its record is too short.
  StepValue Get(std::uint32_t instance, StepAttribute const& attribute) const noexcept;
  // The following functions read attributes of listed instances from the bytes of the file, without storing anything.
  // They need a simple instance in the usual form, and return false for others, which Get decodes.

  // Sets the ordinal of a reference.
  bool ReadReference(std::uint32_t instance, StepAttribute const& attribute, std::uint32_t& target) const noexcept {
    std::int64_t id = 0;
    if (!RecordFrom(instance, attribute).Reference(id)) return false;
    target = Find(id);
    return target != 0;
  }
  // Appends the ordinals of a list of references.
  bool ReadReferences(std::uint32_t instance, StepAttribute const& attribute,
                      std::vector<std::uint32_t>& targets) const;
  // Reads a list of one to three numbers; missing ones are 0.
  bool ReadTriple(std::uint32_t instance, StepAttribute const& attribute, double* numbers) const noexcept {
    return RecordFrom(instance, attribute).Triple(numbers);
  }
  // Appends a list of numbers.
  bool ReadNumbers(std::uint32_t instance, StepAttribute const& attribute, std::vector<double>& numbers) const;
  bool ReadNumber(std::uint32_t instance, StepAttribute const& attribute, double& number) const noexcept;
  bool ReadFlag(std::uint32_t instance, StepAttribute const& attribute, bool& flag) const noexcept;
  // Returns whether the attribute is "$".
  bool IsUnset(std::uint32_t instance, StepAttribute const& attribute) const noexcept;
  // Returns the record of an instance whose type is the entity itself; valid until the next call of the store.
  StepRecordText RecordOf(std::uint32_t instance) const noexcept {
    Kind const kind = KindOf(instance);
    return kind.state == Listed && !kind.isComplex && kind.entity != 0 ? RecordOf(instance, kind.Entity())
                                                                       : StepRecordText();
  }
  // Returns the ordinal of an id in such a record, or 0.
  std::uint32_t Find(std::int64_t id) const noexcept {
    std::uint64_t const place = static_cast<std::uint64_t>(id) - consecutive.id;
    if (place < consecutive.length) return consecutive.instance + static_cast<std::uint32_t>(place) + 1;
    return source == nullptr ? 0 : source->Find(id);
  }

  // Returns the entity of a simple instance, None for others.
  StepEntity SimpleEntityOf(std::uint32_t instance) const noexcept {
    Kind const kind = KindOf(instance);
    return kind.isComplex ? StepEntity::None : kind.Entity();
  }
  // Returns the type of the first known record, or of the first record if none is known; empty if it is not stored
  // because the document has too many unknown types.
  std::string_view TypeNameOf(std::uint32_t instance) const noexcept;
  // Returns "#12".
  std::string IdOf(std::uint32_t instance) const;

 private:
  struct Record {
    StepEntity entity = StepEntity::None;
    unsigned char const* values = nullptr;
  };
  class Records;

  class Sink;

  enum State { None, Listed, Stored };

  // The entity of the first known record, the state, and how many bytes after the first instance of its group the
  // instance begins in the file. The source has the offset too, but in memory that is twelve times larger, which the
  // cache of the processor does not hold.
  struct Kind {
    std::uint16_t entity : 13;
    std::uint16_t state : 2;
    std::uint16_t isComplex : 1;
    std::uint16_t distance = 0;
    constexpr Kind() noexcept : entity(0), state(None), isComplex(0) {}
    constexpr Kind(StepEntity first, State now, bool hasSeveral) noexcept
        : entity(static_cast<std::uint16_t>(first) & 0x1FFFU),
          state(static_cast<std::uint16_t>(now) & 3U),
          isComplex(hasSeveral ? 1U : 0U) {}
    constexpr StepEntity Entity() const noexcept { return static_cast<StepEntity>(entity); }
  };
  static_assert(kStepEntityCount <= 0x1FFF && sizeof(Kind) == 4);
  static constexpr std::uint32_t kGroup = 64;  // instances
  static constexpr std::uint16_t kFar = 0xFFFF;

  struct Free {
    void operator()(unsigned char* memory) const noexcept { std::free(memory); }
  };
  using Block = std::unique_ptr<unsigned char, Free>;

  // Bytes that grow in place where the system can do that.
  class Bytes {
   public:
    std::size_t Size() const noexcept { return size; }
    // Adds bytes that were written to Room.
    void Extend(std::size_t count) noexcept { size += count; }
    unsigned char const* Begin() const noexcept { return block.get(); }
    void Clear() noexcept { size = 0; }
    // Returns the bytes and forgets them.
    Block Release() noexcept {
      size = 0;
      capacity = 0;
      return std::move(block);
    }
    // Returns room for so many bytes at the end.
    unsigned char* Room(std::size_t wanted) {
      if (capacity - size < wanted) Grow(wanted);
      return block.get() + size;
    }
    void Put(unsigned char byte) {
      *Room(1) = byte;
      ++size;
    }
    void Put(void const* data, std::size_t length);
    void PutSize(std::size_t number);

   private:
    void Grow(std::size_t wanted);

    Block block;
    std::size_t size = 0;
    std::size_t capacity = 0;
  };

  StepRecordText RecordOf(std::uint32_t instance, StepEntity entity) const noexcept {
    return {blocks == nullptr ? nullptr : blocks->BytesAt(OffsetOf(instance)), DefinitionOf(entity).name};
  }
  // Returns the record of a listed instance from an attribute on.
  StepRecordText RecordFrom(std::uint32_t instance, StepAttribute const& attribute) const noexcept {
    Kind const kind = KindOf(instance);
    if (kind.state != Listed || kind.isComplex || !kStepEntityTable.IsA(kind.Entity(), attribute.entity)) return {};
    StepRecordText record = RecordOf(instance, kind.Entity());
    for (int i = 0; i < attribute.position && record.Skip(); ++i) {
    }
    return record;
  }
  bool HasRecord(std::uint32_t instance, StepEntity entity) const noexcept;
  // Returns the known records of a listed instance that has several.
  std::vector<StepEntity> const& RecordsOf(std::uint32_t instance) const noexcept {
    return recordLists[source->TypeNumberOf(instance)];
  }
  void StartInstance(Id const& id, bool complex);
  void PutEntity(StepEntity entity);
  void PutReference(std::uint32_t ordinal, std::string_view digits);
  std::uint32_t NumberOfUnknown(std::string_view type);
  void PutKind(StepValue::Kind kind);
  void PutNumber(std::string_view number);
  void PutDouble(double value);
  void PutBytes(StepValue::Kind kind, std::string_view text);
  void SortByEntity() const;

  Kind KindOf(std::uint32_t instance) const noexcept { return instance < kinds.size() ? kinds[instance] : Kind(); }
  std::uint64_t OffsetOf(std::uint32_t instance) const noexcept {
    std::uint16_t const distance = kinds[instance].distance;
    return distance != kFar ? groupOffsets[instance / kGroup] + distance : source->OffsetOf(instance);
  }
  // Returns the bytes of a stored instance.
  unsigned char const* BytesOf(std::uint32_t instance) const noexcept {
    std::uint64_t const place = places.find(instance)->second;
    return chunks[place >> kChunkBits].get() + (place & ((1U << kChunkBits) - 1));
  }
  void BeginGroup(std::uint32_t ordinal, std::uint64_t offset);
  void PlaceInstance();
  void Select(std::uint32_t ordinal) {
    begins.clear();
    selected.push_back(ordinal);
  }

  static constexpr unsigned kChunkBits = 18;

  Source* source = nullptr;
  StepBlockCache* blocks = nullptr;
  StepIds::Run consecutive;
  Bytes bytes;                                        // the present instance
  std::vector<Block> chunks;                          // of stored instances
  std::size_t lastChunk = 0;                          // the one that is being filled
  std::size_t filled = std::size_t(1) << kChunkBits;  // its bytes that are used
  std::vector<Kind> kinds{Kind()};                    // by ordinal
  std::vector<std::uint64_t> groupOffsets;            // of the first listed instance of each group
  std::uint64_t groupOffset = 0;                      // of the last group
  std::uint32_t groupEnd = 0;                         // the first ordinal after it
  // Of stored instances: the chunk and the offset there.
  std::unordered_map<std::uint32_t, std::uint64_t> places;
  std::vector<std::uint32_t> selected;  // listed or stored, except simple ones of a shape's entities
  // Those by entity, and where those of each entity begin. Built when they are asked for.
  mutable std::vector<std::uint32_t> sorted;
  mutable std::vector<std::size_t> begins;
  std::unordered_map<std::string, std::uint32_t, SeededStringHash> unknownNumbers;  // of unknown types, from 1
  std::vector<std::string_view> unknownTypes{{}};    // by number; 0 is for those that are not stored
  std::vector<std::vector<StepEntity>> recordLists;  // the known records of types with several
  std::uint32_t unknownType = 0;                     // of the first record of the present instance
  bool isKnown = false;                              // the present record is of a known entity
  std::uint32_t current = 0;                         // ordinal of the present instance, 0 outside of instances
  bool isFirstRecord = true;
  bool hasKnown = false;  // the present instance has a known record
};
