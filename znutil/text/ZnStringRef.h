// ZnStringRef: the shared, counted, NUL-terminated 8-bit buffer beneath
// ZnString.
//
// The count is plain, not atomic: values that share a ref must stay on one
// thread. Growth is additive and deliberate: a buffer that is too small is
// replaced by one of exactly the needed size plus nNumPadChars (32), and a
// buffer never shrinks. The text is what lies before the first NUL; a ref
// also notes whether that is all `length` characters, so that comparing and
// searching can work over the length where no NUL hides inside it.
#ifndef ZNUTIL_TEXT_ZNSTRINGREF_H
#define ZNUTIL_TEXT_ZNSTRINGREF_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>

class ZnString;

class ZNUTIL_API ZnStringRef {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// Empty text with room for 32 characters.
  ZnStringRef();
  /// A copy of `text`; a null pointer leaves no buffer at all.
  explicit ZnStringRef(char const *text);
  explicit ZnStringRef(unsigned short const *text);
  /// Exactly `n` characters of `text`, with no slack: the constructor of
  /// substrings, whose first append therefore reallocates. Deliberate.
  ZnStringRef(char const *text, int n);
  ZnStringRef(ZnStringRef const &other);
  /// Empty text with room for `n` + 32 characters.
  explicit ZnStringRef(int n);
  virtual ~ZnStringRef();
  /// Copies text, lengths and count; each object keeps a buffer of its own.
  ZnStringRef &operator=(ZnStringRef const &other);

  /// length := n; a buffer that is too small is replaced, losing the text.
  void AllocBuffer(int n);
  /// length := n; a buffer that is too small is replaced, keeping the text.
  void ReallocBuffer(int n);
  /// Makes room for `n` characters plus the slack; never shrinks.
  void SetMaxLength(int n);
  /// Assigns text; the pointer forms do nothing for a null pointer.
  void MakeCopy(ZnStringRef const &other);
  void MakeCopy(char const *text);
  void MakeCopy(unsigned short const *text);
  /// Copies text over the buffer; the caller has made room.
  void CopyToInternal(char const *text);
  void CopyToInternal(unsigned short const *text);
  /// Adds text at the first NUL from `start` (narrow) or at `start` (wide).
  void AppendToInternal(char const *text, int start);
  void AppendToInternal(unsigned short const *text, int start);
  /// Moves the text up by `n` and copies `n` characters to the front.
  void PrependToInternal(char const *text, int n);
  void PrependToInternal(unsigned short const *text, int n);

  void Append(ZnStringRef const &other);
  void Append(char const *text);
  void Append(unsigned short const *text);
  void Append(char c);
  /// Stores the low 8 bits of `c`, unconverted.
  void Append(unsigned short c);
  void Prepend(ZnStringRef const &other);
  void Prepend(char const *text);
  void Prepend(unsigned short const *text);
  /// Replaces `count` characters at `start` by the text of `s`.
  void ReplaceString(ZnStringRef const &s, int start, int count);

  /// -1, 0 or 1, as strcmp on unsigned bytes.
  int CompareToInternal(char const *text) const;
  int CompareToInternal(unsigned short const *text) const;

  void ConvertToUpper();
  void ConvertToLower();
  /// Raises the first letter after leading space and lowers every later one.
  void Capitalize();
  /// Cuts at `n` when 0 <= n < length, then measures the text again.
  void Truncate(int n);
  /// Stores `c` at `i` when 0 <= i < length; a NUL does not change the length.
  bool SetCharacter(int i, char c);
  /// Removes every white-space character, not just those at the ends.
  void StripWhiteSpace();
  void NoLeadingWhiteSpace();
  void NoTrailingWhiteSpace();
  /// A new 16-bit copy for `delete[]`, owned by the caller.
  unsigned short *DuplicateUnicode() const;
  /// A new 8-bit copy for `delete[]`, owned by the caller.
  char *DuplicateAscii() const;
  /// Escapes the text as in C source: `\b \t \n \r \" \' \\` and `\x%03x` for
  /// other unprintable bytes.
  void ConvertToCString();
  /// Replaces the text by a file's bytes (up to an embedded NUL).
  bool ReadFromFile(ZnString const &path);
  /// Writes the text, without terminator, over the file.
  bool WriteToFile(ZnString const &path) const;
  /// A new plain ref, count 0, holding a copy of the text.
  ZnStringRef *CopyOnWrite();

  char *GetInternal() const { return pcBuffer; }
  int GetLength() const { return iLength; }
  int GetMaxLength() const { return iMaxLength; }
  int GetCount() const { return iCount; }
  int IncrementCount() { return ++iCount; }
  int DecrementCount() { return --iCount; }

 protected:
  /// Characters of slack added at every growth; read at each growth.
  static int nNumPadChars;

 private:
  friend class ZnString;
  struct NullTag {};
  /// The shared empty text of the null string, built at compile time.
  constexpr ZnStringRef(NullTag, char *text)
      : pcBuffer(text), iLength(0), iMaxLength(32), iCount(0), bNulFree(true) {}

  void Grow(int n, bool keepText);
  /// Both take `n` bytes that hold no NUL.
  void AppendBytes(char const *text, int n);
  void PrependBytes(char const *text, int n);
  /// Notes whether a NUL lies among the `n` bytes just stored at `text`.
  void NoteBytes(char const *text, int n);

  char *pcBuffer;
  int iLength;
  int iMaxLength;
  int iCount;
  /// True only when the buffer is set and no NUL lies before length, so that
  /// the text is exactly `length` characters. False wherever that is unknown.
  bool bNulFree = false;
};

#endif  // ZNUTIL_TEXT_ZNSTRINGREF_H
