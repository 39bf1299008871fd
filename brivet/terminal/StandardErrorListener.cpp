#include "StandardErrorListener.h"

#include <cstdio>
#include <string>
#include <string_view>

#include "EscapedText.h"
#include "ProgressBar.h"
#include "VRELErrorEvent.h"
#include "VRELEventBus.h"

namespace {

constexpr std::string_view kHint = "hint: ";

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

// Returns whether the text begins as "FILE:LINE: error: " or "FILE:LINE:COLUMN: warning: ".
bool HasLocation(std::string_view text) {
  std::size_t at = 0;
  for (std::string_view const severity : {": error: ", ": warning: "}) {
    std::size_t const found = text.find(severity);
    if (found != text.npos && (at == 0 || found < at)) at = found;
  }
  if (at == 0) return false;
  std::size_t const digits = text.find_last_not_of("0123456789", at - 1);
  return digits != text.npos && digits + 1 < at && text[digits] == ':' && digits != 0;
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

StandardErrorListener::StandardErrorListener(ProgressBar* progressBar) : bar(progressBar) {
  VRELEventBus::GetEventBus()->AddListener(this);
}

StandardErrorListener::~StandardErrorListener() {
  VRELEventBus::GetEventBus()->RemoveListener(this);
}

void StandardErrorListener::HandleEvent(VRELEvent& event) {
  bool const isWarning = event.IsA("VRELWarningEvent");
  if (!isWarning && !event.IsA("VRELErrorEvent")) return;
  std::string const text = TextOf(event);
  std::string_view message = text;
  if (!message.empty() && message.back() == '\n') message.remove_suffix(1);
  std::size_t const hint = message.find("\nhint: ");
  std::string lines;
  if (!StartsWith(message, kHint) && !HasLocation(message)) lines = isWarning ? "brivet: warning: " : "brivet: ";
  lines += OneLine(message.substr(0, hint));
  if (hint != message.npos) lines += OneLine(message.substr(hint + 1));
  if (bar != nullptr) bar->Hide();
  std::fputs(lines.c_str(), stderr);
}
