#include "Descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

#include "Gk_ErrMgr.h"
#include "ScratchDirectory.h"
#include "VRELAbortException.h"

namespace {

// Pipe that is closed by the destructor.
class Pipe {
 public:
  Pipe() { EXPECT_EQ(pipe(ends), 0); }
  ~Pipe() {
    close(ends[0]);
    close(ends[1]);
  }
  Pipe(Pipe const&) = delete;
  Pipe& operator=(Pipe const&) = delete;

  int ends[2] = {-1, -1};
};

}  // namespace

TEST(DescriptorTest, WaitToReadReturnsWhenDataArrives) {
  Pipe const pipe;
  std::thread writer([&pipe] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(write(pipe.ends[1], "x", 1), 1);
  });
  WaitToRead(pipe.ends[0]);
  char byte = 0;
  EXPECT_EQ(read(pipe.ends[0], &byte, 1), 1);
  EXPECT_EQ(byte, 'x');
  writer.join();
}

TEST(DescriptorTest, WaitIsInterruptedByAbort) {
  Pipe const pipe;
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(WaitToRead(pipe.ends[0]), VRELAbortException);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
  ASSERT_EQ(fcntl(pipe.ends[1], F_SETFL, O_NONBLOCK), 0);
  std::string const block(65536, 'x');
  while (write(pipe.ends[1], block.data(), block.size()) > 0) {
  }
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(WaitToWrite(pipe.ends[1]), VRELAbortException);
}

TEST(DescriptorTest, WriteAllCompletesShortWrites) {
  Pipe pipe;
  ASSERT_EQ(fcntl(pipe.ends[1], F_SETFL, O_NONBLOCK), 0);
  std::string const sent(1000000, 'y');
  std::string received;
  std::thread reader([&] {
    char block[4096];
    while (received.size() < sent.size()) {
      ssize_t const count = read(pipe.ends[0], block, sizeof block);
      if (count <= 0) break;
      received.append(block, static_cast<std::size_t>(count));
    }
  });
  EXPECT_TRUE(WriteAll(pipe.ends[1], sent));
  reader.join();
  EXPECT_TRUE(received == sent);
}

TEST(DescriptorTest, WriteAllReportsFailure) {
  int const full = open("/dev/full", O_WRONLY);
  ASSERT_GE(full, 0);
  errno = 0;
  EXPECT_FALSE(WriteAll(full, "x"));
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_TRUE(WriteAll(full, ""));
  close(full);
}
