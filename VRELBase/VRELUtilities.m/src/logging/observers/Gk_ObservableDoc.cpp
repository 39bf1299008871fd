#include "Gk_ObservableDoc.h"

#include "Gk_Observable.h"
#include "Gk_ROString.h"
#include "VRELNarrowText.h"
#include "VRELStreamFormatter.h"

namespace {

// Returns the observable if it exists and is of the type of the observer, or null.
Gk_Observable* FetchMatching(Gk_ROString const& name, Gk_Observer const* observer) {
  Gk_Observable* const observable = Gk_Observable::fetch(name, false);
  if (observable == nullptr || observer == nullptr) return nullptr;
  return observer->getType() == observable->getType() ? observable : nullptr;
}

}  // namespace

Gk_ObsWraper Gk_ObservableDoc::addObservable(Gk_ROString const& name, Gk_Observer::Type type) {
  Gk_Observable* const observable = Gk_Observable::fetch(name, true);
  if (observable != nullptr) observable->setType(type);
  return Gk_ObsWraper(Gk_String(name), observable);
}

Gk_ObsWraper Gk_ObservableDoc::addObservable(VRELString const& name, Gk_Observer::Type type) {
  return addObservable(VRELNarrowText(name).dataStr(), type);
}

Gk_ObsWraper Gk_ObservableDoc::addObservable(char const* name, Gk_Observer::Type type) {
  return addObservable(Gk_ROString(name), type);
}

Gk_ObsWraper Gk_ObservableDoc::fetchObservable(Gk_ROString const& name, char const* child) {
  Gk_String path(name);
  if (child != nullptr) {
    path.append("/");
    path.append(child);
  }
  return Gk_ObsWraper(path, Gk_Observable::fetch(path.dataStr(), false));
}

bool Gk_ObservableDoc::attachObserver(Gk_ROString const& name, Gk_Observer* observer) {
  Gk_Observable* const observable = FetchMatching(name, observer);
  return observable != nullptr && observable->getObservers().Add(observer);
}

bool Gk_ObservableDoc::removeObserver(Gk_ROString const& name, Gk_Observer* observer) {
  Gk_Observable* const observable = FetchMatching(name, observer);
  return observable != nullptr && observable->getObservers().Remove(observer);
}

void Gk_ObservableDoc::removeAllObserver(Gk_ROString const& name) {
  Gk_Observable* const observable = Gk_Observable::fetch(name, false);
  if (observable != nullptr) observable->getObservers().Clear();
}

void Gk_ObservableDoc::installDebugStream(VRELOutputStream* stream) {
  _debugSink.installOutputStream(stream);
}
