// Cuts the bytes of a stream into tokens.
#pragma once

#include <array>

#include "Gk_ROString.h"
#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELInputStream.h"

// Reads tokens that stand between delimiters, and numbers from them.
//
//   VRELStringInputStream stream(Gk_String("bolt 8 1.25"));
//   Gk_Source source(&stream);
//   source.setWhiteSpace(" \t\r\n");
//   Gk_String const name = source.next();  // "bolt"
//   source >> diameter >> pitch;           // 8 and 1.25
//
// A token ends in front of a delimiter, which is the first thing to be read next, or at the end of the input. It is
// given with a terminating zero behind it; where there is none left, as a string without any element. That is no
// error, and nothing else is either.
//
// A token shares its bytes with the source until the source begins the next one, so neither is copied nor made anew for
// tokens that are looked at and dropped. Take a copy() of one that another thread is to have.
//
// Bytes are read one by one, by readChar, and what was read too far goes back by add: nothing is held between two
// calls, and the stream can be used directly. A stream without add raises "Gk_IOException" at the first byte that goes
// back.
class VREL_EXPORT Gk_Source {
 public:
  // A set of delimiters, held without a terminator.
  class VREL_EXPORT WhiteSpace : public Gk_String {
   public:
    // The empty set.
    WhiteSpace() = default;
    // The bytes of a text; null gives the empty set.
    WhiteSpace(char const* characters);

    // Whether the byte is a delimiter. One that has no bit in common with any delimiter costs one step.
    bool isSpace(char c) const { return (mask & c) != 0 && holds(c); }

   private:
    bool holds(char c) const {
      for (char const delimiter : *this) {
        if (delimiter == c) return true;
      }
      return false;
    }

    int mask = 0;  // all bits that any delimiter has
  };

  // Without delimiters at first: a token is then all the input. The stream is not owned; null is an exhausted one. The
  // flag changes what nextString does.
  explicit Gk_Source(VRELInputStream* input, bool isSingleDelimiter = false);

  // Goes on with another stream.
  void install(VRELInputStream* input) { stream = input; }
  VRELInputStream* top() const { return stream; }

  // Sets the delimiters and returns those in force before.
  WhiteSpace setWhiteSpace(WhiteSpace const& delimiters);

  // Skips delimiters and takes the token behind them.
  Gk_String next();

  // As next; but with the flag set a single delimiter in front is skipped, so that two in a row have an empty token
  // between them, as the fields of a line have: over "a,,b" it gives "a", an empty token and "b".
  Gk_String nextString();

  // The bytes up to the next delimiter. That a delimiter at the very beginning is taken for the first byte of the token
  // is promised: call skipWhite or isEmpty between lines.
  Gk_String nextLine();

  // What next would give, with the stream brought back to where it stands.
  Gk_String peek();

  // Moves to the first byte that is no delimiter, or to the end.
  void skipWhite();

  // Skips delimiters and tells whether that was all, by the stream's available().
  bool isEmpty();

  // Takes tokens until one matches the pattern (see Gk_ROString::matchPathPattern), and returns that one, or the empty
  // view at the end of the input. The tokens in front of it are gone.
  Gk_ROString matchPattern(Gk_ROString const& pattern);

 private:
  int read() { return stream != nullptr ? stream->readChar() : -1; }
  bool isDelimiter(int c) const { return c >= 0 && isDelimiterByte[static_cast<unsigned char>(c)]; }
  int readBehindWhite();
  void pushBack(int c);
  void begin();
  void collect(int first);
  Gk_String finish();

  VRELInputStream* stream;
  WhiteSpace white;
  Gk_String token;
  bool singleDelimiter;
  Gk_String pushed;                         // what pushBack hands over, kept so that it is not made anew for each byte
  std::array<bool, 256> isDelimiterByte{};  // what white holds, by byte
};

// The first byte of the next token; zero where there is none.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, char& c);

// Copies nextString, with its terminator, to where the pointer points: there must be room for it. Nothing is copied for
// an empty token, or to null.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, char*& text);

// The number that the next token begins with, 0 where there is none, as Gk_StringParser reads it. What stands behind
// the number is passed over.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, int& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, long& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, unsigned int& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, unsigned long& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, float& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, double& number);
