#include "Gk_ObsWraper.h"

#include "Gk_DoubleObserver.h"
#include "Gk_IntObserver.h"
#include "Gk_Observable.h"
#include "Gk_ObservableDoc.h"
#include "Gk_ProgressObserver.h"
#include "Gk_StringObserver.h"
#include "VRELEntityCallback.h"
#include "VRELHashListSnapshot.h"
#include "VRELStreamFormatter.h"

namespace {

// Observers may change the list during a send, and a nested send would move its only cursor, so that a snapshot of the
// list is iterated.
template <class Observer, class Call>
void Deliver(Gk_Observable* observable, Gk_Observer::Type type, Call const& call) {
  if (observable == nullptr) return;
  VRELHashListSnapshot<Gk_Observer*> const snapshot(observable->getObservers());
  bool isFirst = true;
  for (auto const& entry : snapshot) {
    Gk_Observer* const observer = entry.element;
    // An observer that was called before it may have removed it.
    if (observer == nullptr || (!isFirst && !snapshot.IsInList(entry))) continue;
    isFirst = false;
    if (observer->getType() == type) {
      call(*static_cast<Observer*>(observer));
    } else {
      observer->wrongType();
    }
  }
}

template <class Value>
void Trace(Gk_String const& name, char const* separator, Value const& value) {
  VRELStreamFormatter& sink = Gk_ObservableDoc::debugSink();
  // Formatting the line costs more than all else here, so it is skipped without a stream.
  if (sink.getOutputStream() == nullptr) return;
  sink << sink.margin() << name << separator << value << sink.endline();
}

}  // namespace

Gk_ObsWraper::Gk_ObsWraper(Gk_String const& shownName, Gk_Observable* target)
    : name(shownName.copy()), start(0), observable(target) {}

Gk_ObsWraper::Gk_ObsWraper(Gk_ObsWraper const& other) = default;

Gk_ObsWraper& Gk_ObsWraper::operator=(Gk_ObsWraper const& other) = default;

Gk_ObsWraper::~Gk_ObsWraper() {
  observable = nullptr;
}

void Gk_ObsWraper::setInt(int value) {
  Trace(name, " : ", value);
  Deliver<Gk_IntObserver>(observable, Gk_Observer::IntType, [&](Gk_IntObserver& observer) { observer.setInt(value); });
}

void Gk_ObsWraper::setDouble(double value) {
  Trace(name, " : ", value);
  Deliver<Gk_DoubleObserver>(observable, Gk_Observer::DoubleType,
                             [&](Gk_DoubleObserver& observer) { observer.setDouble(value); });
}

void Gk_ObsWraper::setString(Gk_String value) {
  Trace(name, " : ", value);
  Deliver<Gk_StringObserver>(observable, Gk_Observer::StringType,
                             [&](Gk_StringObserver& observer) { observer.setString(value); });
}

void Gk_ObsWraper::setMax(int steps) {
  Trace(name, "( start) : ", steps);
  Gk_ObservableDoc::debugSink().margin()->incr();
  start = Gk_CPUTime::now();
  Deliver<Gk_ProgressObserver>(observable, Gk_Observer::ProgressType,
                               [&](Gk_ProgressObserver& observer) { observer.setMax(steps); });
}

void Gk_ObsWraper::setDone(int steps) {
  Trace(name, " : ", steps);
  Deliver<Gk_ProgressObserver>(observable, Gk_Observer::ProgressType,
                               [&](Gk_ProgressObserver& observer) { observer.setDone(steps); });
}

void Gk_ObsWraper::setOver() {
  Gk_CPUTime span = Gk_CPUTime::now();
  span -= start;
  Gk_ObservableDoc::debugSink().margin()->decr();
  Trace(name, "( over) : ", span.seconds());
  Deliver<Gk_ProgressObserver>(observable, Gk_Observer::ProgressType,
                               [&](Gk_ProgressObserver& observer) { observer.setOver(span.seconds()); });
}

void Gk_ObsWraper::setIntInfo(int value) {
  Trace(name, " : ", value);
  Deliver<Gk_ProgressObserver>(observable, Gk_Observer::ProgressType,
                               [&](Gk_ProgressObserver& observer) { observer.setIntInfo(value); });
}

void Gk_ObsWraper::setDoubleInfo(double value) {
  Trace(name, " : ", value);
  Deliver<Gk_ProgressObserver>(observable, Gk_Observer::ProgressType,
                               [&](Gk_ProgressObserver& observer) { observer.setDoubleInfo(value); });
}

void Gk_ObsWraper::setStringInfo(Gk_String value) {
  Trace(name, " : ", value);
  Deliver<Gk_ProgressObserver>(observable, Gk_Observer::ProgressType,
                               [&](Gk_ProgressObserver& observer) { observer.setStringInfo(value); });
}

void Gk_ObsWraper::setEntityCallback(void* first, void* second) {
  Deliver<VRELEntityCallback>(observable, Gk_Observer::EntityType,
                              [&](VRELEntityCallback& observer) { observer.setEntityCallback(first, second); });
}
