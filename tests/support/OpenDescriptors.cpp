#include "OpenDescriptors.h"

#include <fcntl.h>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

int CountOpenDescriptors(std::string const& path) {
  fs::path const file = fs::canonical(path);
  int count = 0;
  for (fs::directory_entry const& descriptor : fs::directory_iterator("/proc/self/fd")) {
    std::error_code closedMeanwhile;
    if (fs::read_symlink(descriptor, closedMeanwhile) == file) ++count;
  }
  return count;
}

bool IsOpenDescriptor(int descriptor) {
  return fcntl(descriptor, F_GETFD) != -1;
}
