#include "VRELFile.h"

#include <unistd.h>

#include <utility>

#include "VRELFilePath.h"

namespace {

VRINResult ResultOf(std::FILE const* stream) {
  return stream != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

}  // namespace

VRELFile::VRELFile(std::FILE* stream, std::unique_ptr<VRELFilePath> path, int descriptor)
    : filePointer(stream),
      filePath(std::move(path)),
      fileDescriptor(descriptor < 0 ? -1 : descriptor),
      openType(NoOpen) {}

VRELFile::VRELFile() : VRELFile(nullptr, std::make_unique<VRELFilePath>(), -1) {}

VRELFile::VRELFile(int descriptor) : VRELFile(nullptr, std::make_unique<VRELFilePath>(), descriptor) {}

VRELFile::VRELFile(std::FILE* stream) : VRELFile(stream, std::make_unique<VRELFilePath>(), -1) {}

VRELFile::VRELFile(VRELFilePath const& path) : VRELFile(nullptr, std::make_unique<VRELFilePath>(path), -1) {}

VRELFile::VRELFile(VRELString const& path) : VRELFile(nullptr, std::make_unique<VRELFilePath>(path), -1) {}

VRELFile::VRELFile(char const* path) : VRELFile(nullptr, std::make_unique<VRELFilePath>(path), -1) {}

VRELFile::~VRELFile() {
  ReleaseStream();
}

bool VRELFile::IsValidFile() const {
  return filePointer != nullptr || filePath->IsValid() ||
         (fileDescriptor >= STDIN_FILENO && fileDescriptor <= STDERR_FILENO);
}

VRINResult VRELFile::GetFilePointer(std::FILE*& stream) const {
  stream = filePointer;
  return ResultOf(stream);
}

VRINResult VRELFile::GetFilePointer(std::FILE*& stream, VRELFilePointerOpenType type) {
  if (type != NoOpen) {
    ReleaseStream();
    if (filePath->IsValid()) {
      filePointer = filePath->OpenFile(type == TextOpen ? "r" : "rb");
      openType = type;
    }
  }
  stream = filePointer;
  return ResultOf(stream);
}

VRINResult VRELFile::GetFileDescriptor(int& descriptor) const {
  if (fileDescriptor < 0) return VREL_E_FAIL;
  descriptor = fileDescriptor;
  return VREL_S_OK;
}

VRINResult VRELFile::GetFileName(VRELString& name) const {
  if (!filePath->IsValid()) return VREL_E_FAIL;
  name = filePath->GetPath();
  return VREL_S_OK;
}

VRINResult VRELFile::GetFilePath(VRELFilePath& path) const {
  if (!filePath->IsValid()) return VREL_E_FAIL;
  path = *filePath;
  return VREL_S_OK;
}

void VRELFile::ReleaseStream() {
  if (filePointer != nullptr && openType != NoOpen) std::fclose(filePointer);
  filePointer = nullptr;
}
