#include <znutil/configuration/internal/CfgScanner.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <znutil/configuration/ZnCfgFileParser.h>

namespace znutil {
namespace detail {
namespace {

// Character classes, one bit each, in a table for the scanning loops.
enum : unsigned char { kDigit = 1, kLetter = 2, kHexDigit = 4, kOctalDigit = 8, kBlank = 16, kPlainStringByte = 32 };

constexpr unsigned char ClassOf(int c) {
  unsigned char bits = 0;
  if (c >= '0' && c <= '9') bits |= kDigit | kHexDigit;
  if (c >= '0' && c <= '7') bits |= kOctalDigit;
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_') bits |= kLetter;
  if ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')) bits |= kHexDigit;
  if (c == ' ' || c == '\t' || c == '\r') bits |= kBlank;
  if (c != '"' && c != '\\' && c != '\n') bits |= kPlainStringByte;
  return bits;
}

struct ClassTable {
  constexpr ClassTable() : aucBits() {
    for (int c = 0; c < 256; ++c) aucBits[c] = ClassOf(c);
  }
  unsigned char aucBits[256];
};

constexpr ClassTable kClasses;

// A test for any of `bits`, as a type of its own so that each scanning loop
// is compiled with its test inline.
template <unsigned char bits>
struct Is {
  constexpr bool operator()(unsigned char c) const { return (kClasses.aucBits[c] & bits) != 0; }
};

constexpr Is<kDigit> IsDigit;
constexpr Is<kLetter> IsLetter;
constexpr Is<kLetter | kDigit> IsWordCharacter;
constexpr Is<kHexDigit> IsHexDigit;
constexpr Is<kOctalDigit> IsOctalDigit;
constexpr Is<kBlank> IsBlank;
constexpr Is<kPlainStringByte> IsPlainStringByte;

struct Keyword {
  char const *pszText;
  std::size_t szLength;
  int iToken;
};

// Keywords are exact and case-sensitive.
constexpr Keyword kKeywords[] = {
    {"binary", 6, kCfgBinary}, {"float", 5, kCfgFloat}, {"integer", 7, kCfgInteger}, {"section", 7, kCfgSection},
    {"text", 4, kCfgText},     {"ascii", 5, kCfgAscii}, {"hex", 3, kCfgHex},
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

// strtoul in base 16 of `count` digits as on a 32-bit system: a value
// beyond 32 bits stays at 0xFFFFFFFF.
int HexValue(char const *digits, std::size_t count) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < count && value <= 0xFFFFFFFFu; ++i) {
    unsigned char const c = static_cast<unsigned char>(digits[i]);
    value = value * 16 + static_cast<unsigned int>(IsDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10);
  }
  return static_cast<int>(value > 0xFFFFFFFFu ? 0xFFFFFFFFu : static_cast<std::uint32_t>(value));
}

// FNV-1a, to place a text in the cache of recent strings.
std::size_t TextHash(char const *text, std::size_t length) {
  std::uint32_t hash = 2166136261u;
  for (std::size_t i = 0; i < length; ++i) hash = (hash ^ static_cast<unsigned char>(text[i])) * 16777619u;
  return hash;
}

}  // namespace

CfgScanner::CfgScanner(char const *text, std::size_t size, CfgCondition condition, ZnCfgFileParser &parser)
    : pcCursor(text), pcEnd(text + size), eCondition(condition), rParser(parser), iNextTokenString(0) {}

int CfgScanner::Next(ZnCfgTokenInfo *info) {
  for (;;) {
    if (eCondition != kCfgNormal && ScanString(info)) return kCfgString;
    if (pcCursor == pcEnd) return kCfgEnd;
    int const token = ScanNormal(info);
    if (token != kCfgEnd) return token;
  }
}

void CfgScanner::Match(std::size_t length, ZnCfgTokenInfo *info) {
  rParser.LexMatchedText(pcCursor, static_cast<int>(length), info);
  pcCursor += length;
}

void CfgScanner::Skip(std::size_t length) { pcCursor += length; }

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
    Skip(Run(1, IsBlank));
    return kCfgEnd;
  }
  if (IsLetter(c)) return ScanWord(info);
  if (IsDigit(c)) return ScanNumber(Run(0, IsDigit), info);
  std::size_t const digits = c == '-' ? Run(1, IsDigit) : 0;
  if (digits > 1) return ScanNumber(digits, info);
  switch (c) {
    case '\n':
      Skip(1);
      rParser.LexGotNewLine();
      return kCfgEnd;
    case '#': SkipComment(); return kCfgEnd;
    case '"':
      Skip(1);
      eCondition = kCfgInString;
      sCollected.clear();
      return kCfgEnd;
    default: break;
  }
  Match(1, info);
  switch (c) {
    case '(': return kCfgLParen;
    case ')': return kCfgRParen;
    case '=': return kCfgEquals;
    case ',': return kCfgComma;
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
    info->iValue = HexValue(info->pszText + 1, length - 1);
    return kCfgHexByte;
  }
  for (Keyword const &keyword : kKeywords) {
    if (keyword.szLength == length && std::memcmp(keyword.pszText, info->pszText, length) == 0) return keyword.iToken;
  }
  info->pfsValue = NextTokenString();
  *info->pfsValue = Recent(info->pszText, length);
  return kCfgWord;
}

// A comment: "#" and everything up to and including the line feed or the
// end of the input.
void CfgScanner::SkipComment() {
  std::size_t const length = Run(1, [](unsigned char c) { return c != '\n'; });
  bool const lineFeed = pcCursor + length != pcEnd;
  for (std::size_t i = 0; i < length + lineFeed; ++i) rParser.LexGotCharacter();
  Skip(length + lineFeed);
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
      Skip(plain);
      continue;
    }
    char const c = *pcCursor;
    if (c == '"') {
      Match(1, info);
      eCondition = kCfgNormal;
      info->pfsValue = TakeString();
      return true;
    }
    Skip(1);
    if (c == '\\') {
      eCondition = kCfgInEscape;
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
    Skip(length);
    sCollected += static_cast<char>(value);
    return;
  }
  if (c == '\n') {
    // Not counted as a line; the escape still waits for its character.
    Match(1, info);
    eCondition = kCfgInEscape;
    rParser.LexJammed(info->pszText);
    return;
  }
  // "x" and hexadecimal digits are read from the "x" on, which holds no
  // number: the byte is always 0.
  std::size_t const hex = c == 'x' ? Run(1, IsHexDigit) : 1;
  Skip(hex);
  int const escaped = EscapedByte(c);
  sCollected += hex > 1 ? '\0' : escaped >= 0 ? static_cast<char>(escaped) : c;
}

ZnString *CfgScanner::TakeString() {
  ZnString *value = NextTokenString();
  char const *piece = sCollected.c_str();
  char const *const end = piece + sCollected.size();
  if (std::strlen(piece) == sCollected.size()) {
    *value = Recent(piece, sCollected.size());
    return value;
  }
  // Room for every byte up front: appending then never reallocates, which
  // would keep only the text before the first zero byte. Appending text
  // stops at a zero byte, so zero bytes go in one by one.
  ZnString text{ZnStringSize(static_cast<int>(sCollected.size()))};
  for (;;) {
    text << piece;
    piece += std::strlen(piece);
    if (piece == end) break;
    text << '\0';
    ++piece;
  }
  *value = text;
  return value;
}

ZnString const &CfgScanner::Recent(char const *text, std::size_t length) {
  ZnString &slot = afsRecent[TextHash(text, length) % kRecentStrings];
  if (static_cast<std::size_t>(slot.Length()) != length || std::memcmp(slot.Chars(), text, length) != 0) slot = text;
  return slot;
}

ZnString *CfgScanner::NextTokenString() {
  iNextTokenString = (iNextTokenString + 1) % kTokenStrings;
  return &afsTokenStrings[iNextTokenString];
}

}  // namespace detail
}  // namespace znutil
