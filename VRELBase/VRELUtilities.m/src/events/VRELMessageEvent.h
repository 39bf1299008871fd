// What a user wants to know of the work.
#pragma once

#include <type_traits>

#include "VRELTextEvent.h"

class VREL_EXPORT VRELMessageEvent : public VRELTextEventOf<VRELMessageEvent> {
 public:
  // Level INFO, prefixed.
  explicit VRELMessageEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  VRELMessageEvent(va_list arguments, char const* format);

  // Level INFO; with `withPrefix` false a log shows the text as it is. Only a bool stands for it: any other
  // second argument is the first one of the format.
  template <class Flag, class... Arguments, class = std::enable_if_t<std::is_same_v<Flag, bool>>>
  VRELMessageEvent(char const* format, Flag withPrefix, Arguments... arguments)
      : VRELMessageEvent(Prefix{withPrefix}, format, arguments...) {}

  // "Message : " if it is prefixed, the text and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Whether a log writes "Message : " in front of the text.
  bool IsPrefixed() const noexcept { return prefixed; }

 private:
  struct Prefix {
    bool shown;
  };
  VRELMessageEvent(Prefix prefix, char const* format, ...);

  bool prefixed;
};
