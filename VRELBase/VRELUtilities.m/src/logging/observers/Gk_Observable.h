// A name to which values are sent.
#pragma once

#include "Gk_Observer.h"
#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELHashList.h"

class Gk_ROString;

// The observers of one name in a folder of Gk_Nest, which owns it: it lives until the exit of the process. Workers and
// applications reach it through Gk_ObservableDoc. The observers are not owned.
class VREL_EXPORT Gk_Observable {
 public:
  // Of type 0, with an empty name.
  Gk_Observable();
  Gk_Observable(Gk_Observable const&) = delete;
  Gk_Observable& operator=(Gk_Observable const&) = delete;
  virtual ~Gk_Observable();

  // The name within the folder. It is set as a copy that shares nothing.
  Gk_String const& getValue() const noexcept { return value; }
  void setValue(Gk_String const& name) { value = name.copy(); }

  // Of the observers that may be attached; those that are attached stay.
  Gk_Observer::Type getType() const noexcept { return type; }
  void setType(Gk_Observer::Type observerType) noexcept { type = observerType; }

  VRELHashList<Gk_Observer*>& getObservers() noexcept { return observers; }

  // As Gk_Nest::fetchObservable.
  static Gk_Observable* fetch(Gk_ROString const& path, bool create);

 private:
  Gk_Observer::Type type;
  VRELHashList<Gk_Observer*> observers;
  Gk_String value;
};
