// Who is told of values by name.
#pragma once

#include "VRELExport.h"

// What an application attaches to an observable (see Gk_ObservableDoc). Each type of observer has a class of its own,
// which declares the operations of the type; an application derives from that:
//
//   class Bar : public Gk_ProgressObserver {
//     Type getType() const override { return ProgressType; }
//     void setMax(int steps) override { ... }
//     ...
//
// An observer must be of the class of the type that getType() names: its operations are called by their places in the
// virtual table. It runs inside the send, on the worker's thread, and may attach and remove observers, itself among
// them. It belongs to the application, which removes it before it dies.
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
  // A value of another type was sent to the observable; does nothing here.
  virtual void wrongType() const;

 protected:
  // Not virtual, so that the operations of each type follow right behind wrongType.
  ~Gk_Observer() = default;
};
