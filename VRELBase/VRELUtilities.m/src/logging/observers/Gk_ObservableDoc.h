// The named channel from the worker to the application.
#pragma once

#include "Gk_ObsWraper.h"
#include "Gk_Observer.h"
#include "VRELExport.h"

class Gk_ROString;
class VRELOutputStream;
class VRELStreamFormatter;
class VRELString;

// A worker names what it reports, the application attaches observers to the name:
//
//   Gk_ObsWraper faces = Gk_ObservableDoc::addObservable("step/reader/faces", Gk_Observer::ProgressType);
//   Gk_ObservableDoc::attachObserver("step/reader/faces", &bar);
//   faces.setMax(120);
//
// A name is a path in the folders of Gk_Nest. What it stands for is made by addObservable and lives until the exit of
// the process. Nothing here sends an event, or throws but for an abort that addObservable finds asked for, and for
// memory that runs out.
class VREL_EXPORT Gk_ObservableDoc {
 public:
  // Makes the observable where it is missing, and gives it the type; observers that are attached stay. Text in wide
  // characters goes through the process's default codepage.
  static Gk_ObsWraper addObservable(Gk_ROString const& name, Gk_Observer::Type type);
  static Gk_ObsWraper addObservable(VRELString const& name, Gk_Observer::Type type);
  static Gk_ObsWraper addObservable(char const* name, Gk_Observer::Type type);

  // The observable of the name, or of the name, "/" and the child; a wrapper on none where there is no such observable.
  static Gk_ObsWraper fetchObservable(Gk_ROString const& name, char const* child = nullptr);

  // Whether the observer was added or removed. False where there is no such observable, for null, for an observer of
  // another type, and for one that is there already, or is not there.
  static bool attachObserver(Gk_ROString const& name, Gk_Observer* observer);
  static bool removeObserver(Gk_ROString const& name, Gk_Observer* observer);
  static void removeAllObserver(Gk_ROString const& name);

  // Where wrappers write what they send, a line for each value; null for nowhere, as at first. The stream is not
  // owned: name another one before it dies.
  static void installDebugStream(VRELOutputStream* stream);

  // The formatter on that stream.
  static VRELStreamFormatter& debugSink() noexcept { return _debugSink; }

 private:
  static VRELStreamFormatter _debugSink;
};
