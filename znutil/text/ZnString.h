// ZnString: the text value of every interface of the library.
//
//   ZnString name("report");
//   ZnString copy = name;          // shares the text: one pointer, one count
//   copy << ".txt";                // copy on write: name is unchanged
//   if (copy == NULL_STRING) ...   // the emptiness test
//
// A ZnString is one pointer to a shared ZnStringRef. Every mutation first
// makes the storage private. The null string shares one static empty ref and
// never allocates. Text is 8-bit and NUL-terminated; `unsigned short` text is
// converted at the interface, one unit to one byte.
//
// Some rules are unusual and deliberate: `<<` appends and `>>` prepends, for
// numbers too; `^` joins paths with exactly one backslash; the pointer
// conversions hand out copies that live until the next conversion of the
// same kind, never the buffer itself. Nothing here is thread-safe: values
// that share a ref, and even a single value being converted, belong to one
// thread at a time.
#ifndef ZNUTIL_TEXT_ZNSTRING_H
#define ZNUTIL_TEXT_ZNSTRING_H

#include <cstring>
#include <ctime>
#include <iosfwd>

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnNullString.h>
#include <znutil/text/ZnStringCursor.h>
#include <znutil/text/ZnStringRef.h>
#include <znutil/text/ZnStringScanner.h>
#include <znutil/text/ZnStringSize.h>

class ZnPointerStorageString;
class ZnStringList;
class ZnSystemTime;
class ZnTime;
class ZnVariant;
class ZnStringTokenizerCallBack;

class ZNUTIL_API ZnString {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  // Construction and assignment.

  /// The null string; allocates nothing.
  ZnString() : pzsrRef(NullRef()) {}
  ZnString(ZnNullString const &) : pzsrRef(NullRef()) {}
  /// Shares the other value's ref.
  ZnString(ZnString const &other) : pzsrRef(other.pzsrRef) { Share(); }
  /// Empty text with room for the size + 32 characters.
  ZnString(ZnStringSize const &size);
  /// A copy of the text; the null string for a null pointer. An empty text
  /// gets a ref of its own, which still compares equal to NULL_STRING.
  ZnString(char const *text);
  ZnString(unsigned short const *text);
  /// "%d".
  ZnString(int value);
  /// "%u".
  ZnString(unsigned int value);
  /// "%f".
  ZnString(float value);
  /// "%lf".
  ZnString(double value);
  /// Shares the ref of the variant's ToString.
  ZnString(ZnVariant const &value);
  ~ZnString() { Dereference(); }

  ZnString &operator=(ZnString const &other);
  ZnString &operator=(ZnNullString const &);
  ZnString &operator=(char const *text);
  ZnString &operator=(unsigned short const *text);
  /// "%i", where the constructor uses "%d": both kept as they are.
  ZnString &operator=(int value);
  ZnString &operator=(float value);
  ZnString &operator=(double value);

  // Numbers out of text.

  /// atoi.
  operator int() const;
  /// atol.
  operator long() const;
  /// sscanf "%u"; 0 when the text does not start with a number.
  operator unsigned int() const;
  /// sscanf "%f"; 0 when the text does not start with a number.
  operator float() const;
  /// sscanf "%lf"; 0 when the text does not start with a number.
  operator double() const;

  // Pointer conversions. Each returns a fresh copy of the text, valid until
  // the next conversion of the same kind on this value, until the value is
  // changed or destroyed. Writing through it never changes the string.

  operator char const *() const;
  operator char *();
  operator unsigned short const *() const;
  operator unsigned short *();
  /// Frees the copies kept for the pointer conversions.
  void Compact() const;
  /// The text itself, read-only and never null, valid until this value
  /// changes: for reading without the copy the conversions make.
  char const *Chars() const {
    char const *text = pzsrRef->GetInternal();
    return text != nullptr ? text : "";
  }

  // Appending (<<, +=) and prepending (>>). Each changes this string.

  ZnString &operator<<(ZnString const &text);
  ZnString &operator<<(char const *text);
  ZnString &operator<<(unsigned short const *text);
  ZnString &operator<<(char c);
  /// Keeps only the low 8 bits of `c`.
  ZnString &operator<<(unsigned short c);
  /// "%i".
  ZnString &operator<<(int value);
  /// "%f".
  ZnString &operator<<(float value);
  /// "%lf".
  ZnString &operator<<(double value);
  /// Puts the text in front: `s >> x` gives x followed by s.
  ZnString &operator>>(ZnString const &text);
  ZnString &operator>>(char const *text);
  ZnString &operator>>(unsigned short const *text);
  ZnString &operator>>(int value);
  ZnString &operator>>(float value);
  ZnString &operator>>(double value);
  template <typename T>
  ZnString &operator+=(T const &value) {
    return *this << value;
  }
  ZnString &operator+=(char const *text) { return *this << text; }
  ZnString &operator+=(unsigned short const *text) { return *this << text; }
  /// A new value: this text followed by `text`.
  ZnString operator+(ZnString const &text) const;
  /// Path join: exactly one backslash between the two texts, even when the
  /// left one is empty.
  ZnString operator^(ZnString const &text) const;

  // Comparison, as strcmp on unsigned bytes.

  /// -1, 0 or 1.
  int Compare(ZnString const &other) const {
    int const result = std::strcmp(Chars(), other.Chars());
    return (result > 0) - (result < 0);
  }
  /// As _stricmp: the difference of the first unequal lower-cased bytes.
  int CaseCompare(ZnString const &other) const;
  int operator==(ZnString const &other) const { return SameText(other); }
  int operator!=(ZnString const &other) const { return !SameText(other); }
  int operator<(ZnString const &other) const { return Compare(other) < 0; }
  int operator<=(ZnString const &other) const { return Compare(other) <= 0; }
  int operator>(ZnString const &other) const { return Compare(other) > 0; }
  int operator>=(ZnString const &other) const { return Compare(other) >= 0; }
  int operator==(char const *text) const { return pzsrRef->CompareToInternal(text) == 0; }
  int operator!=(char const *text) const { return pzsrRef->CompareToInternal(text) != 0; }
  int operator<(char const *text) const { return pzsrRef->CompareToInternal(text) < 0; }
  int operator<=(char const *text) const { return pzsrRef->CompareToInternal(text) <= 0; }
  int operator>(char const *text) const { return pzsrRef->CompareToInternal(text) > 0; }
  int operator>=(char const *text) const { return pzsrRef->CompareToInternal(text) >= 0; }
  int operator==(unsigned short const *text) const { return pzsrRef->CompareToInternal(text) == 0; }
  int operator!=(unsigned short const *text) const { return pzsrRef->CompareToInternal(text) != 0; }
  int operator<(unsigned short const *text) const { return pzsrRef->CompareToInternal(text) < 0; }
  int operator<=(unsigned short const *text) const { return pzsrRef->CompareToInternal(text) <= 0; }
  int operator>(unsigned short const *text) const { return pzsrRef->CompareToInternal(text) > 0; }
  int operator>=(unsigned short const *text) const { return pzsrRef->CompareToInternal(text) >= 0; }
  /// True for any empty text, the null string or not.
  int operator==(ZnNullString const &) const;
  int operator!=(ZnNullString const &) const;
  /// The library's key hash (lookup2, seed 0) of the text.
  ZnULong Hash() const;

  // Search: an index into the whole text, or -1. Unless said otherwise, -1
  // also for the null string and for a start outside the text.

  /// strchr from `start`.
  int HaveCharacter(int c, int start = 0) const;
  /// strrchr from `start`: the last occurrence at or after `start`.
  int ReverseHaveCharacter(int c, int start = 0) const;
  /// strpbrk from `start`.
  int HaveCharactersInSet(ZnString const &set, int start = 0) const;
  /// strstr from `start`; -1 for an empty `sub`.
  int ContainsSubString(ZnString const &sub, int start = 0) const;
  int CaseContainsSubString(ZnString const &sub, int start = 0) const;
  /// Searches backward from `start`. After a partial match fails the search
  /// goes on below the mismatch, so "ab" is not found in "abb": deliberate.
  int ReverseContainsSubString(ZnString const &sub, int start) const;
  int ReverseCaseContainsSubString(ZnString const &sub, int start) const;

  // Access and cutting.

  int Length() const { return pzsrRef->GetLength(); }
  int MaxLength() const { return pzsrRef->GetMaxLength(); }
  /// The character, or 0 outside the text.
  char GetCharacter(int i) const;
  char operator[](int i) const { return GetCharacter(i); }
  bool SetCharacter(int i, char c);
  /// The first `n` characters; the null string for n below 1.
  ZnString LeftString(int n) const;
  /// The last `n` characters; the null string for n below 1.
  ZnString RightString(int n) const;
  /// `n` characters from `start` (below 1 counts as 0); the null string
  /// when `start` is not in the text or n is below 1.
  ZnString MidString(int start, int n) const;
  void Truncate(int n);
  /// Replaces `count` characters at `start`; appends when `start` is at or
  /// beyond the end.
  void ReplaceString(ZnString const &s, int start, int count);
  /// Appends `n` copies of `c`; clears nothing.
  void Fill(char c, int n);
  static ZnString MakeFill(char c, int n);

  // Case and white space: in place, or on a copy.

  void ConvertToUpper();
  void ConvertToLower();
  void Capitalize();
  void ConvertToCString();
  void StripWhiteSpace();
  void NoLeadingWhiteSpace();
  void NoTrailingWhiteSpace();
  ZnString ToUpper() const;
  ZnString ToLower() const;
  ZnString ToCapitalize() const;
  ZnString ToCString() const;
  ZnString ToNoWhite() const;
  ZnString ToNoLeadingWhite() const;
  ZnString ToNoTrailingWhite() const;

  // Duplication and files.

  /// A new copy for `delete[]`, owned by the caller.
  char *DuplicateAscii() const { return pzsrRef->DuplicateAscii(); }
  unsigned short *DuplicateUnicode() const { return pzsrRef->DuplicateUnicode(); }
  bool ReadFromFile(ZnString const &path);
  bool WriteToFile(ZnString const &path) const { return pzsrRef->WriteToFile(path); }

  // Tabs, lines and tokens.

  /// Replaces each tab by the spaces up to the next stop.
  void ExpandTabs(int tabSize);
  /// Clears `list` and fills it with the lines of the text, without their
  /// line feeds and the carriage returns before them. The rest after the
  /// last line feed is always added, even when empty.
  void ConvertToLines(ZnStringList *list) const;
  /// Calls `callback` for each text between delimiters, empty ones included.
  void Tokenize(ZnString const &delimiters, ZnStringTokenizerCallBack &callback) const;

  // Paths and resources. Only the backslash separates parts in results.

  /// _splitpath into drive, directory, name and extension; null targets are skipped.
  void SplitPath(ZnString *drive, ZnString *dir, ZnString *name, ZnString *extension) const;
  /// _makepath of the pieces into this string.
  void MakePath(ZnString const &drive, ZnString const &dir, ZnString const &name, ZnString const &extension);
  /// The full path: joined to the current directory, with . and .. folded.
  void ConvertToPath();
  ZnString ToPath() const;
  /// String `id` of `instance`; false leaves this the null string.
  bool LoadStringA(void *instance, unsigned int id);
  /// Takes the value of the variable `name`: the environment first (set but
  /// empty counts as unset), then the entry `name` of the profile's section
  /// "PATHS". False, with this string unchanged, when neither has a value.
  bool GetVariable(ZnString const &name);

  // Formatting.

  /// printf into this string; returns the length. Any length of result is safe.
  int Format(char const *format, ...) __attribute__((format(printf, 2, 3)));
  /// strftime of the local time of `time`; returns the length, 0 when the
  /// result does not fit 511 characters (the text is then empty). The `#`
  /// flag of the Windows run time (no leading zeros, as in "%#d") works.
  int FormatTime(char const *format, ZnTime const &time);
  /// strftime of the calendar time `time` holds.
  int FormatTime(char const *format, ZnSystemTime const &time);
  /// Digits grouped in threes with "," (or as the locale groups them),
  /// right-aligned in `width`. Zero writes no digit at all, only width + 1
  /// spaces: deliberate.
  void FormatInt(long value, int width = 0);

  // Cursors: columns with tab stops.

  /// Columns of the first `limit` characters; a tab reaches the next stop.
  int CountCharacters(int limit, int tabSize) const;
  unsigned int CuBindToCursor(unsigned int pos, ZnStringCursor *cursor) const;
  unsigned int CuSetTabSize(unsigned int tab, ZnStringCursor *cursor) const;
  unsigned int CuBeginningOfString(ZnStringCursor *cursor) const;
  unsigned int CuEndOfString(ZnStringCursor *cursor) const;
  unsigned int CuMoveLeft(ZnStringCursor *cursor) const;
  unsigned int CuMoveRight(ZnStringCursor *cursor) const;
  /// A position inside a tab snaps back to the tab's first column.
  unsigned int CuSetCursorPos(unsigned int pos, ZnStringCursor *cursor) const;
  unsigned int CuSetCharPos(unsigned int pos, ZnStringCursor *cursor) const;
  unsigned int CuScanForward(ZnStringCursor *cursor, ZnStringScanner &scanner) const;
  unsigned int CuScanBackward(ZnStringCursor *cursor, ZnStringScanner &scanner) const;

 private:
  /// Takes `ref`, which has count 0.
  explicit ZnString(ZnStringRef *ref) : pzsrRef(NullRef()) { Take(ref); }
  static ZnStringRef *NullRef() { return &znsrNullInitializer; }
  bool IsNull() const { return pzsrRef == NullRef(); }
  /// Compare(other) == 0, without reading the texts where the refs tell:
  /// a shared ref holds one text, and NUL-free texts of unequal lengths differ.
  bool SameText(ZnString const &other) const {
    ZnStringRef const &mine = *pzsrRef, &theirs = *other.pzsrRef;
    if (&mine == &theirs) return true;
    if (!mine.bNulFree || !theirs.bNulFree) return Compare(other) == 0;
    return mine.iLength == theirs.iLength &&
           std::memcmp(Chars(), other.Chars(), static_cast<std::size_t>(mine.iLength)) == 0;
  }
  void Share() {
    // The null ref's count means nothing and is never written, so that the
    // shared static is never touched by two threads.
    if (!IsNull()) pzsrRef->IncrementCount();
  }
  void Dereference() {
    if (!IsNull() && pzsrRef->DecrementCount() == 0) Destroy();
  }
  void Destroy();
  void CopyOnWrite(int size);
  ZnPointerStorageString *CreatePointerStorage() const;
  void Take(ZnStringRef *ref);
  template <typename Text>
  ZnString &AssignText(Text const *text);
  template <typename Text>
  ZnString &AppendText(Text const &text, int hint);
  template <typename Text>
  ZnString &PrependText(Text const &text, int hint);
  ZnString Edited(void (ZnString::*edit)()) const;
  ZnString Substring(int start, int n) const;
  /// Makes this the `n` characters at `text`, reusing the buffer (of `room`
  /// characters) when no other value shares it.
  void SetToken(char const *text, int n, int &room);
  bool Searchable(int start) const;
  /// Private and empty, keeping the buffer.
  void Empty();
  int FormatCalendar(char const *format, std::tm const &calendar);
  void EditInPlace(void (ZnStringRef::*edit)());
  unsigned int SetCursorFromChar(ZnStringCursor *cursor) const;
  unsigned int CharCount() const { return static_cast<unsigned int>(Length()); }

  static ZnStringRef znsrNullInitializer;

  mutable ZnStringRef *pzsrRef;
};

/// Writes the text, character by character.
ZNUTIL_API std::ostream &operator<<(std::ostream &stream, ZnString const &text);
/// Reads one line of at most 512 characters, dropping one trailing carriage
/// return; a failed stream leaves the string alone.
ZNUTIL_API std::istream &operator>>(std::istream &stream, ZnString &text);

#endif  // ZNUTIL_TEXT_ZNSTRING_H
