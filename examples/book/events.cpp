// A logger that writes to memory, the error tracker, tasks, and progress.
#include <iostream>

#include "Gk_ObsWraper.h"
#include "Gk_ObservableDoc.h"
#include "Gk_ProgressObserver.h"
#include "VRELDebug.h"
#include "VRELEndProductEvent.h"
#include "VRELErrorEvent.h"
#include "VRELErrorTracker.h"
#include "VRELEventBus.h"
#include "VRELInfo.h"
#include "VRELLogger.h"
#include "VRELStartProductEvent.h"
#include "VRELStringOutputStream.h"
#include "VRINResult.h"

VRINResult Open(VRELString const& name) {
  VRELError error(VREL_E_FILE_OPEN, name);
  return VRELErrorEvent::Fire(error, __FILE__, __LINE__);
}

void Log() {
  auto* const text = new VRELStringOutputStream;
  VRELLogger logger;
  logger.Initialize(text, VREL_LEVEL_VERBOSE);
  VRELErrorTracker::Initialize();

  VRELStartProductEvent start("Bill 1.0", "tour");
  VRELEventBus::Fire(start);
  VRELInfo::Printf("%d faces", 12);
  VRELInfo::Tab();
  VRELInfo::Printf("%d of them trimmed", 3);
  VRELInfo::Untab();
  VRELInfo::Printf("100%%");
  VRELDebug::NoTabPrintf("below the threshold");
  VRINResult const result = Open(L"wheel.stp");
  VRELEndProductEvent end(result);
  VRELEventBus::Fire(end);

  text->writeChar('\0');
  std::cout << text->contents();
  logger.Finalize();
  bool const isSame = GetError(0)->GetErrorType() == result;
  std::cout << VRELError::GetErrorCount() << " error, " << (isSame ? "the same code" : "another code") << "\n";
  delete VRELErrorTracker::GetInstance();
}

class Bar final : public Gk_ProgressObserver {
 public:
  Type getType() const override { return ProgressType; }
  void setMax(int steps) override { all = steps; }
  void setDone(int steps) override { std::cout << steps << " of " << all << "\n"; }
  void setOver(double /*seconds*/) override { std::cout << "done\n"; }
  void setIntInfo(int /*value*/) override {}
  void setDoubleInfo(double /*value*/) override {}
  void setStringInfo(Gk_String const& /*value*/) override {}

 private:
  int all = 0;
};

void Progress() {
  Gk_ObsWraper faces = Gk_ObservableDoc::addObservable("step/reader/faces", Gk_Observer::ProgressType);
  Bar bar;
  Gk_ObservableDoc::attachObserver("step/reader/faces", &bar);
  faces.setMax(2);
  faces.setDone(1);
  faces.setDone(2);
  faces.setOver();
  Gk_ObservableDoc::removeObserver("step/reader/faces", &bar);
}

int main() {
  Log();
  Progress();
}
