// Severity levels of events.
#pragma once

// Level of an event, or threshold of a listener. A larger value is more severe. A listener that filters handles the
// events at or above its threshold.
enum VRELEventLevel : int {
  VREL_LEVEL_DEFAULT = -1,  // argument only: use the threshold of the environment
  VREL_LEVEL_ALL = 0,       // threshold only: all events
  VREL_LEVEL_DEBUG = 10,
  VREL_LEVEL_TEST = 20,
  VREL_LEVEL_VERBOSE = 30,
  VREL_LEVEL_INFO = 50,
  VREL_LEVEL_WARNING = 70,  // has no keyword in environment variables
  VREL_LEVEL_ERROR = 80,
  VREL_LEVEL_ABORT = 90,
  VREL_LEVEL_NONE = 999  // threshold only: no events
};
