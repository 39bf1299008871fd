#include "CapturedOutput.h"

#include <unistd.h>

#include <cstdio>
#include <stdexcept>

namespace {

// Redirects standard output to a file during its lifetime.
class Redirection {
 public:
  explicit Redirection(std::FILE* file) : original(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    dup2(fileno(file), STDOUT_FILENO);
  }
  ~Redirection() {
    std::fflush(stdout);
    dup2(original, STDOUT_FILENO);
    close(original);
  }
  Redirection(Redirection const&) = delete;
  Redirection& operator=(Redirection const&) = delete;

 private:
  int original;
};

}  // namespace

std::string PrintedBy(std::function<void()> const& body) {
  std::FILE* const file = std::tmpfile();
  if (file == nullptr) throw std::runtime_error("no temporary file");
  {
    Redirection const redirection(file);
    body();
  }
  std::string printed;
  std::rewind(file);
  for (int byte = std::getc(file); byte != EOF; byte = std::getc(file)) printed += static_cast<char>(byte);
  std::fclose(file);
  return printed;
}
