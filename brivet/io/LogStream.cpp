#include "LogStream.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

LogStream::LogStream(int fileDescriptor) : descriptor(fileDescriptor) {}

LogStream::~LogStream() {
  if (fill != 0) LogStream::write("\n", 1);
  ::close(descriptor);
}

int LogStream::write(char const* bytes, int count) {
  for (char const* const end = bytes + count; bytes < end && !isBroken;) {
    auto const room = static_cast<std::ptrdiff_t>(line.size() - fill);
    char const* const upTo = bytes + std::min(end - bytes, room);
    fill = static_cast<std::size_t>(std::copy(bytes, upTo, line.data() + fill) - line.data());
    bytes = upTo;
    if (fill == line.size()) {
      WriteLine(fill);
      fill = 0;
    }
  }
  char const* const lines = line.data();
  auto const lastEnd = std::find(std::make_reverse_iterator(lines + fill), std::make_reverse_iterator(lines), '\n');
  auto const whole = static_cast<std::size_t>(lastEnd.base() - lines);
  if (whole != 0) {
    WriteLine(whole);
    std::copy(lines + whole, lines + fill, line.data());
    fill -= whole;
  }
  return count;
}

void LogStream::WriteLine(std::size_t count) {
  for (std::size_t done = 0; done < count && !isBroken;) {
    ssize_t const taken = ::write(descriptor, line.data() + done, count - done);
    if (taken > 0) {
      done += static_cast<std::size_t>(taken);
    } else if (taken == 0 || errno != EINTR) {
      isBroken = true;
    }
  }
  if (!isBroken) {
    length += static_cast<off_t>(count);
  } else if (ftruncate(descriptor, length) != 0) {
    // A pipe, say, keeps what it has.
  }
}
