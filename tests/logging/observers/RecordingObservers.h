// Observers of each type that record their calls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Gk_DoubleObserver.h"
#include "Gk_IntObserver.h"
#include "Gk_ProgressObserver.h"
#include "Gk_String.h"
#include "Gk_StringObserver.h"
#include "VRELEntityCallback.h"

// Base of the recording observers: the calls, and a function to run in each call.
struct Recorded {
  void Note(std::string const& call) const {
    calls.push_back(call);
    if (then) then();
  }

  mutable std::vector<std::string> calls;
  std::function<void()> then;
};

struct RecordingInt final : Gk_IntObserver, Recorded {
  Type getType() const override { return IntType; }
  void wrongType() const override { Note("wrong"); }
  void setInt(int value) override { Note("int " + std::to_string(value)); }
};

struct RecordingDouble final : Gk_DoubleObserver, Recorded {
  Type getType() const override { return DoubleType; }
  void wrongType() const override { Note("wrong"); }
  void setDouble(double value) override { Note("double " + std::to_string(value)); }
};

struct RecordingString final : Gk_StringObserver, Recorded {
  Type getType() const override { return StringType; }
  void wrongType() const override { Note("wrong"); }
  void setString(Gk_String const& value) override { Note("string " + std::string(value.text())); }
};

struct RecordingProgress final : Gk_ProgressObserver, Recorded {
  Type getType() const override { return ProgressType; }
  void wrongType() const override { Note("wrong"); }
  void setMax(int steps) override { Note("max " + std::to_string(steps)); }
  void setDone(int steps) override { Note("done " + std::to_string(steps)); }
  void setOver(double seconds) override {
    over = seconds;
    Note("over");
  }
  void setIntInfo(int value) override { Note("int info " + std::to_string(value)); }
  void setDoubleInfo(double value) override { Note("double info " + std::to_string(value)); }
  void setStringInfo(Gk_String const& value) override { Note("string info " + std::string(value.text())); }

  double over = -1.0;
};

struct RecordingEntity final : VRELEntityCallback, Recorded {
  void wrongType() const override { Note("wrong"); }
  void setEntityCallback(void* theFirst, void* theSecond) override {
    first = theFirst;
    second = theSecond;
    Note("entity");
  }

  void* first = nullptr;
  void* second = nullptr;
};
