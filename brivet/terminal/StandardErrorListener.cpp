#include "StandardErrorListener.h"

#include <cstdio>
#include <string>

#include "ProgressBar.h"
#include "VRELErrorEvent.h"
#include "VRELEventBus.h"

namespace {

std::string OneLine(std::string text) {
  if (!text.empty() && text.back() == '\n') text.pop_back();
  for (char& byte : text) {
    if ((byte >= 0 && byte < ' ') || byte == 0x7F) byte = '?';
  }
  return text;
}

std::string TextOf(VRELEvent& event) {
  auto const* const message = dynamic_cast<VRELTextEvent const*>(&event);
  if (message != nullptr && message->GetMessage() != nullptr) return message->GetMessage();
  auto* const failure = dynamic_cast<VRELErrorEvent*>(&event);
  if (failure == nullptr || failure->GetError() == nullptr) return "";
  VRELString description;
  failure->GetError()->GetDescription(description);
  if (description.length() != 0) return description.toUtf8();
  return VRINResult(failure->GetError()->GetErrorType()).GetMessage();
}

}  // namespace

StandardErrorListener::StandardErrorListener(ProgressBar* progressBar) : bar(progressBar) {
  VRELEventBus::GetEventBus()->AddListener(this);
}

StandardErrorListener::~StandardErrorListener() {
  VRELEventBus::GetEventBus()->RemoveListener(this);
}

void StandardErrorListener::HandleEvent(VRELEvent& event) {
  bool const isWarning = event.IsA("VRELWarningEvent");
  if (!isWarning && !event.IsA("VRELErrorEvent")) return;
  if (bar != nullptr) bar->Hide();
  std::fprintf(stderr, "brivet: %s%s\n", isWarning ? "warning: " : "", OneLine(TextOf(event)).c_str());
}
