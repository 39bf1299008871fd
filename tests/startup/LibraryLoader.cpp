// LibraryLoader order LIBRARY       Loads the library and prints the objects that register a destructor, in order of
//                                   construction.
// LibraryLoader repeat LIBRARY N    Loads the library, sets up its console logger and unloads it, N times. Fails if it
//                                   remains loaded, keeps state, or leaks memory.
// LibraryLoader codepage LIBRARY    Loads the library in the locale "C", then sets a UTF-8 locale. Fails if ICU
//                                   does not use UTF-8 then.
//
// The program is not linked with the library. It is linked with ICU, which remains loaded.
#include <dlfcn.h>
#include <malloc.h>
#include <unicode/ucnv.h>
#include <unicode/uversion.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

bool isRecording = false;
std::vector<void*> recorded;

using AtExit = int(void (*)(void*), void*, void*);

}  // namespace

// Replaces the function that compiled code calls to register the destructor of a static object.
extern "C" __attribute__((visibility("default"))) int __cxa_atexit(void (*destructor)(void*), void* object,
                                                                   void* library) {
  static auto* const next = reinterpret_cast<AtExit*>(dlsym(RTLD_NEXT, "__cxa_atexit"));
  if (isRecording) recorded.push_back(object);
  return next(destructor, object, library);
}

namespace {

void* Load(char const* path) {
  void* const library = dlopen(path, RTLD_NOW);
  if (library == nullptr) std::fprintf(stderr, "%s\n", dlerror());
  return library;
}

int PrintOrder(char const* path) {
  recorded.reserve(4096);
  isRecording = true;
  void* const library = Load(path);
  isRecording = false;
  if (library == nullptr) return 1;
  for (void* const object : recorded) {
    Dl_info info;
    bool const isNamed = dladdr(object, &info) != 0 && info.dli_saddr == object;
    std::puts(isNamed ? info.dli_sname : "?");
  }
  return 0;
}

int Fail(int round, char const* what) {
  std::fprintf(stderr, "round %d: %s\n", round, what);
  return 1;
}

int Repeat(char const* path, int rounds) {
  // The dynamic loader and ICU allocate memory in the first rounds and keep it.
  constexpr int kWarmUpRounds = 5;
  std::size_t baseline = 0;
  for (int round = 1; round <= rounds; ++round) {
    void* const library = Load(path);
    if (library == nullptr) return Fail(round, "does not load");
    auto const* const counter = static_cast<int const*>(dlsym(library, "_ZN14VRINObjectImpl14_objectCounterE"));
    if (counter == nullptr || *counter != 186) return Fail(round, "keeps state");
    auto* const setUpConsole =
        reinterpret_cast<void (*)(int)>(dlsym(library, "_ZN17VRELConsoleLogger5SetUpE14VRELEventLevel"));
    if (setUpConsole == nullptr) return Fail(round, "has no console");
    setUpConsole(0);
    dlclose(library);
    if (dlopen(path, RTLD_NOW | RTLD_NOLOAD) != nullptr) return Fail(round, "remains loaded");
    std::size_t const now = mallinfo2().uordblks;
    if (round <= kWarmUpRounds) baseline = now;
    if (now > baseline) return Fail(round, "leaks memory");
  }
  return 0;
}

int CheckCodepage(char const* path) {
  if (Load(path) == nullptr) return 1;
  if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) return 1;
  char const* const name = ucnv_getDefaultName();
  std::fputs(name, stderr);
  return std::string_view(name) == "UTF-8" ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  UVersionInfo version;
  u_getVersion(version);
  std::string_view const task = argc > 2 ? argv[1] : "";
  if (task == "order") return PrintOrder(argv[2]);
  if (task == "repeat" && argc > 3) return Repeat(argv[2], std::atoi(argv[3]));
  if (task == "codepage") return CheckCodepage(argv[2]);
  return 2;
}
