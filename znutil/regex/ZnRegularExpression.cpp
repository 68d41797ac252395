#include <znutil/regex/ZnRegularExpression.h>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/regex/internal/RegexprPrefilter.h>

namespace znutil::detail {

// What copies of one object share. The original hands the same pointers to
// every copy and frees them in each destructor; counting the copies frees
// them once, when the last one goes.
struct ZnRegularExpressionShare {
  ZNUTIL_FIXED_BLOCK_OPERATORS
  int iCopies = 1;
  unsigned char *pOwnedFirstMap = nullptr;
  RegexprPrefilter *pPrefilter = nullptr;  // built with the map, when the program suits
};

}  // namespace znutil::detail

namespace {

constexpr int kLibrarySyntax = 499;

// Calls `found` with each index of a character of `set` in `text`, left to right.
template <typename Found>
void ForEachInSet(ZnString const &text, char const *set, Found found) {
  ZnString const characters(set);
  for (int at = text.HaveCharactersInSet(characters, 0); at >= 0; at = text.HaveCharactersInSet(characters, at + 1)) {
    found(at);
  }
}

}  // namespace

ZnRegularExpression::ZnRegularExpression(ZnString const &pattern)
    : fsPattern(pattern), iMatchPosition(-1), iRegisterCount(0), bValid(false), rbCompiled(),
      rrRegisters(), pShare(new znutil::detail::ZnRegularExpressionShare) {
  // The match position and registers have no meaning before the first
  // Matches; they start as "no match" rather than undefined.
  for (int r = 0; r < REGEXPR_REGISTERS; ++r) rrRegisters.start[r] = rrRegisters.end[r] = -1;
  Initialize();
}

ZnRegularExpression::ZnRegularExpression(ZnRegularExpression const &other) : pShare(nullptr) { Share(other); }

ZnRegularExpression &ZnRegularExpression::operator=(ZnRegularExpression const &other) {
  if (this != &other) {
    Release();
    Share(other);
  }
  return *this;
}

ZnRegularExpression::~ZnRegularExpression() { Release(); }

void ZnRegularExpression::Share(ZnRegularExpression const &other) {
  fsPattern = other.fsPattern;
  fsCompileError = other.fsCompileError;
  iMatchPosition = other.iMatchPosition;
  iRegisterCount = other.iRegisterCount;
  bValid = other.bValid;
  rbCompiled = other.rbCompiled;
  rrRegisters = other.rrRegisters;
  pShare = other.pShare;
  ++pShare->iCopies;
}

void ZnRegularExpression::Release() {
  if (--pShare->iCopies > 0) return;
  ZenoUtilFree(pShare->pOwnedFirstMap);
  ZenoUtilFree(pShare->pPrefilter);
  ZenoUtilFree(rbCompiled.buffer);
  delete pShare;
}

void ZnRegularExpression::Initialize() {
  rbCompiled = regexpr_buffer();
  iRegisterCount = 0;
  ForEachInSet(fsPattern, "(", [this](int) { ++iRegisterCount; });
  regexpr_set_syntax(kLibrarySyntax);
  char const *error = regexpr_compile(fsPattern.Chars(), fsPattern.Length(), &rbCompiled);
  fsCompileError = error;  // null gives the empty string
  bValid = error == nullptr;
  if (!bValid) iRegisterCount = 0;
}

void ZnRegularExpression::Optimize() {
  if (rbCompiled.first_map) return;
  // A copy that optimizes after another copy did reuses that map: it is
  // computed from the same program.
  if (!pShare->pOwnedFirstMap) pShare->pOwnedFirstMap = static_cast<unsigned char *>(ZenoUtilAlloc(256));
  rbCompiled.first_map = pShare->pOwnedFirstMap;
  regexpr_compile_first_map(&rbCompiled);
  if (pShare->pPrefilter || !rbCompiled.first_map_valid) return;
  void *filter = ZenoUtilAlloc(sizeof(znutil::detail::RegexprPrefilter));
  if (filter && znutil::detail::BuildRegexprPrefilter(rbCompiled.buffer, rbCompiled.used,
                                                      static_cast<znutil::detail::RegexprPrefilter *>(filter))) {
    pShare->pPrefilter = static_cast<znutil::detail::RegexprPrefilter *>(filter);
  } else {
    ZenoUtilFree(filter);
  }
}

bool ZnRegularExpression::Matches(ZnString const &text) {
  int const length = text.Length();
  // The pair filter goes with the map: a copy that never optimized searches without either.
  znutil::detail::RegexprPrefilter const *filter = rbCompiled.first_map ? pShare->pPrefilter : nullptr;
  iMatchPosition = znutil::detail::RegexprSearchPrefiltered(&rbCompiled, filter, text.Chars(), length, 0, length,
                                                            &rrRegisters);
  return iMatchPosition >= 0;
}

ZnString ZnRegularExpression::DosToRegEx(ZnString const &wildcard) {
  ZnString result = ZnStringSize(2 * wildcard.Length());
  result << '^';
  int from = 0;
  ForEachInSet(wildcard, "*?.", [&](int at) {
    result << wildcard.MidString(from, at - from);
    char const special = wildcard[at];
    result << (special == '*' ? ".*" : special == '.' ? "\\." : ".");
    from = at + 1;
  });
  result << wildcard.MidString(from, wildcard.Length() - from) << '$';
  return result;
}
