// Sender of values to the observers of one observable.
#pragma once

#include "Gk_CPUTime.h"
#include "Gk_String.h"
#include "VRELExport.h"

class Gk_Observable;

// Sender of values to an observable: a name, and the observable, which may be null. A value that can be copied freely.
//
//   Gk_ObsWraper faces = Gk_ObservableDoc::fetchObservable("step/reader/faces");
//   faces.setMax(120);
//   for (int i = 0; i < 120; ++i) faces.setDone(i + 1);
//   faces.setOver();
//
// Each operation writes a line with the name and the value to the stream of Gk_ObservableDoc::installDebugStream, if
// there is one. It then calls the operation of every attached observer of its type, and wrongType() of all others, in
// the order of the hash list. A wrapper without an observable only writes the line.
//
// Observers may attach and remove observers and send values during a send. A removed observer is not called any more,
// an attached one receives the next value, and every other observer is called exactly once.
class VREL_EXPORT Gk_ObsWraper {
 public:
  Gk_ObsWraper(Gk_String const& shownName, Gk_Observable* target);
  Gk_ObsWraper(Gk_ObsWraper const& other);
  Gk_ObsWraper& operator=(Gk_ObsWraper const& other);
  ~Gk_ObsWraper();

  void setInt(int value);
  void setDouble(double value);
  void setString(Gk_String value);

  // Send to progress observers. setMax starts a phase and setOver ends it; debug lines between them are indented.
  // setOver sends the processor time since setMax, in seconds.
  //
  // Compatibility: without setMax, setOver measures from tick 0.
  void setMax(int steps);
  void setDone(int steps);
  void setOver();
  void setIntInfo(int value);
  void setDoubleInfo(double value);
  void setStringInfo(Gk_String value);

  // Sends to entity callbacks.
  //
  // Compatibility: writes no debug line.
  void setEntityCallback(void* first, void* second);

 private:
  Gk_String name;
  Gk_CPUTime start;
  Gk_Observable* observable;
};
