// Feeds VRELArchive a generated archive (after the first line), from memory and from a stream with short reads. Each
// byte of the first line is a read. Compares values, strings, counts and exception codes with a model of the layout.
#include "VRELArchive.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "FuzzInput.h"
#include "Gk_PacketInputStream.h"
#include "MemoryStream.h"
#include "Require.h"
#include "VRELArchiveException.h"
#include "VRELString.h"

namespace {

constexpr int kinds = 12;

// Model of the archive. A read beyond the end throws.
class Model {
 public:
  explicit Model(std::string const& bytes) : archive(bytes) {}

  template <class T>
  T Take() {
    T value;
    std::string const bytes = TakeBytes(sizeof value);
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }

  std::string TakeBytes(std::size_t count) {
    std::size_t const there = std::min(count, archive.size() - taken);
    std::string const bytes = archive.substr(taken, there);
    taken += there;
    if (there < count) throw 1;
    return bytes;
  }

  long Count() {
    unsigned short const count = Take<unsigned short>();
    if (count != 0xFFFF) return count;
    return static_cast<long>(Take<std::uint32_t>());
  }

  long Length() {
    unsigned char const byte = Take<unsigned char>();
    if (byte != 0xFF) return byte;
    unsigned short const word = Take<unsigned short>();
    if (word == 0xFFFE) return -1;
    if (word != 0xFFFF) return word;
    return static_cast<long>(Take<std::uint32_t>());
  }

  VRELString Text() {
    long length = Length();
    if (length != -1) return VRELString(TakeBytes(static_cast<std::size_t>(length)).c_str());
    length = Length();
    if (length < 0) throw 1;  // a second mark of a wide string
    std::string const bytes = TakeBytes(static_cast<std::size_t>(length) * sizeof(wchar_t));
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    if (length != 0) std::memcpy(text.data(), bytes.data(), bytes.size());
    return VRELString(text.c_str());
  }

  // Returns success, tag and name, which is empty if it is not in the record.
  std::string ClassRecord() {
    unsigned short const tag = Take<unsigned short>();
    std::uint32_t const object = tag == 0x7FFF ? Take<std::uint32_t>() : static_cast<std::uint32_t>(tag & 0x8000) << 16;
    bool success = (object & 0x80000000u) != 0;
    std::string name;
    if (success && tag == 0xFFFF) {
      Take<unsigned short>();
      unsigned short const length = Take<unsigned short>();
      success = length < 64;
      if (success) name = VRELString(TakeBytes(length).c_str()).toUtf8();
    }
    std::string outcome(1, static_cast<char>(success));
    outcome.append(reinterpret_cast<char const*>(&tag), sizeof tag);
    return outcome + name;
  }

  long Taken() const { return static_cast<long>(taken); }

 private:
  std::string const& archive;
  std::size_t taken = 0;
};

// Returns the result of a read as bytes: a value, a string in UTF-8, or the error.
template <class T>
std::string BytesOf(T const& value) {
  return std::string(reinterpret_cast<char const*>(&value), sizeof value);
}

template <class T>
std::string ReadValue(VRELArchive& archive) {
  T value{};
  archive >> value;
  return BytesOf(value);
}

std::string ReadByArchive(VRELArchive& archive, unsigned char operation) {
  switch (operation % kinds) {
    case 0:
      return ReadValue<unsigned char>(archive);
    case 1:
      return ReadValue<char>(archive);
    case 2:
      return ReadValue<unsigned short>(archive);
    case 3:
      return ReadValue<short>(archive);
    case 4:
      return ReadValue<unsigned int>(archive);
    case 5:
      return ReadValue<int>(archive);
    case 6:
      return ReadValue<float>(archive);
    case 7:
      return ReadValue<double>(archive);
    case 8:
      return ReadValue<long>(archive);
    case 9:
      return BytesOf(archive.RestoreCount());
    case 10: {
      VRELString text;
      archive.RestoreCString(text);
      return text.toUtf8();
    }
    default: {
      VRELString name;
      unsigned short tag = 0;
      bool const success = archive.RestoreClassObject(name, &tag) == VREL_S_OK;
      return BytesOf(success) + BytesOf(tag) + name.toUtf8();
    }
  }
}

std::string ReadByModel(Model& model, unsigned char operation) {
  switch (operation % kinds) {
    case 0:
    case 1:
      return model.TakeBytes(1);
    case 2:
    case 3:
      return model.TakeBytes(2);
    case 4:
    case 5:
    case 6:
      return model.TakeBytes(4);
    case 7: {
      double const value = model.Take<double>();
      if (std::isnan(value)) throw 2;
      return BytesOf(value);
    }
    case 8:
      return BytesOf(static_cast<long>(model.Take<std::int32_t>()));
    case 9:
      return BytesOf(model.Count());
    case 10:
      return model.Text().toUtf8();
    default:
      return model.ClassRecord();
  }
}

template <class Read>
std::string Outcome(Read const& read) {
  try {
    return read();
  } catch (VRELArchiveException* raised) {
    std::unique_ptr<VRELArchiveException> const exception(raised);
    return "thrown: " + std::to_string(exception->GetCode());
  } catch (int code) {
    return "thrown: " + std::to_string(code);
  }
}

void ReadAll(VRELInputStream& stream, std::string const& operations, std::string const& bytes) {
  VRELArchive archive(&stream);
  Model model(bytes);
  for (char const c : operations) {
    unsigned char const operation = static_cast<unsigned char>(c);
    std::string const outcome = Outcome([&] { return ReadByArchive(archive, operation); });
    Require(outcome == Outcome([&] { return ReadByModel(model, operation); }), "a read agrees with the model");
    if (outcome == "thrown: 1") return;
    Require(archive.GetBytesRead() == model.Taken(), "bytes are counted");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  std::string const operations = input.Line();
  std::string const archive = input.Rest();
  VRELStringInputStream memory(Gk_String(archive.c_str(), static_cast<int>(archive.size() + 1)));
  ReadAll(memory, operations, archive);
  MemoryStream slow(archive, 3);
  Gk_PacketInputStream packets(&slow, 5);
  ReadAll(packets, operations, archive);
  return 0;
}
