// Base of the observers of named values.
#pragma once

#include "VRELExport.h"

// Observer that an application attaches to an observable by name (see Gk_ObservableDoc).
//
// Each type of observer has an abstract class of its own that declares the operations of the type. Derive from it:
//
//   class Bar : public Gk_ProgressObserver {
//     Type getType() const override { return ProgressType; }
//     void setMax(int steps) override { ... }
//     ...
//
// Requires: an observer is of the class that belongs to the type which getType() returns. Sends cast it to that class.
// An observer runs inside the send, on the thread of the worker. It may attach and remove observers, itself included.
// Ownership: the application owns the observer and removes it before deleting it.
class VREL_EXPORT Gk_Observer {
 public:
  enum Type : int {
    IntType = 0,       // Gk_IntObserver
    DoubleType = 1,    // Gk_DoubleObserver
    StringType = 2,    // Gk_StringObserver
    ProgressType = 3,  // Gk_ProgressObserver
    EntityType = 4,    // VRELEntityCallback
  };

  virtual Type getType() const = 0;
  // Called when a value of another type is sent to the observable. Does nothing by default.
  virtual void wrongType() const;

 protected:
  // Not virtual: a virtual destructor would move the slots of the operations that follow wrongType.
  ~Gk_Observer() = default;
};
