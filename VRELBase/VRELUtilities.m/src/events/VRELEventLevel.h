// How serious an event is.
#pragma once

// Ordered: a larger value is more serious. An event carries one level; a listener that filters keeps the events at or
// above its threshold.
enum VRELEventLevel : int {
  VREL_LEVEL_DEFAULT = -1,  // an argument only: the threshold comes from the environment
  VREL_LEVEL_ALL = 0,       // a threshold only: every event
  VREL_LEVEL_DEBUG = 10,
  VREL_LEVEL_TEST = 20,
  VREL_LEVEL_VERBOSE = 30,
  VREL_LEVEL_INFO = 50,
  VREL_LEVEL_WARNING = 70,  // has no keyword: the environment sets a threshold of 50 or of 80
  VREL_LEVEL_ERROR = 80,
  VREL_LEVEL_ABORT = 90,
  VREL_LEVEL_NONE = 999  // a threshold only: no event
};
