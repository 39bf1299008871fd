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
    auto const room = static_cast<std::ptrdiff_t>(buffer.size() - fill);
    char const* const upTo = bytes + std::min(end - bytes, room);
    fill = static_cast<std::size_t>(std::copy(bytes, upTo, buffer.data() + fill) - buffer.data());
    bytes = upTo;
    if (fill == buffer.size()) {
      WriteLines(fill);
      fill = 0;
    }
  }
  char const* const lines = buffer.data();
  auto const lastEnd = std::find(std::make_reverse_iterator(lines + fill), std::make_reverse_iterator(lines), '\n');
  auto const whole = static_cast<std::size_t>(lastEnd.base() - lines);
  if (whole != 0) {
    WriteLines(whole);
    std::copy(lines + whole, lines + fill, buffer.data());
    fill -= whole;
  }
  return count;
}

void LogStream::WriteLines(std::size_t count) {
  for (std::size_t done = 0; done < count && !isBroken;) {
    ssize_t const taken = ::write(descriptor, buffer.data() + done, count - done);
    if (taken > 0) {
      done += static_cast<std::size_t>(taken);
    } else if (taken == 0 || errno != EINTR) {
      isBroken = true;
    }
  }
  if (!isBroken) {
    length += static_cast<off_t>(count);
  } else if (ftruncate(descriptor, length) != 0) {
    // A pipe cannot be truncated.
  }
}
