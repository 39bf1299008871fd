#include "StandardErrorListener.h"

#include <cstdio>
#include <string>
#include <string_view>

#include "Diagnostics.h"
#include "EscapedText.h"
#include "ProgressBar.h"
#include "VRELErrorEvent.h"
#include "VRELEventBus.h"

namespace {

constexpr char kHintMark[] = "\nhint: ";

// Only a hint is on a line of its own: see Diagnostics.h.
std::string EscapeControls(std::string text) {
  if (!text.empty() && text.back() == '\n') text.pop_back();
  std::size_t const hint = text.find(kHintMark);
  std::string escaped;
  AppendEscapingControls(escaped, std::string_view(text).substr(0, hint));
  if (hint == std::string::npos) return escaped;
  escaped += '\n';
  AppendEscapingControls(escaped, std::string_view(text).substr(hint + 1));
  return escaped;
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
  std::string const text = EscapeControls(TextOf(event));
  char const* const prefix = HasLocation(text) ? "" : isWarning ? "brivet: warning: " : "brivet: ";
  std::fprintf(stderr, "%s%s\n", prefix, text.c_str());
}
