// Reports whether a file is opened while the object exists.
#pragma once

#include <sys/inotify.h>
#include <unistd.h>

#include <string>

class OpenWatch {
 public:
  explicit OpenWatch(std::string const& path) : descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    isWatching = inotify_add_watch(descriptor, path.c_str(), IN_OPEN) >= 0;
  }
  ~OpenWatch() { close(descriptor); }
  OpenWatch(OpenWatch const&) = delete;
  OpenWatch& operator=(OpenWatch const&) = delete;

  bool IsWatching() const { return isWatching; }
  // Returns whether the file was opened since the last call.
  bool WasOpened() const {
    char events[4096];
    return read(descriptor, events, sizeof events) > 0;
  }

 private:
  int descriptor;
  bool isWatching = false;
};
