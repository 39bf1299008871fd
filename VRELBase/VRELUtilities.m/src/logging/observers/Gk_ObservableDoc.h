// Named channel from a worker to the application.
#pragma once

#include "Gk_ObsWraper.h"
#include "Gk_Observer.h"
#include "VRELExport.h"

class Gk_ROString;
class VRELOutputStream;
class VRELStreamFormatter;
class VRELString;

// Static operations on observables. A worker adds an observable under a name; the application attaches observers to the
// same name:
//
//   Gk_ObsWraper faces = Gk_ObservableDoc::addObservable("step/reader/faces", Gk_Observer::ProgressType);
//   Gk_ObservableDoc::attachObserver("step/reader/faces", &bar);
//   faces.setMax(120);
//
// A name is a path in the folders of Gk_Nest. addObservable creates the observable, which exists until the process
// exits.
//
// Errors: no operation sends an event. addObservable throws if an abort was requested; all operations throw if an
// allocation fails.
// Thread safety: none.
class VREL_EXPORT Gk_ObservableDoc {
 public:
  // Creates the observable if it does not exist, and sets its type. Attached observers stay. Wide names are converted
  // to the default codepage of the process.
  static Gk_ObsWraper addObservable(Gk_ROString const& name, Gk_Observer::Type type);
  static Gk_ObsWraper addObservable(VRELString const& name, Gk_Observer::Type type);
  static Gk_ObsWraper addObservable(char const* name, Gk_Observer::Type type);

  // Returns a wrapper on the observable `name`, or `name`/`child` if `child` is not null. If there is no such
  // observable, the wrapper sends to no observer.
  static Gk_ObsWraper fetchObservable(Gk_ROString const& name, char const* child = nullptr);

  // Add and remove an observer. Return false if the observable does not exist, if the observer is null or of another
  // type, or if it is already attached (attachObserver) or not attached (removeObserver).
  static bool attachObserver(Gk_ROString const& name, Gk_Observer* observer);
  static bool removeObserver(Gk_ROString const& name, Gk_Observer* observer);
  // Removes all observers of the observable, if it exists.
  static void removeAllObserver(Gk_ROString const& name);

  // Sets the stream to which wrappers write a line for each value that they send; null for none, which is the default.
  //
  // Ownership: the stream is not owned. Install another one before deleting it.
  static void installDebugStream(VRELOutputStream* stream);

  // Returns the formatter on that stream.
  static VRELStreamFormatter& debugSink() noexcept { return _debugSink; }

 private:
  static VRELStreamFormatter _debugSink;
};
