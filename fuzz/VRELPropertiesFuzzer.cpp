// Feeds generated strings to the reader of properties. Compares the result with a model of the documented hash map, and
// checks that ASCII output reads and writes the same again.
//
// Keys that differ in case only are one key if they meet in one probe run, and two keys otherwise; a rehash can make
// two of them equal, and then drops one. The model therefore repeats every slot of the map, and not only the pairs.
#include "VRELProperties.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Gk_Source.h"
#include "Require.h"
#include "VRELStreamFormatter.h"
#include "VRELStringInputStream.h"
#include "VRELStringOutputStream.h"

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// Open addressing with linear probing from `hashCode() % slots`, equality without regard to case, 17 slots at first,
// and twice as many slots when an addition would fill more than three quarters of them.
class PropertiesModel {
 public:
  struct Slot {
    bool isOccupied = false;
    VRELString key;
    VRELString value;
  };

  // Returns null if there is no such key.
  Slot const* Find(VRELString const& key) const {
    Slot const& slot = slots[Probe(slots, key)];
    return slot.isOccupied ? &slot : nullptr;
  }

  void Put(VRELString const& key, VRELString const& value) {
    std::size_t const match = Probe(slots, key);
    if (slots[match].isOccupied) {
      slots[match].value = value;
      return;
    }
    if (4 * (count + 1) > 3 * slots.size()) Rehash();
    Slot& slot = slots[Probe(slots, key)];
    // The rehash has moved an equal key into the probe run: the map refuses the pair.
    if (slot.isOccupied) return;
    slot = {true, key, value};
    ++count;
  }

  // Includes the entries that a rehash dropped.
  std::size_t Count() const { return count; }

  std::vector<Slot> Entries() const {
    std::vector<Slot> entries;
    std::copy_if(slots.begin(), slots.end(), std::back_inserter(entries), [](Slot const& s) { return s.isOccupied; });
    return entries;
  }

 private:
  using Slots = std::vector<Slot>;

  // Returns the slot of an equal key, or else the first free one.
  static std::size_t Probe(Slots const& where, VRELString const& key) {
    std::size_t slot = static_cast<unsigned int>(key.hashCode()) % where.size();
    while (where[slot].isOccupied && !where[slot].key.equalsIgnoreCase(key)) slot = (slot + 1) % where.size();
    return slot;
  }

  void Rehash() {
    Slots larger(2 * slots.size());
    for (Slot const& slot : slots) {
      if (!slot.isOccupied) continue;
      Slot& target = larger[Probe(larger, slot.key)];
      if (!target.isOccupied) target = slot;
    }
    slots.swap(larger);
  }

  Slots slots = Slots(17);
  std::size_t count = 0;
};

Pairs PairsOf(std::string const& text) {
  Pairs pairs;
  for (std::size_t at = 0; at < text.size();) {
    // Line ends before the first line are not skipped.
    std::size_t const end = std::min(text.find_first_of("\r\n", at + 1), text.size());
    std::string const line = text.substr(at, end - at).c_str();
    if (std::count(line.begin(), line.end(), '=') == 1) {
      std::size_t const mark = line.find('=');
      pairs.emplace_back(line.substr(0, mark), line.substr(mark + 1));
    }
    at = std::min(text.find_first_not_of("\r\n", end), text.size());
  }
  return pairs;
}

void Read(std::string const& text, VRELProperties& properties) {
  VRELStringInputStream stream(Gk_String(text.data(), static_cast<int>(text.size() + 1)));
  Gk_Source source(&stream);
  source >> properties;
}

std::string Write(VRELProperties& properties) {
  VRELStringOutputStream out;
  {
    VRELStreamFormatter formatter(&out);
    formatter << properties;
  }
  out.writeChar('\0');
  return out.contents();
}

bool IsString(VRELValue const& value, VRELString const& expected) {
  VRELString text;
  return value.GetValue(text) == VREL_S_OK && text.equals(expected);
}

void Compare(VRELProperties const& properties, Pairs const& pairs) {
  PropertiesModel model;
  for (Pairs::value_type const& pair : pairs)
    model.Put(VRELString(pair.first.c_str()), VRELString(pair.second.c_str()));
  Require(properties.GetCount() == static_cast<int>(model.Count()), "each line with one = sets a pair, and no other");

  for (std::size_t i = 0; i < pairs.size() && i < 64; ++i) {
    VRELString const key(pairs[i].first.c_str());
    PropertiesModel::Slot const* const expected = model.Find(key);
    VRELValue value;
    bool const isFound = properties.Get(key, value) == VREL_S_OK;
    Require(isFound == (expected != nullptr), "a key is found where the model has it");
    if (isFound) Require(IsString(value, expected->value), "the last line of a key counts");
  }

  std::vector<PropertiesModel::Slot> const entries = model.Entries();
  for (int i = 0; i < 64; ++i) {
    VRELString key;
    VRELValue value;
    bool const isFound = properties.Get(i, key, value) == VREL_S_OK;
    Require(isFound == (static_cast<std::size_t>(i) < entries.size()), "every entry is enumerated");
    if (!isFound) break;
    PropertiesModel::Slot const& expected = entries[static_cast<std::size_t>(i)];
    Require(key.equals(expected.key) && IsString(value, expected.value), "entries are enumerated in slot order");
  }
}

// Reports whether two keys differ in case only.
bool HasKeysEqualIgnoringCase(Pairs const& pairs) {
  std::vector<std::pair<VRELString, std::string>> keys;
  for (Pairs::value_type const& pair : pairs) keys.emplace_back(VRELString(pair.first.c_str()), pair.first);
  std::sort(keys.begin(), keys.end(), [](auto const& a, auto const& b) {
    int const order = a.first.compareToIgnoreCase(b.first);
    return order != 0 ? order < 0 : a.second < b.second;
  });
  auto const isSameButForCase = [](auto const& a, auto const& b) {
    return a.first.equalsIgnoreCase(b.first) && a.second != b.second;
  };
  return std::adjacent_find(keys.begin(), keys.end(), isSameButForCase) != keys.end();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(bytes), size);
  Pairs const pairs = PairsOf(text);
  VRELProperties properties;
  Read(text, properties);
  Compare(properties, pairs);

  // A key may begin with a line end before the first line, only ASCII is written as it was read, and keys that differ
  // in case only may become equal when they are read in another order.
  bool const beginsWithLineEnd = !text.empty() && (text[0] == '\r' || text[0] == '\n');
  bool const isAscii = std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
  if (beginsWithLineEnd || !isAscii || HasKeysEqualIgnoringCase(pairs)) return 0;
  std::string const written = Write(properties);
  VRELProperties again;
  Read(written, again);
  Require(Write(again) == written, "output reads the same again");
  return 0;
}
