// Marks a declaration as exported by the shared library. All other symbols are hidden.
#pragma once

#define VREL_EXPORT __attribute__((visibility("default")))
