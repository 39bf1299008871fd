// One dump as text and as HTML, a truncated archive, and decompression.
#include <iostream>
#include <string>

#include "VRELArchive.h"
#include "VRELArchiveException.h"
#include "VRELBlast.h"
#include "VRELFileOutputStream.h"
#include "VRELFilePath.h"
#include "VRELHTMLStreamFormatter.h"
#include "VRELStreamFormatter.h"
#include "VRELString.h"
#include "VRELStringInputStream.h"
#include "VRELStringOutputStream.h"

void Dump(VRELStreamFormatter& out) {
  out << "face" << out.space() << out.define(12L) << out.endline();
  out.margin()->incr();
  out << out.margin() << "next" << out.space() << out.refer(12L) << out.space() << 2.5 << out.endline();
  out.margin()->decr();
}

void Formatters() {
  VRELStringOutputStream memory;
  {
    VRELStreamFormatter out(&memory);
    out.setDoubleFormat("%.*f", true, 2);
    Dump(out);
  }
  memory.writeChar('\0');
  std::cout << memory.contents();

  VRELFileOutputStream file(VRELFilePath("dump.html"));
  VRELHTMLStreamFormatter page(&file, "faces", "#FFFFFF");
  Dump(page);
}

void Archive() {
  // The terminator of the literal is the terminator that the stream requires.
  char const bytes[] = "\x02\x00\x07\x00\x00\x00\x03hub";
  VRELStringInputStream stream(Gk_String(bytes, sizeof bytes));
  VRELArchive archive(&stream);
  int id = 0;
  VRELString name;
  try {
    for (long left = archive.RestoreCount(); left > 0; --left) {
      archive >> id;
      archive.RestoreCString(name);
      std::cout << id << " " << name << "\n";
    }
  } catch (VRELArchiveException* exception) {
    std::cout << "error " << exception->GetCode() << " after " << archive.GetBytesRead() << " bytes\n";
    delete exception;
  }
}

unsigned ReadBlock(void* how, unsigned char** buffer) {
  auto& input = *static_cast<std::string*>(how);
  static std::string block;
  block.swap(input);
  input.clear();
  *buffer = reinterpret_cast<unsigned char*>(block.data());
  return static_cast<unsigned>(block.size());
}

int WriteBlock(void* how, unsigned char* buffer, unsigned length) {
  static_cast<std::string*>(how)->append(reinterpret_cast<char*>(buffer), length);
  return 0;
}

void Decompress() {
  std::string input("\x00\x04\x82\x24\x25\x8f\x80\x7f", 8);
  std::string output;
  int const status = blast(ReadBlock, &input, WriteBlock, &output);
  std::cout << status << " " << output << "\n";
}

int main() {
  Formatters();
  Archive();
  Decompress();
}
