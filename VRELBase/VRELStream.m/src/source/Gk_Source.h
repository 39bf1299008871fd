// Tokenizer for byte streams.
#pragma once

#include <array>

#include "Gk_ROString.h"
#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELInputStream.h"

// Splits the bytes of a stream into tokens at delimiters, and parses numbers.
//
//   VRELStringInputStream stream(Gk_String("bolt 8 1.25"));
//   Gk_Source source(&stream);
//   source.setWhiteSpace(" \t\r\n");
//   Gk_String const name = source.next();  // "bolt"
//   source >> diameter >> pitch;           // 8 and 1.25
//
// A token ends before a delimiter, which is the next byte to be read, or at the end of input. Tokens end in a zero
// byte; at the end of input the token is a string without elements. That is not an error.
//
// A token shares its bytes with the source until the source begins the next one, so that tokens are not copied. Use
// copy() for a token that is passed to another thread.
//
// Bytes are read with readChar, and a byte read too far is pushed back with add: between two calls nothing is buffered,
// and the stream can be used directly.
//
// Errors: "Gk_IOException" at the first push-back, if the stream does not support add.
class VREL_EXPORT Gk_Source {
 public:
  // Set of delimiters.
  class VREL_EXPORT WhiteSpace : public Gk_String {
   public:
    // Creates the empty set.
    WhiteSpace() = default;
    // Creates a set of the bytes of a string; the empty set for null.
    WhiteSpace(char const* characters);

    // Returns whether a byte is a delimiter. Bytes that share no bit with any delimiter are rejected at once.
    bool isSpace(char c) const { return (mask & c) != 0 && holds(c); }

   private:
    bool holds(char c) const {
      for (char const delimiter : *this) {
        if (delimiter == c) return true;
      }
      return false;
    }

    int mask = 0;  // bitwise OR of all delimiters
  };

  // Starts without delimiters, so that all input is one token.
  // Ownership: the stream is not owned; null is an empty stream. The flag changes nextString.
  explicit Gk_Source(VRELInputStream* input, bool isSingleDelimiter = false);

  // Replaces the stream.
  void install(VRELInputStream* input) { stream = input; }
  VRELInputStream* top() const { return stream; }

  // Sets the delimiters and returns the previous ones.
  WhiteSpace setWhiteSpace(WhiteSpace const& delimiters);

  // Skips delimiters and reads a token.
  Gk_String next();

  // Like next; but with the flag set, skips only one delimiter, so that there is an empty token between two delimiters:
  // "a,,b" results in "a", an empty token and "b".
  Gk_String nextString();

  // Reads up to the next delimiter.
  // Compatibility: a delimiter at the beginning is the first byte of the token; call skipWhite or isEmpty between
  // lines.
  Gk_String nextLine();

  // Returns the token that next would return, and restores the position.
  Gk_String peek();

  // Skips delimiters.
  void skipWhite();

  // Skips delimiters, and returns whether available() of the stream is below 1.
  bool isEmpty();

  // Reads tokens until one matches the pattern (see Gk_ROString::matchPathPattern) and returns it; the empty view at
  // the end of input. The tokens before it are consumed.
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
  Gk_String pushed;                         // argument of add, reused by pushBack
  std::array<bool, 256> isDelimiterByte{};  // the delimiters, indexed by byte
};

// Reads the first byte of the next token; zero at the end of input.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, char& c);

// Copies the token of nextString, with its terminator, to `text`.
// Requires: enough room. Copies nothing for an empty token or a null pointer.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, char*& text);

// Read the number at the beginning of the next token with Gk_StringParser; 0 if there is none. The rest of the token is
// ignored.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, int& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, long& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, unsigned int& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, unsigned long& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, float& number);
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, double& number);
