#include "StandardErrorListener.h"

#include <cstdio>
#include <string>
#include <string_view>

#include "Diagnostics.h"
#include "EscapedText.h"
#include "ProgressBar.h"
#include "VRELErrorEvent.h"
#include "VRELEventBus.h"
#include "VRELMessageEvent.h"

namespace {

constexpr std::string_view kHint = "hint: ";

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

std::string OneLine(std::string_view text) {
  std::string line;
  AppendEscapingControls(line, text);
  return line + "\n";
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

StandardErrorListener::StandardErrorListener(ProgressBar* progressBar, bool showsNotes)
    : bar(progressBar), notes(showsNotes) {
  VRELEventBus::GetEventBus()->AddListener(this);
}

StandardErrorListener::~StandardErrorListener() {
  VRELEventBus::GetEventBus()->RemoveListener(this);
}

void StandardErrorListener::HandleEvent(VRELEvent& event) {
  bool const isWarning = event.IsA("VRELWarningEvent");
  bool const mayBeNote = notes && dynamic_cast<VRELMessageEvent*>(&event) != nullptr;
  if (!isWarning && !mayBeNote && !event.IsA("VRELErrorEvent")) return;
  std::string const text = TextOf(event);
  if (mayBeNote && !StartsWith(text, "note: ")) return;
  std::string_view message = text;
  if (!message.empty() && message.back() == '\n') message.remove_suffix(1);
  std::size_t const hint = message.find("\nhint: ");
  std::string lines;
  if (!StartsWith(message, kHint) && !HasLocation(text)) lines = isWarning ? "brivet: warning: " : "brivet: ";
  lines += OneLine(message.substr(0, hint));
  if (hint != message.npos) lines += OneLine(message.substr(hint + 1));
  if (bar != nullptr) bar->Hide();
  std::fputs(lines.c_str(), stderr);
}
