// ZnStringCursor: a position in a text counted both in characters and in
// columns, where a tab reaches the next tab stop.
//
//   ZnStringCursor cursor(4);
//   text.CuBindToCursor(0, &cursor);
//   text.CuMoveRight(&cursor);
//
// The cursor may stand beyond the end of the text; its character position
// then stays at the length.
#ifndef ZNUTIL_TEXT_ZNSTRINGCURSOR_H
#define ZNUTIL_TEXT_ZNSTRINGCURSOR_H

#include <cstdint>

#include <znutil/platform/Export.h>

class ZnString;

class ZNUTIL_API ZnStringCursor {
 public:
  /// A cursor at the start, with tab stops every `tabSize` columns.
  ZnStringCursor(int tabSize = 8)
      : udwCursorPos(0), udwCharPos(0), udwTabSize(static_cast<std::uint32_t>(tabSize)), udwExpandedSize(0) {}

  /// Column, counting tab expansion.
  unsigned int CursorPos() const { return udwCursorPos; }
  /// Index into the text.
  unsigned int CharPos() const { return udwCharPos; }
  /// Columns between tab stops.
  unsigned int TabSize() const { return udwTabSize; }
  /// Width of the bound text in columns.
  unsigned int ExpandedSize() const { return udwExpandedSize; }

  /// Back to the start; keeps the tab size.
  void Reset() { udwCursorPos = udwCharPos = udwExpandedSize = 0; }
  /// True when the cursor is at or beyond the end of the text.
  bool OutsideString() const { return udwCursorPos >= udwExpandedSize; }

 private:
  friend class ZnString;

  std::uint32_t udwCursorPos;
  std::uint32_t udwCharPos;
  std::uint32_t udwTabSize;
  std::uint32_t udwExpandedSize;
};

#endif  // ZNUTIL_TEXT_ZNSTRINGCURSOR_H
