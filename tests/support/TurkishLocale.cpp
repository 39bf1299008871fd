#include "TurkishLocale.h"

#include <clocale>
#include <cstdlib>

#include "ScratchDirectory.h"

ChildResult RunInTurkishLocale(std::function<int()> const& body) {
  ScratchDirectory const directory;
  RunProgram({"localedef", "-i", "tr_TR", "-f", "UTF-8", directory.Path("tr_TR.UTF-8")});
  return RunInChild([&] {
    setenv("LOCPATH", directory.Path().c_str(), 1);
    return std::setlocale(LC_ALL, "tr_TR.UTF-8") != nullptr ? body() : noTurkishLocale;
  });
}
