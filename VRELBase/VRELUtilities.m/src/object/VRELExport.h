// Marks what the shared library exports; all else is hidden.
#pragma once

#define VREL_EXPORT __attribute__((visibility("default")))
