// Paths, directories, file handles, temporary files and file headers.
#include <cstdio>

#include "Gk_DirElement.h"
#include "VRELFile.h"
#include "VRELFileHandle.h"
#include "VRELFileHeader.h"
#include "VRELFileOutputStream.h"
#include "VRELFilePath.h"
#include "VRELStreamFormatter.h"
#include "VRELTemporaryFile.h"
#include "VRINResult.h"

void Paths(VRELStreamFormatter& out) {
  VRELFilePath const model("assembly\\wheel.step.gz");
  out << model.GetPath() << out.endline();
  out << model.GetNameWithoutExtension() << out.space() << model.GetLastExtension() << out.endline();
  out << model.ReplaceLastExtension(L"log").GetPath() << out.endline();
  out << (VRELFilePath("assembly") + L"bolt.step").GetPath() << out.endline();
}

void Directories(VRELStreamFormatter& out) {
  Gk_FileElement const model(Gk_String("models/sub/wheel.stp"));
  model.ensureParent();
  std::FILE* const written = VRELFilePath("models/sub/wheel.stp").OpenFile("w");
  std::fputs("ISO-10303-21;", written);
  std::fclose(written);
  for (Gk_FileElement const& file : Gk_DirElement(Gk_String("models")).fetchLeafFiles("*.stp")) {
    out << file.pathName() << out.space() << file.length() << out.endline();
  }
}

void Resolve(VRELStreamFormatter& out) {
  VRELFilePath const stored("C:\\cad\\sub\\wheel.stp");
  VRELFilePath assembly("models/top.asm");
  out << stored.ResolveAgainst(assembly).GetPath() << out.endline();
}

void Handle(VRELStreamFormatter& out) {
  VRELFileHandle const file(new VRELFile("models/sub/wheel.stp"));
  std::FILE* stream = nullptr;
  char word[4] = "";
  bool const isOpen = file->GetFilePointer(stream, VRELFile::BinaryOpen).IsSuccess();
  if (isOpen && std::fgets(word, sizeof word, stream) != nullptr) out << word << out.endline();
}

void TemporaryFile(VRELStreamFormatter& out) {
  VRELFilePath path;
  {
    VRELTemporaryFile scratch(VRELFilePath("models/sub/wheel.stp"), "faces.tmp", 1);
    scratch.GetPath(path);
    std::fputs("12", scratch.Open(nullptr));
    out << (path.DoesFileExist() ? "there" : "not there") << out.endline();
  }
  out << (path.DoesFileExist() ? "there" : "gone") << out.endline();
}

void Header(VRELStreamFormatter& out) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, L"Kim");
  header.AddSection(L"Configurations");
  header.Set(VRELFileHeader::CONFIGURATIONS_COUNT, VRELValue(2));
  header.Set(VRELFileHeader::AUTHOR, L"Kim and Jo");
  out << header;
}

int main() {
  VRELStreamFormatter out(&VRELFileOutputStream::console);
  Paths(out);
  Directories(out);
  Resolve(out);
  Handle(out);
  TemporaryFile(out);
  Header(out);
}
