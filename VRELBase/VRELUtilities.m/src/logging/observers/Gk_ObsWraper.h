// What a worker sends its values through.
#pragma once

#include "Gk_CPUTime.h"
#include "Gk_String.h"
#include "VRELExport.h"

class Gk_Observable;

// A name and its observable, which may be missing: what is sent then goes nowhere. A plain value, to be copied and
// thrown away freely.
//
// Each operation sends a value to those observers of the observable that are of its type, and tells the others
// wrongType(), all in the order of their hash list. Before that it writes a line of the name and the value where
// Gk_ObservableDoc::installDebugStream has named a stream.
//
// An observer that is removed while a value is on its way is not told of it any more, one that is attached sees the
// next value, and each other one is told once, also where an observer sends to the same name.
class VREL_EXPORT Gk_ObsWraper {
 public:
  Gk_ObsWraper(Gk_String const& shownName, Gk_Observable* target);
  Gk_ObsWraper(Gk_ObsWraper const& other);
  Gk_ObsWraper& operator=(Gk_ObsWraper const& other);
  ~Gk_ObsWraper();

  void setInt(int value);
  void setDouble(double value);
  void setString(Gk_String value);

  // These go to observers of progress. setMax begins a phase and setOver ends it; the lines between the two are
  // indented. setOver sends the processor time since setMax, in seconds; that it counts from the start of the process
  // without setMax is promised.
  void setMax(int steps);
  void setDone(int steps);
  void setOver();
  void setIntInfo(int value);
  void setDoubleInfo(double value);
  void setStringInfo(Gk_String value);

  // That this one writes no line is promised.
  void setEntityCallback(void* first, void* second);

 private:
  Gk_String name;
  Gk_CPUTime start;
  Gk_Observable* observable;
};
