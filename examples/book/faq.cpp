// The programs of the questions and answers.
#include <iostream>
#include <string>

#include "Gk_PacketOutputStream.h"
#include "VRELConsoleLogger.h"
#include "VRELDynamicArray.h"
#include "VRELErrorTracker.h"
#include "VRELEventBus.h"
#include "VRELEventListener.h"
#include "VRELFileOutputStream.h"
#include "VRELHashMap.h"
#include "VRELInfo.h"
#include "VRELOptionToken.h"
#include "VRELReferenceCount.h"
#include "VRELStreamFormatter.h"
#include "VRELTypedHandle.h"
#include "VRELVerbose.h"

void CopyArray() {
  VRELDynamicArray<int> faces;
  faces.add(1);
  VRELDynamicArray<int> const before = faces.copy();
  faces.add(2);
  std::cout << before.size() << "\n";
}

class Name : public VRELReferenceCount {
 public:
  explicit Name(std::string const& initialText) : text(initialText) {}
  std::string text;
};

void PrintSharedElement() {
  VRELDynamicArray<VRELTypedHandle<Name>> names;
  for (int i = 0; i < 20; ++i) names.add(new Name("bolt"));
  std::cout << names[19]->text << "\n";
}

void FindIgnoringCase() {
  VRELHashMap<VRELString, int> counts(17);
  counts.SetFunctions(VRELOptionToken::GetHashValue, VRELOptionToken::HashEqualFunction);
  counts.Put(L"Bolt", 8);
  int count = 0;
  std::cout << counts.Get(L"BOLT", count) << count << "\n";
}

void PrintMessages() {
  VRELInfo::Printf("not printed");
  VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
  VRELInfo::Printf("12 faces, 100%% of them plane");
  VRELConsoleLogger::_console.Finalize();
}

class Listener : public VRELEventListener {
 public:
  Listener() { VRELEventBus::GetEventBus()->AddListener(this); }
  ~Listener() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  void HandleEvent(VRELEvent& /*event*/) override { ++events; }
  int events = 0;
};

void RemoveListener() {
  {
    Listener const listener;
    VRELInfo::Printf("one");
    std::cout << listener.events << "\n";
  }
  VRELInfo::Printf("two");
}

void WriteUtf8() {
  VRELString const name(L"Tr\u00E4ger");
  VRELStreamFormatter out(&VRELFileOutputStream::console);
  out << name.toUtf8().c_str() << out.endline();
}

void FlushPackets() {
  Gk_PacketOutputStream packets(&VRELFileOutputStream::console, 4096);
  packets.write("end\n", 4);
  packets.flush();
}

int main() {
  std::cout << std::unitbuf;
  CopyArray();
  PrintSharedElement();
  FindIgnoringCase();
  PrintMessages();
  RemoveListener();
  WriteUtf8();
  FlushPackets();
}
