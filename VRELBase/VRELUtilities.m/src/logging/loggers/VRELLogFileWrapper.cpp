#include "VRELLogFileWrapper.h"

#include <memory>

#include "VRELFilePath.h"

VRELLogFileWrapper::VRELLogFileWrapper(std::FILE* borrowedFile) : file(nullptr), borrowed(borrowedFile != nullptr) {
  Start(borrowedFile);
}

VRELLogFileWrapper::VRELLogFileWrapper(VRELFilePath const& path) : file(nullptr), borrowed(false) {
  if (path.IsValid()) Start(path.OpenFile("w"));
}

VRELLogFileWrapper::VRELLogFileWrapper(bool reading) : file(nullptr), borrowed(false) {
  Start(std::fopen(reading ? "brivet_read.log" : "brivet_write.log", "w"));
}

VRELLogFileWrapper::~VRELLogFileWrapper() {
  if (!borrowed && file != nullptr) std::fclose(file);
  file = nullptr;
  borrowed = false;
}

void VRELLogFileWrapper::Start(std::FILE* openFile) {
  if (openFile == nullptr) return;
  // Closes the file again if Initialize throws.
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(borrowed ? nullptr : openFile, &std::fclose);
  logger.Initialize(openFile, VREL_LEVEL_DEFAULT);
  file = openFile;
  static_cast<void>(opened.release());
}
