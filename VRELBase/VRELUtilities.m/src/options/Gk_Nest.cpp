#include "Gk_Nest.h"

#include <cstring>
#include <memory>
#include <string_view>
#include <typeinfo>

#include "Gk_ErrMgr.h"
#include "Gk_Observable.h"
#include "Gk_Option.h"
#include "VRELRoloTraits.h"

namespace {

// Returns whether the text of a string is `wanted`, which contains no zero byte. Names in a folder mostly differ in
// their last byte.
bool HasText(Gk_String const& name, std::string_view wanted) {
  auto const size = static_cast<std::size_t>(name.len());
  if (size < wanted.size() || (size > wanted.size() && name.begin()[wanted.size()] != '\0')) return false;
  if (wanted.empty()) return true;
  std::size_t const last = wanted.size() - 1;
  return name.begin()[last] == wanted[last] && std::memcmp(name.begin(), wanted.data(), last) == 0;
}

// Returns null for a node of another type.
Gk_Nest* AsFolder(VRELRoloNode* node) {
  // Nearly always the exact type, which is cheaper to compare than to cast to.
  return typeid(*node) == typeid(Gk_Nest) ? static_cast<Gk_Nest*>(node) : dynamic_cast<Gk_Nest*>(node);
}

}  // namespace

Gk_Nest::Gk_Nest() = default;

Gk_Nest::Gk_Nest(Gk_String const& name) {
  setValue(name);
}

Gk_Nest::~Gk_Nest() {
  for (Gk_Option* option : options) delete option;
  for (Gk_Observable* observable : observables) delete observable;
}

Gk_Nest& Gk_Nest::fetchRoot() {
  static Gk_Nest root{Gk_String("/")};
  return root;
}

Gk_Nest* Gk_Nest::fetch(Gk_ROString* path, bool create) {
  return AsFolder(VRELRoloTraits::fetch(path, create, true));
}

VRELRoloNode* Gk_Nest::newNode() const {
  return new Gk_Nest();
}

template <class Item>
Item* Gk_Nest::findItem(std::string_view path, VRELDynamicArray<Item*> Gk_Nest::*items) {
  Gk_Nest& root = fetchRoot();
  std::string_view name = path;
  root.matchSegment(name);
  Gk_Nest* const folder = AsFolder(root.findDescendant(name, true));
  return folder != nullptr ? folder->itemNamed(name, items) : nullptr;
}

// Returns the last item of that name, or null.
template <class Item>
Item* Gk_Nest::itemNamed(std::string_view name, VRELDynamicArray<Item*> Gk_Nest::*items) {
  VRELDynamicArray<Item*>& held = this->*items;
  for (int i = held.size() - 1; i >= 0; --i) {
    if (HasText(held[i]->getValue(), name)) return held[i];
  }
  return nullptr;
}

template <class Item>
Item* Gk_Nest::fetchItem(Gk_ROString const& path, bool create, VRELDynamicArray<Item*> Gk_Nest::*items) {
  if (!create) return findItem(path.text(), items);
  Gk_ROString name(path);
  Gk_Nest* const folder = fetch(&name, true);
  Gk_ErrMgr::checkAbort();
  if (folder == nullptr) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  if (folder == nullptr) return nullptr;
  Item* const existing = folder->itemNamed(name.text(), items);
  if (existing != nullptr) return existing;
  auto item = std::make_unique<Item>();
  item->setValue(Gk_String(name));
  (folder->*items).add(item.get());
  return item.release();
}

Gk_Option* Gk_Nest::findOption(std::string_view path) {
  return findItem(path, &Gk_Nest::options);
}

Gk_Option* Gk_Nest::fetchOption(Gk_ROString const& path, bool create) {
  return fetchItem(path, create, &Gk_Nest::options);
}

Gk_Observable* Gk_Nest::fetchObservable(Gk_ROString const& path, bool create) {
  return fetchItem(path, create, &Gk_Nest::observables);
}
