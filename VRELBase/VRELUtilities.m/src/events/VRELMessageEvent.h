// Event of a message to the user.
#pragma once

#include <type_traits>

#include "VRELTextEvent.h"

// Event that VRELInfo and VRELVerbose send, of level INFO. A log writes the prefix "Message : " unless it is disabled.
//
//   VRELMessageEvent event("%s", false, "=====");  // without prefix
//   VRELEventBus::Fire(event);
class VREL_EXPORT VRELMessageEvent : public VRELTextEventOf<VRELMessageEvent> {
 public:
  // Creates an event with prefix.
  explicit VRELMessageEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  VRELMessageEvent(va_list arguments, char const* format);

  // Creates an event with or without prefix. Selected only if the second argument has type bool; otherwise it is the
  // first argument of the format.
  template <class Flag, class... Arguments, class = std::enable_if_t<std::is_same_v<Flag, bool>>>
  VRELMessageEvent(char const* format, Flag withPrefix, Arguments... arguments)
      : VRELMessageEvent(Prefix{withPrefix}, format, arguments...) {}

  // Writes "Message : " if the event has a prefix, the message and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Returns true if the event has a prefix.
  bool IsPrefixed() const noexcept { return prefixed; }

 private:
  struct Prefix {
    bool isEnabled;
  };
  VRELMessageEvent(Prefix prefix, char const* format, ...);

  bool prefixed;
};
