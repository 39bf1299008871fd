// Named target of values, with its observers.
#pragma once

#include "Gk_Observer.h"
#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELHashList.h"

class Gk_ROString;

// Name in a folder of Gk_Nest, with the observers that are attached to it.
//
// Workers and applications use it through Gk_ObservableDoc.
//
// Ownership: the folder owns the observable, which exists until the process exits. Observers are not owned.
class VREL_EXPORT Gk_Observable {
 public:
  // Creates an observable of type 0 with an empty name.
  Gk_Observable();
  Gk_Observable(Gk_Observable const&) = delete;
  Gk_Observable& operator=(Gk_Observable const&) = delete;
  virtual ~Gk_Observable();

  // Returns the name within the folder. setValue stores a deep copy.
  Gk_String const& getValue() const noexcept { return value; }
  void setValue(Gk_String const& name) { value = name.copy(); }

  // Returns or sets the type of the observers that can be attached. Attached observers stay.
  Gk_Observer::Type getType() const noexcept { return type; }
  void setType(Gk_Observer::Type observerType) noexcept { type = observerType; }

  VRELHashList<Gk_Observer*>& getObservers() noexcept { return observers; }

  // Calls Gk_Nest::fetchObservable.
  static Gk_Observable* fetch(Gk_ROString const& path, bool create);

 private:
  Gk_Observer::Type type;
  VRELHashList<Gk_Observer*> observers;
  Gk_String value;
};
