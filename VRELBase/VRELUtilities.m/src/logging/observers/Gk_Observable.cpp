#include "Gk_Observable.h"

#include "Gk_Nest.h"

Gk_Observable::Gk_Observable() : type(Gk_Observer::IntType), observers(17) {}

Gk_Observable::~Gk_Observable() = default;

Gk_Observable* Gk_Observable::fetch(Gk_ROString const& path, bool create) {
  return Gk_Nest::fetchObservable(path, create);
}
