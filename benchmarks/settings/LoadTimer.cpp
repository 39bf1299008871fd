// LoadTimer LIBRARY...
//
// Loads the libraries in order and prints the nanoseconds that the last one took; 0 if it cannot be loaded. The
// libraries before it are its dependencies, and can be missing.
#include <dlfcn.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
  for (int i = 1; i + 1 < argc; ++i) dlopen(argv[i], RTLD_NOW | RTLD_GLOBAL);
  if (argc < 2) return 2;
  auto const start = std::chrono::steady_clock::now();
  void* const library = dlopen(argv[argc - 1], RTLD_NOW);
  auto const end = std::chrono::steady_clock::now();
  std::printf("%lld\n",
              library == nullptr ? 0LL : static_cast<long long>(std::chrono::nanoseconds(end - start).count()));
  return 0;
}
