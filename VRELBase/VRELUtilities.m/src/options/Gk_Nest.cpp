#include "Gk_Nest.h"

#include <memory>

#include "Gk_ErrMgr.h"
#include "Gk_Observable.h"
#include "Gk_Option.h"
#include "VRELRoloTraits.h"

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
  return dynamic_cast<Gk_Nest*>(VRELRoloTraits::fetch(path, create, true));
}

VRELRoloNode* Gk_Nest::newNode() const {
  return new Gk_Nest();
}

template <class Item>
Item* Gk_Nest::fetchItem(Gk_ROString const& path, bool create, VRELDynamicArray<Item*> Gk_Nest::*items) {
  Gk_ROString name(path);
  Gk_Nest* const folder = fetch(&name, create);
  if (create) {
    Gk_ErrMgr::checkAbort();
    if (folder == nullptr) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  }
  if (folder == nullptr) return nullptr;
  VRELDynamicArray<Item*>& held = folder->*items;
  for (int i = held.size() - 1; i >= 0; --i) {
    if (held[i]->getValue().text() == name.text()) return held[i];
  }
  if (!create) return nullptr;
  auto item = std::make_unique<Item>();
  item->setValue(Gk_String(name));
  held.add(item.get());
  return item.release();
}

Gk_Option* Gk_Nest::fetchOption(Gk_ROString const& path, bool create) {
  return fetchItem(path, create, &Gk_Nest::options);
}

Gk_Observable* Gk_Nest::fetchObservable(Gk_ROString const& path, bool create) {
  return fetchItem(path, create, &Gk_Nest::observables);
}
