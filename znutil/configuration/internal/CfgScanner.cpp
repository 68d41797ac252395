#include <znutil/configuration/internal/CfgScanner.h>

#include <cstdlib>
#include <cstring>

#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/text/ZnStringHeap.h>

namespace znutil {
namespace detail {
namespace {

bool IsDigit(unsigned char c) { return c >= '0' && c <= '9'; }
bool IsLetter(unsigned char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsWordCharacter(unsigned char c) { return IsLetter(c) || IsDigit(c); }
bool IsHexDigit(unsigned char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool IsOctalDigit(unsigned char c) { return c >= '0' && c <= '7'; }
bool IsBlank(unsigned char c) { return c == ' ' || c == '\t' || c == '\r'; }
bool IsPlainStringByte(unsigned char c) { return c != '"' && c != '\\' && c != '\n'; }

struct Keyword {
  char const *pszText;
  int iToken;
};

// Keywords are exact and case-sensitive.
constexpr Keyword kKeywords[] = {
    {"binary", kCfgBinary}, {"float", kCfgFloat}, {"integer", kCfgInteger}, {"section", kCfgSection},
    {"text", kCfgText},     {"ascii", kCfgAscii}, {"hex", kCfgHex},
};

// The byte a one-letter escape stands for, or -1.
int EscapedByte(char c) {
  switch (c) {
    case 'n': return 10;
    case 'r': return 13;
    case 'b': return 8;
    case 't': return 9;
    case '\\': return 92;
    case '\'': return 39;
    case '"': return 34;
    default: return -1;
  }
}

// strtoul in base 16 as on a 32-bit system: a value beyond 32 bits stays
// at 0xFFFFFFFF.
int HexValue(char const *digits) {
  unsigned long long const value = std::strtoull(digits, nullptr, 16);
  return static_cast<int>(value > 0xFFFFFFFFull ? 0xFFFFFFFFu : static_cast<unsigned int>(value));
}

}  // namespace

CfgScanner::CfgScanner(char *text, std::size_t size, CfgCondition condition, ZnCfgFileParser &parser,
                       ZnStringHeap &heap)
    : pcCursor(text), pcEnd(text + size), eCondition(condition), rParser(parser), rHeap(heap) {}

int CfgScanner::Next(ZnCfgTokenInfo *info) {
  for (;;) {
    if (eCondition != kCfgNormal && ScanString(info)) return kCfgString;
    if (pcCursor == pcEnd) return kCfgEnd;
    int const token = ScanNormal(info);
    if (token != kCfgEnd) return token;
  }
}

void CfgScanner::Match(std::size_t length, ZnCfgTokenInfo *info) {
  // The match is made a C string in place for the moment of the call.
  char const saved = pcCursor[length];
  pcCursor[length] = '\0';
  rParser.LexMatchedText(pcCursor, static_cast<int>(length), info);
  pcCursor[length] = saved;
  pcCursor += length;
}

template <typename Accept>
std::size_t CfgScanner::Run(std::size_t from, Accept accept) const {
  char const *end = pcCursor + from;
  while (end != pcEnd && accept(static_cast<unsigned char>(*end))) ++end;
  return static_cast<std::size_t>(end - pcCursor);
}

// One match in the normal condition: a token, or kCfgEnd for a match that
// gives none.
int CfgScanner::ScanNormal(ZnCfgTokenInfo *info) {
  unsigned char const c = static_cast<unsigned char>(*pcCursor);
  if (IsBlank(c)) {
    Match(Run(1, IsBlank), info);
    return kCfgEnd;
  }
  if (IsLetter(c)) return ScanWord(info);
  if (IsDigit(c)) return ScanNumber(Run(0, IsDigit), info);
  std::size_t const digits = c == '-' ? Run(1, IsDigit) : 0;
  if (digits > 1) return ScanNumber(digits, info);
  Match(1, info);
  switch (c) {
    case '\n': rParser.LexGotNewLine(); return kCfgEnd;
    case '#': SkipComment(info); return kCfgEnd;
    case '(': return kCfgLParen;
    case ')': return kCfgRParen;
    case '=': return kCfgEquals;
    case ',': return kCfgComma;
    case '"':
      eCondition = kCfgInString;
      sCollected.clear();
      return kCfgEnd;
    default: rParser.LexJammed(info->pszText); return kCfgEnd;
  }
}

int CfgScanner::ScanNumber(std::size_t length, ZnCfgTokenInfo *info) {
  Match(length, info);
  info->iValue = std::atoi(info->pszText);
  return kCfgNumber;
}

int CfgScanner::ScanWord(ZnCfgTokenInfo *info) {
  std::size_t const length = Run(1, IsWordCharacter);
  // A letter x and hexadecimal digits alone are a byte; with anything more
  // the longer word wins.
  bool const hexByte = (*pcCursor == 'x' || *pcCursor == 'X') && length > 1 && Run(1, IsHexDigit) == length;
  Match(length, info);
  if (hexByte) {
    info->iValue = HexValue(info->pszText + 1);
    return kCfgHexByte;
  }
  for (Keyword const &keyword : kKeywords) {
    if (std::strcmp(keyword.pszText, info->pszText) == 0) return keyword.iToken;
  }
  info->pfsValue = rHeap.AllocString();
  *info->pfsValue = info->pszText;
  return kCfgWord;
}

// The rest of a comment after its "#", up to and including the line feed
// or the end of the input.
void CfgScanner::SkipComment(ZnCfgTokenInfo *info) {
  std::size_t const length = Run(0, [](unsigned char c) { return c != '\n'; });
  bool const lineFeed = pcCursor + length != pcEnd;
  for (std::size_t i = 0; i <= length + lineFeed; ++i) rParser.LexGotCharacter();
  if (length + lineFeed > 0) Match(length + lineFeed, info);
  if (lineFeed) rParser.LexGotNewLine();
}

bool CfgScanner::ScanString(ZnCfgTokenInfo *info) {
  while (pcCursor != pcEnd) {
    if (eCondition == kCfgInEscape) {
      ScanEscape(info);
      continue;
    }
    std::size_t const plain = Run(0, IsPlainStringByte);
    if (plain > 0) {
      sCollected.append(pcCursor, plain);
      Match(plain, info);
      continue;
    }
    char const c = *pcCursor;
    Match(1, info);
    if (c == '\\') {
      eCondition = kCfgInEscape;
    } else if (c == '"') {
      eCondition = kCfgNormal;
      info->pfsValue = TakeString();
      return true;
    } else {
      // A line feed abandons the string, and the line is not counted.
      eCondition = kCfgNormal;
      sCollected.clear();
      return false;
    }
  }
  return false;
}

void CfgScanner::ScanEscape(ZnCfgTokenInfo *info) {
  char const c = *pcCursor;
  eCondition = kCfgInString;
  if (IsOctalDigit(static_cast<unsigned char>(c))) {
    std::size_t const length = Run(0, IsOctalDigit);
    unsigned int value = 0;
    for (std::size_t i = 0; i < length; ++i) value = (value * 8 + static_cast<unsigned int>(pcCursor[i] - '0')) & 0xFF;
    Match(length, info);
    sCollected += static_cast<char>(value);
    return;
  }
  // "x" and hexadecimal digits are read from the "x" on, which holds no
  // number: the byte is always 0.
  std::size_t const hex = c == 'x' ? Run(1, IsHexDigit) : 1;
  Match(hex, info);
  if (hex > 1) {
    sCollected += '\0';
  } else if (c == '\n') {
    // Not counted as a line; the escape still waits for its character.
    eCondition = kCfgInEscape;
    rParser.LexJammed(info->pszText);
  } else {
    int const escaped = EscapedByte(c);
    sCollected += escaped >= 0 ? static_cast<char>(escaped) : c;
  }
}

ZnString *CfgScanner::TakeString() {
  ZnString *text = rHeap.AllocString();
  // Appending text stops at a zero byte, so zero bytes go in one by one.
  char const *piece = sCollected.c_str();
  char const *const end = piece + sCollected.size();
  *text = piece;
  for (piece += std::strlen(piece); piece != end; piece += std::strlen(piece)) {
    *text << '\0';
    *text << ++piece;
  }
  sCollected.clear();
  return text;
}

}  // namespace detail
}  // namespace znutil
