#include "VRELBlast.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Imploder.h"

namespace {

constexpr std::size_t window = 4096;

// Result of a decompression.
struct Decompression {
  int result = 99;
  std::string output;
  std::vector<unsigned> writes;          // lengths of the writes
  std::vector<std::size_t> readAtWrite;  // bytes of input read before each write
  std::size_t bytesRead = 0;
  int readsAtEnd = 0;  // input requests after the end of input
};

// Provides input in blocks of one length and collects the output.
class Ends {
 public:
  Ends(std::string const& bytes, std::size_t length, std::size_t writesTaken)
      : data(bytes), blockLength(length), acceptedWrites(writesTaken) {}

  static unsigned Read(void* how, unsigned char** buffer) { return static_cast<Ends*>(how)->Read(buffer); }
  static int Write(void* how, unsigned char* buffer, unsigned length) {
    return static_cast<Ends*>(how)->Write(buffer, length);
  }

  Decompression done;

 private:
  unsigned Read(unsigned char** buffer) {
    std::size_t const length = std::min(blockLength, data.size() - done.bytesRead);
    if (length == 0) {
      ++done.readsAtEnd;
      return 0;
    }
    // In separate memory, so that a sanitizer detects reads after its end and after the next request.
    block = std::make_unique<unsigned char[]>(length);
    std::memcpy(block.get(), data.data() + done.bytesRead, length);
    done.bytesRead += length;
    *buffer = block.get();
    return static_cast<unsigned>(length);
  }

  int Write(unsigned char const* buffer, unsigned length) {
    done.writes.push_back(length);
    done.readAtWrite.push_back(done.bytesRead);
    done.output.append(reinterpret_cast<char const*>(buffer), length);
    return done.writes.size() > acceptedWrites ? 7 : 0;
  }

  std::string const& data;
  std::size_t blockLength;
  std::size_t acceptedWrites;
  std::unique_ptr<unsigned char[]> block;
};

Decompression Blast(std::string const& data, std::size_t blockLength = 65536, std::size_t acceptedWrites = SIZE_MAX) {
  Ends ends(data, blockLength, acceptedWrites);
  ends.done.result = blast(Ends::Read, &ends, Ends::Write, &ends);
  return ends.done;
}

constexpr std::size_t blockLengths[] = {1, 2, 7, 4096};

// Appends bytes, so that the data is far from the end of its block.
std::string Padded(std::string const& data) {
  return data + std::string(64, '\x55');
}

std::string RandomBytes(std::mt19937& random, std::size_t count) {
  std::string bytes(count, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

// Appends the result of a copy.
void CopyInText(std::string& text, int length, int distance) {
  for (int i = 0; i < length; ++i) text.push_back(text[text.size() - static_cast<std::size_t>(distance)]);
}

// Imploded data with the expected output.
struct Sample {
  Sample(bool isCoded, int dictionary) : data(isCoded, dictionary) {}

  void Literals(std::string const& bytes) {
    data.Literals(bytes);
    text += bytes;
  }
  void Copy(int length, int distance) {
    data.Copy(length, distance);
    CopyInText(text, length, distance);
  }

  // Decompresses with blocks of all lengths.
  void Check() {
    data.End();
    for (std::size_t const blockLength : blockLengths) {
      SCOPED_TRACE(blockLength);
      Decompression const done = Blast(data.Bytes(), blockLength);
      EXPECT_EQ(done.result, 0);
      EXPECT_TRUE(done.output == text);
    }
  }

  ImplodedData data;
  std::string text;
};

std::string Prose() {
  return "The hub turns on two bearings. Each bearing has an inner ring, an outer ring and eleven balls; the outer "
         "ring "
         "sits in the housing, the inner ring on the shaft. Between the rings a cage of brass keeps the balls apart. "
         "The shaft is of steel 42CrMo4, hardened and ground to 25 mm, with a fit of k6 at both ends.\n";
}

TEST(VRELBlastTest, DecodesKnownData) {
  std::string const data("\x00\x04\x82\x24\x25\x8F\x80\x7F", 8);
  for (std::size_t const blockLength : blockLengths) {
    SCOPED_TRACE(blockLength);
    Decompression const done = Blast(data, blockLength);
    EXPECT_EQ(done.result, 0);
    EXPECT_EQ(done.output, "AIAIAIAIAIAIA");
    EXPECT_EQ(done.writes, std::vector<unsigned>{13});
    EXPECT_EQ(done.readsAtEnd, 0);
  }
  EXPECT_EQ(Blast(Padded(data)).output, "AIAIAIAIAIAIA");
}

TEST(VRELBlastTest, HasCLinkage) {
  EXPECT_EQ(dlsym(RTLD_DEFAULT, "blast"), reinterpret_cast<void*>(&blast));
}

TEST(VRELBlastTest, EncoderWritesFormat) {
  // By hand: A, I, a copy of 11 bytes from 2 back, the end.
  ImplodedData data(false, 4);
  data.Literals("AI").Copy(11, 2).End();
  EXPECT_EQ(data.Bytes(), std::string("\x00\x04\x82\x24\x25\x8F\x80\x7F", 8));
  // A blank is the only literal with a code of four bits, which are all inverted zeros; the end is a bit 1, a code of
  // seven inverted ones and eight bits 1.
  ImplodedData coded(true, 6);
  coded.Literal(' ').End();
  EXPECT_EQ(coded.Bytes(), std::string("\x01\x06\x3E\xE0\x1F", 5));
  EXPECT_EQ(coded.BitCount(), 37U);
}

TEST(VRELBlastTest, EmptyInput) {
  Decompression const done = Blast("");
  EXPECT_EQ(done.result, 2);
  EXPECT_TRUE(done.writes.empty());
  EXPECT_EQ(done.readsAtEnd, 1);
}

TEST(VRELBlastTest, RejectsOtherLiteralFlags) {
  for (int flag = 2; flag < 256; ++flag) {
    SCOPED_TRACE(flag);
    Decompression const done = Blast(Padded(std::string(1, static_cast<char>(flag)) + "\x04"));
    EXPECT_EQ(done.result, -1);
    EXPECT_TRUE(done.writes.empty());
  }
}

TEST(VRELBlastTest, RejectsFlagBeforeReadingDictionary) {
  Decompression const done = Blast("\x02");
  EXPECT_EQ(done.result, -1);
  EXPECT_EQ(done.readsAtEnd, 0);
}

TEST(VRELBlastTest, RejectsOtherDictionaries) {
  for (int flag = 0; flag < 2; ++flag) {
    for (int dictionary = 0; dictionary < 256; ++dictionary) {
      if (dictionary >= 4 && dictionary <= 6) continue;
      SCOPED_TRACE(dictionary);
      Decompression const done = Blast({static_cast<char>(flag), static_cast<char>(dictionary)}, 1);
      EXPECT_EQ(done.result, -2);
      EXPECT_TRUE(done.writes.empty());
    }
  }
}

TEST(VRELBlastTest, RejectsCopiesBeforeOutput) {
  for (bool const isCoded : {false, true}) {
    for (int before : {0, 1, 2, 100, 4000}) {
      SCOPED_TRACE(before);
      std::string const text(static_cast<std::size_t>(before), 'x');
      ImplodedData const data = ImplodedData(isCoded, 6).Literals(text).Copy(9, before + 1).End();
      for (std::string const& bytes : {data.Bytes(), Padded(data.Bytes())}) {
        Decompression const done = Blast(bytes);
        EXPECT_EQ(done.result, -3);
        EXPECT_EQ(done.output, text);
        EXPECT_EQ(done.writes.size(), before > 0 ? 1U : 0U);
      }
      if (before == 0) continue;
      Sample reaching(isCoded, 6);
      reaching.Literals(text);
      reaching.Copy(9, before);
      reaching.Check();
    }
  }
}

TEST(VRELBlastTest, WritesFullBlockOnce) {
  for (bool const isCoded : {false, true}) {
    std::string const text(window, 'q');
    std::string const literals = ImplodedData(isCoded, 4).Literals(text).End().Bytes();
    std::string const copied = ImplodedData(isCoded, 4).Literals(text.substr(0, 3896)).Copy(200, 1).End().Bytes();
    for (std::string const& data : {literals, copied, Padded(literals), Padded(copied)}) {
      Decompression const done = Blast(data);
      EXPECT_EQ(done.result, 0);
      EXPECT_EQ(done.output, text);
      EXPECT_EQ(done.writes, std::vector<unsigned>{4096});
    }
    Decompression const empty = Blast(ImplodedData(isCoded, 4).End().Bytes());
    EXPECT_EQ(empty.result, 0);
    EXPECT_TRUE(empty.writes.empty());
  }
}

TEST(VRELBlastTest, WritesInBlocksOf4096) {
  std::string const text(3 * window + 5, 'z');
  Decompression const done = Blast(Implode(text, true, 6));
  EXPECT_EQ(done.output, text);
  EXPECT_EQ(done.writes, (std::vector<unsigned>{4096, 4096, 4096, 5}));
}

TEST(VRELBlastTest, WritesFullBlockBeforeReading) {
  std::mt19937 random(5);
  std::string const text = RandomBytes(random, 2 * window);
  std::string const data = ImplodedData(false, 4).Literals(text).End().Bytes();
  Decompression const done = Blast(data, 1);
  // 16 bits of header, then 9 for each literal.
  EXPECT_EQ(done.readAtWrite, (std::vector<std::size_t>{2 + 4608, 2 + 9216}));
  EXPECT_EQ(done.output, text);
}

TEST(VRELBlastTest, ReadsNothingAfterEnd) {
  for (bool const isCoded : {false, true}) {
    for (int length = 0; length < 40; ++length) {
      SCOPED_TRACE(length);
      ImplodedData data(isCoded, 5);
      data.Literals(std::string(static_cast<std::size_t>(length), 'A')).End();
      Decompression const done = Blast(Padded(data.Bytes()), 1);
      EXPECT_EQ(done.result, 0);
      EXPECT_EQ(done.bytesRead, data.Bytes().size());
    }
  }
}

TEST(VRELBlastTest, ReportsFailedOutput) {
  std::mt19937 random(6);
  std::string const text = RandomBytes(random, 3 * window + 100);
  std::string const data = ImplodedData(false, 4).Literals(text).End().Bytes();
  for (std::size_t good = 0; good < 4; ++good) {
    SCOPED_TRACE(good);
    for (std::size_t const blockLength : {1U, 4096U}) {
      Decompression const done = Blast(data, blockLength, good);
      EXPECT_EQ(done.result, 1);
      EXPECT_EQ(done.writes.size(), good + 1);
    }
  }
  EXPECT_EQ(Blast(data, 4096, 4).result, 0);
}

TEST(VRELBlastTest, KeepsEarlierError) {
  std::string const cut = ImplodedData(false, 4).Literals("abc").Bytes();
  Decompression const ended = Blast(cut, 1, 0);
  EXPECT_EQ(ended.result, 2);
  EXPECT_EQ(ended.output, "abc");
  Decompression const reaching = Blast(ImplodedData(false, 4).Literals("abc").Copy(5, 4).Bytes(), 1, 0);
  EXPECT_EQ(reaching.result, -3);
  EXPECT_EQ(reaching.output, "abc");
}

TEST(VRELBlastTest, CopiesFromPreviousBlock) {
  std::mt19937 random(7);
  for (bool const isCoded : {false, true}) {
    Sample sample(isCoded, 6);
    sample.Literals(RandomBytes(random, window));
    sample.Copy(100, 4096);
    sample.Copy(3, 4096);
    sample.Copy(518, 104);
    sample.Copy(518, 4095);
    sample.Check();
  }
}

TEST(VRELBlastTest, CopiesEveryLength) {
  std::mt19937 random(8);
  for (bool const isCoded : {false, true}) {
    for (int dictionary = 4; dictionary <= 6; ++dictionary) {
      SCOPED_TRACE(dictionary);
      Sample sample(isCoded, dictionary);
      sample.Literals(RandomBytes(random, 1024));
      for (int length = 2; length <= 518; ++length) {
        sample.Copy(length, 1 + static_cast<int>(random() % (length == 2 ? 256 : 1024)));
        if (length % 3 == 0) sample.Literals(RandomBytes(random, static_cast<std::size_t>(length % 5)));
      }
      sample.Check();
    }
  }
}

TEST(VRELBlastTest, CopiesFromEveryDistance) {
  std::mt19937 random(9);
  for (bool const isCoded : {false, true}) {
    for (int dictionary = 4; dictionary <= 6; ++dictionary) {
      SCOPED_TRACE(dictionary);
      Sample sample(isCoded, dictionary);
      sample.Literals(RandomBytes(random, window + 1));
      for (int distance = 1; distance <= 64 << dictionary; ++distance) {
        sample.Copy(3 + distance % 30, distance);
        sample.Literals(RandomBytes(random, static_cast<std::size_t>(distance % 4)));
      }
      for (int distance = 1; distance <= 256; ++distance) {
        sample.Copy(2, distance);
        sample.Literals(RandomBytes(random, 1));
      }
      sample.Check();
    }
  }
}

// Short distances repeat a pattern, for every length and position.
TEST(VRELBlastTest, OverlappingCopiesRepeat) {
  std::mt19937 random(10);
  Sample sample(false, 4);
  sample.Literals(RandomBytes(random, 64));
  for (int distance = 1; distance <= 40; ++distance) {
    for (int length = 3; length <= 70; ++length) {
      sample.Copy(length, distance);
      sample.Literals(RandomBytes(random, static_cast<std::size_t>(1 + length % 3)));
    }
    sample.Copy(518, distance);
    sample.Literals(RandomBytes(random, 48));
  }
  sample.Check();
}

TEST(VRELBlastTest, CopiesCrossBlockBoundary) {
  std::mt19937 random(11);
  for (bool const isCoded : {false, true}) {
    for (int distance : {1, 2, 3, 7, 8, 15, 16, 17, 500, 2048, 4080, 4096}) {
      for (int before : {1, 2, 3, 5, 16, 17, 100, 517, 518, 519}) {
        SCOPED_TRACE(std::to_string(distance) + " " + std::to_string(before));
        Sample sample(isCoded, 6);
        sample.Literals(RandomBytes(random, 2 * window - static_cast<std::size_t>(before)));
        sample.Copy(518, distance);
        sample.Literals("after");
        sample.Copy(300, distance);
        sample.data.End();
        Decompression const done = Blast(sample.data.Bytes());
        EXPECT_EQ(done.result, 0);
        EXPECT_TRUE(done.output == sample.text);
      }
    }
  }
}

TEST(VRELBlastTest, DecodesEveryCodedLiteral) {
  Sample sample(true, 4);
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  sample.Literals(all);
  // Each one before and after literals with short and with long codes.
  for (char const byte : all) sample.Literals(std::string{byte, ' ', byte, 'e', '\xFE', byte, byte, '\x01'});
  for (char const byte : all) {
    sample.Literals(std::string(1, byte));
    sample.Copy(3, 7);
  }
  sample.Check();
}

void ExpectRoundTrip(std::string const& text) {
  for (bool const isCoded : {false, true}) {
    for (int dictionary = 4; dictionary <= 6; ++dictionary) {
      std::string const data = Implode(text, isCoded, dictionary);
      for (std::size_t const blockLength : blockLengths) {
        SCOPED_TRACE(std::to_string(isCoded) + " " + std::to_string(dictionary) + " " + std::to_string(blockLength));
        Decompression const done = Blast(data, blockLength);
        EXPECT_EQ(done.result, 0);
        EXPECT_TRUE(done.output == text);
        EXPECT_EQ(done.bytesRead, data.size());
        EXPECT_EQ(done.readsAtEnd, 0);
      }
    }
  }
}

TEST(VRELBlastTest, RoundTripOfRandomData) {
  std::mt19937 random(12);
  for (std::size_t const length : {0U, 1U, 2U, 3U, 100U, 4095U, 4096U, 4097U, 20000U}) {
    SCOPED_TRACE(length);
    ExpectRoundTrip(RandomBytes(random, length));
    std::string few(length, '\0');
    for (char& byte : few) byte = "abcd"[random() % 4];
    ExpectRoundTrip(few);
  }
}

TEST(VRELBlastTest, RoundTripOfStructuredData) {
  std::string table;
  for (int i = 0; i < 700; ++i) {
    table += "#" + std::to_string(i) + "=CARTESIAN_POINT('',(" + std::to_string(i * 7) + ".,0.," +
             std::to_string(i % 13) + ".));\n";
  }
  ExpectRoundTrip(table);
  ExpectRoundTrip(std::string(30000, '\0'));
  std::string record;
  for (int i = 0; i < 3000; ++i) {
    record += std::string{static_cast<char>(i), static_cast<char>(i >> 8), '\0', '\0'} +
              std::string(static_cast<std::size_t>(i % 11), '\xFF');
  }
  ExpectRoundTrip(record);
}

TEST(VRELBlastTest, RoundTripOfRealData) {
  ExpectRoundTrip(Prose());
  std::ifstream own(REAL_TEXT, std::ios::binary);
  std::string const source(std::istreambuf_iterator<char>(own), {});
  ASSERT_GT(source.size(), window);
  ExpectRoundTrip(source);
  std::ifstream program("/proc/self/exe", std::ios::binary);
  std::string code(100000, '\0');
  program.read(code.data(), static_cast<std::streamsize>(code.size()));
  ExpectRoundTrip(code);
}

TEST(VRELBlastTest, InputEndsAtEveryByte) {
  std::string text;
  for (int i = 0; i < 20; ++i) text += Prose() + std::to_string(i * 12345);
  ASSERT_GT(text.size(), window);
  for (bool const isCoded : {false, true}) {
    std::string const data = Implode(text, isCoded, 4);
    for (std::size_t const blockLength : {std::size_t{1}, std::size_t{4096}}) {
      std::size_t before = 0;
      for (std::size_t cut = 0; cut < data.size(); ++cut) {
        SCOPED_TRACE(cut);
        Decompression const done = Blast(data.substr(0, cut), blockLength);
        EXPECT_EQ(done.result, 2);
        EXPECT_EQ(done.readsAtEnd, 1);
        EXPECT_TRUE(text.compare(0, done.output.size(), done.output) == 0);
        EXPECT_GE(done.output.size(), before);
        before = done.output.size();
      }
      EXPECT_EQ(before, text.size());
    }
  }
}

// All complete items before the end of input are written.
TEST(VRELBlastTest, WritesDecodedBytesBeforeEnd) {
  std::string const text = Prose();
  ImplodedData data(false, 4);
  data.Literals(text);
  for (std::size_t cut = 2; cut <= data.Bytes().size(); ++cut) {
    SCOPED_TRACE(cut);
    for (std::size_t const blockLength : blockLengths) {
      Decompression const done = Blast(data.Bytes().substr(0, cut), blockLength);
      EXPECT_EQ(done.result, 2);
      EXPECT_EQ(done.output, text.substr(0, (cut - 2) * 8 / 9));
    }
  }
}

// The result of random bytes does not depend on the block lengths, and its length is bounded:
// 518 bytes for a copy, which takes 22 bits at least.
TEST(VRELBlastTest, RandomBytes) {
  std::mt19937 random(13);
  int results[6] = {};
  for (int i = 0; i < 10000; ++i) {
    SCOPED_TRACE(i);
    std::string data = RandomBytes(random, random() % 600);
    if (data.size() > 1 && i % 10 != 0) {
      data[0] = static_cast<char>(random() % 2);
      data[1] = static_cast<char>(4 + random() % 3);
    }
    // A valid beginning, so that copies have a source.
    if (i % 3 == 0) data = ImplodedData(i % 2 == 0, 6).Literals(RandomBytes(random, 4090)).Bytes() + data;
    Decompression const whole = Blast(data);
    Decompression const single = Blast(data, 1);
    EXPECT_EQ(whole.result, single.result);
    EXPECT_TRUE(whole.output == single.output);
    EXPECT_EQ(whole.writes, single.writes);
    EXPECT_LE(whole.output.size(), 518 * (data.size() * 8 / 22 + 1) + data.size() * 8);
    ASSERT_TRUE(whole.result >= -3 && whole.result <= 2 && whole.result != 1);
    ++results[whole.result + 3];
  }
  EXPECT_GT(results[0], 0);
  EXPECT_GT(results[1], 0);
  EXPECT_GT(results[2], 0);
  EXPECT_GT(results[3], 0);
  EXPECT_GT(results[5], 0);
}

TEST(VRELBlastTest, EmptyBlockIsEnd) {
  blast_in const nothing = [](void* /*how*/, unsigned char** buffer) -> unsigned {
    *buffer = nullptr;
    return 5;
  };
  blast_out const noOutput = [](void* /*how*/, unsigned char* /*buffer*/, unsigned /*length*/) { return 0; };
  EXPECT_EQ(blast(nothing, nullptr, noOutput, nullptr), 2);
}

// Measures the heap during decompression.
struct HeapWatch {
  static unsigned Read(void* how, unsigned char** buffer) {
    auto& watch = *static_cast<HeapWatch*>(how);
    watch.isSame = watch.isSame && mallinfo2().uordblks == watch.inUse;
    if (watch.place == watch.data.size()) return 0;
    *buffer = reinterpret_cast<unsigned char*>(&watch.data[watch.place++]);
    return 1;
  }
  static int Write(void* how, unsigned char* /*buffer*/, unsigned length) {
    auto& watch = *static_cast<HeapWatch*>(how);
    watch.isSame = watch.isSame && mallinfo2().uordblks == watch.inUse;
    watch.written += length;
    return 0;
  }

  std::string data;
  std::size_t place = 0;
  std::size_t written = 0;
  std::size_t inUse = 0;
  bool isSame = true;
};

TEST(VRELBlastTest, UsesNoHeap) {
  HeapWatch watch;
  watch.data = Implode(std::string(10000, 'h') + Prose(), true, 6);
  watch.inUse = mallinfo2().uordblks;
  EXPECT_EQ(blast(HeapWatch::Read, &watch, HeapWatch::Write, &watch), 0);
  EXPECT_TRUE(watch.isSame);
  EXPECT_EQ(watch.written, 10000 + Prose().size());
}

}  // namespace
