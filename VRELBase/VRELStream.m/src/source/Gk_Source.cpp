// The tokenizer has no buffer: every reader takes bytes with readChar, and the delimiter that ends a token is pushed
// back with add. peek pushes back in two steps, the delimiter first and then all bytes before it as one string, so that
// a stream sees them in reverse order of reading. The token field is reused from call to call unless a caller still
// shares it, and so is the one-byte string for push-backs.
#include "Gk_Source.h"

#include <cstring>
#include <string_view>

#include "Gk_StringParser.h"
#include "VRELString.h"

Gk_Source::WhiteSpace::WhiteSpace(char const* characters)
    : Gk_String(characters, characters != nullptr ? VRELString::getStringLength(characters) : 0) {
  for (char const delimiter : *this) mask |= delimiter;
}

Gk_Source::Gk_Source(VRELInputStream* input, bool isSingleDelimiter)
    : stream(input), singleDelimiter(isSingleDelimiter) {}

Gk_Source::WhiteSpace Gk_Source::setWhiteSpace(WhiteSpace const& delimiters) {
  WhiteSpace before = white;
  white = delimiters;
  isDelimiterByte.fill(false);
  for (char const delimiter : white) isDelimiterByte[static_cast<unsigned char>(delimiter)] = true;
  return before;
}

Gk_String Gk_Source::next() {
  begin();
  collect(readBehindWhite());
  return finish();
}

Gk_String Gk_Source::nextString() {
  if (!singleDelimiter) return next();
  begin();
  int const first = read();
  collect(isDelimiter(first) ? read() : first);
  return finish();
}

Gk_String Gk_Source::nextLine() {
  begin();
  int const first = read();
  if (first >= 0) {
    token.append(static_cast<char>(first));
    collect(read());
  }
  return finish();
}

Gk_String Gk_Source::peek() {
  Gk_String kept;
  int c = read();
  for (; isDelimiter(c); c = read()) kept.append(static_cast<char>(c));
  int const start = kept.len();
  for (; c >= 0 && !isDelimiter(c); c = read()) kept.append(static_cast<char>(c));
  if (c >= 0) pushBack(c);
  begin();
  token.appendBytes(kept.begin() + start, kept.len() - start);
  if (kept.len() > 0) stream->add(kept);
  return finish();
}

void Gk_Source::skipWhite() {
  int const c = readBehindWhite();
  if (c >= 0) pushBack(c);
}

bool Gk_Source::isEmpty() {
  skipWhite();
  return stream == nullptr || stream->available() < 1;
}

Gk_ROString Gk_Source::matchPattern(Gk_ROString const& pattern) {
  while (true) {
    Gk_String const candidate = next();
    if (candidate.len() == 0) return Gk_ROString();
    Gk_ROString view(candidate.dataStr());
    if (view.matchPathPattern(pattern)) return view;
  }
}

// Skips delimiters and returns the next byte, or -1 at the end of input.
int Gk_Source::readBehindWhite() {
  int c = read();
  while (isDelimiter(c)) c = read();
  return c;
}

// A string that the stream still shares is not modified.
void Gk_Source::pushBack(int c) {
  char const byte = static_cast<char>(c);
  if (pushed.len() == 1 && !pushed.isShared()) {
    pushed[0] = byte;
  } else {
    pushed = Gk_String(&byte, 1);
  }
  stream->add(pushed);
}

// Begins a new token. A string that a caller still shares is left to it.
void Gk_Source::begin() {
  if (token.isShared()) {
    token = Gk_String();
  } else {
    token.clear();
  }
}

// Appends `first` and the bytes after it up to a delimiter, which is pushed back, or the end of input.
void Gk_Source::collect(int first) {
  for (int c = first; c >= 0; c = read()) {
    if (isDelimiter(c)) {
      pushBack(c);
      return;
    }
    token.append(static_cast<char>(c));
  }
}

Gk_String Gk_Source::finish() {
  if (token.len() > 0) token.append('\0');
  return token;
}

Gk_Source& operator>>(Gk_Source& source, char& c) {
  Gk_String const token = source.next();
  c = token[0];
  return source;
}

Gk_Source& operator>>(Gk_Source& source, char*& text) {
  Gk_String const token = source.nextString();
  if (token.len() == 0 || text == nullptr) return source;
  std::string_view const visible = token.text();
  std::memcpy(text, visible.data(), visible.size());
  text[visible.size()] = '\0';
  return source;
}

Gk_Source& operator>>(Gk_Source& source, int& number) {
  number = Gk_StringParser(source.next()).intValue();
  return source;
}

Gk_Source& operator>>(Gk_Source& source, long& number) {
  number = Gk_StringParser(source.next()).intValue();
  return source;
}

Gk_Source& operator>>(Gk_Source& source, unsigned int& number) {
  number = Gk_StringParser(source.next()).uIntValue();
  return source;
}

Gk_Source& operator>>(Gk_Source& source, unsigned long& number) {
  number = Gk_StringParser(source.next()).uIntValue();
  return source;
}

Gk_Source& operator>>(Gk_Source& source, float& number) {
  number = static_cast<float>(Gk_StringParser(source.next()).realValue());
  return source;
}

Gk_Source& operator>>(Gk_Source& source, double& number) {
  number = Gk_StringParser(source.next()).realValue();
  return source;
}
