#include <znutil/text/ZnString.h>

#include <cctype>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Positions = std::vector<unsigned int>;

struct Letters : ZnStringScanner {
  bool Accept(char c) override { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
};

TEST(ZnStringCursorTest, CountCharactersExpandsTabs) {
  ZnString text("a\tb");
  EXPECT_EQ(text.CountCharacters(3, 8), 9);
  EXPECT_EQ(text.CountCharacters(2, 8), 8);
  EXPECT_EQ(text.CountCharacters(100, 4), 5);
  EXPECT_EQ(ZnString("ab\ncd").CountCharacters(10, 8), 5) << "newlines are ordinary";
}

// Each list holds the results of the calls in order (a braced list is
// evaluated left to right).
TEST(ZnStringCursorTest, PositionInsideATabSnapsToItsStart) {
  ZnString text("\tab");
  ZnStringCursor cursor;
  // Beyond the end the character position stays at the length.
  EXPECT_EQ((Positions{cursor.TabSize(), text.CuBindToCursor(5, &cursor), cursor.CharPos(),
                       text.CuSetCursorPos(8, &cursor), cursor.CharPos(), text.CuSetCursorPos(40, &cursor),
                       cursor.CharPos()}),
            (Positions{8, 0, 0, 8, 1, 40, 3}));
  text << "cd";  // the cursor keeps the width it was bound with, 10
  EXPECT_EQ(text.CuSetCursorPos(10, &cursor), 10u);
  EXPECT_EQ(cursor.CharPos(), 5u) << "from the bound width on, the character position is the length";
  cursor.Reset();
  EXPECT_EQ((Positions{cursor.CharPos(), cursor.CursorPos(), cursor.ExpandedSize(), cursor.TabSize()}),
            (Positions{0, 0, 0, 8}));
}

TEST(ZnStringCursorTest, MovingWalksBeyondTheEnd) {
  ZnString text("a\tb");
  ZnStringCursor cursor(4);
  text.CuBindToCursor(0, &cursor);
  // Over the tab, then beyond the end, where only the column moves.
  EXPECT_EQ((Positions{text.CuMoveRight(&cursor), text.CuMoveRight(&cursor), text.CuEndOfString(&cursor),
                       text.CuMoveRight(&cursor), cursor.CharPos(), cursor.OutsideString(),
                       text.CuMoveLeft(&cursor), text.CuMoveLeft(&cursor), cursor.CharPos(),
                       text.CuBeginningOfString(&cursor), text.CuMoveLeft(&cursor)}),
            (Positions{1, 4, 5, 6, 3, 1, 5, 4, 2, 0, 0}));
}

TEST(ZnStringCursorTest, TabSizeAndCharacterPosition) {
  ZnString text("\t\tx");
  ZnStringCursor cursor(8);
  text.CuBindToCursor(0, &cursor);
  EXPECT_EQ((Positions{text.CuSetCharPos(2, &cursor), text.CuSetTabSize(2, &cursor), cursor.ExpandedSize(),
                       text.CuSetCharPos(99, &cursor), cursor.CharPos()}),
            (Positions{16, 4, 5, 5, 3}));
}

TEST(ZnStringCursorTest, ScansStopAtTheRejectedCharacter) {
  ZnString text("abc def");
  ZnStringCursor cursor;
  text.CuBindToCursor(0, &cursor);
  Letters letters;
  // The space stays current; nothing is scanned at the end.
  EXPECT_EQ((Positions{text.CuScanForward(&cursor, letters), cursor.CharPos(), text.CuSetCharPos(6, &cursor),
                       text.CuScanBackward(&cursor, letters), text.CuEndOfString(&cursor),
                       text.CuScanForward(&cursor, letters)}),
            (Positions{3, 3, 6, 4, 7, 7}));
}

}  // namespace
