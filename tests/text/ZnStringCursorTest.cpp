#include <znutil/text/ZnString.h>

#include <cctype>

#include <gtest/gtest.h>

namespace {

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

TEST(ZnStringCursorTest, PositionInsideATabSnapsToItsStart) {
  ZnString text("\tab");
  ZnStringCursor cursor;
  EXPECT_EQ(cursor.TabSize(), 8u);
  EXPECT_EQ(text.CuBindToCursor(5, &cursor), 0u);
  EXPECT_EQ(cursor.CharPos(), 0u);
  EXPECT_EQ(text.CuSetCursorPos(8, &cursor), 8u);
  EXPECT_EQ(cursor.CharPos(), 1u);
  EXPECT_EQ(text.CuSetCursorPos(40, &cursor), 40u);
  EXPECT_EQ(cursor.CharPos(), 3u) << "beyond the end the character position stays at the length";
  text << "cd";  // the cursor keeps the width it was bound with, 10
  EXPECT_EQ(text.CuSetCursorPos(10, &cursor), 10u);
  EXPECT_EQ(cursor.CharPos(), 5u) << "from the bound width on, the character position is the length";
  cursor.Reset();
  EXPECT_EQ(cursor.CharPos(), 0u);
  EXPECT_EQ(cursor.CursorPos(), 0u);
  EXPECT_EQ(cursor.ExpandedSize(), 0u);
  EXPECT_EQ(cursor.TabSize(), 8u);
}

TEST(ZnStringCursorTest, MovingWalksBeyondTheEnd) {
  ZnString text("a\tb");
  ZnStringCursor cursor(4);
  text.CuBindToCursor(0, &cursor);
  EXPECT_EQ(text.CuMoveRight(&cursor), 1u);
  EXPECT_EQ(text.CuMoveRight(&cursor), 4u) << "over the tab";
  EXPECT_EQ(text.CuEndOfString(&cursor), 5u);
  EXPECT_EQ(text.CuMoveRight(&cursor), 6u);
  EXPECT_EQ(cursor.CharPos(), 3u);
  EXPECT_TRUE(cursor.OutsideString());
  EXPECT_EQ(text.CuMoveLeft(&cursor), 5u) << "beyond the end only the column moves";
  EXPECT_EQ(text.CuMoveLeft(&cursor), 4u);
  EXPECT_EQ(cursor.CharPos(), 2u);
  EXPECT_EQ(text.CuBeginningOfString(&cursor), 0u);
  EXPECT_EQ(text.CuMoveLeft(&cursor), 0u);
}

TEST(ZnStringCursorTest, TabSizeAndCharacterPosition) {
  ZnString text("\t\tx");
  ZnStringCursor cursor(8);
  text.CuBindToCursor(0, &cursor);
  EXPECT_EQ(text.CuSetCharPos(2, &cursor), 16u);
  EXPECT_EQ(text.CuSetTabSize(2, &cursor), 4u);
  EXPECT_EQ(cursor.ExpandedSize(), 5u);
  EXPECT_EQ(text.CuSetCharPos(99, &cursor), 5u);
  EXPECT_EQ(cursor.CharPos(), 3u);
}

TEST(ZnStringCursorTest, ScansStopAtTheRejectedCharacter) {
  ZnString text("abc def");
  ZnStringCursor cursor;
  text.CuBindToCursor(0, &cursor);
  Letters letters;
  EXPECT_EQ(text.CuScanForward(&cursor, letters), 3u);
  EXPECT_EQ(cursor.CharPos(), 3u) << "the space stays current";
  text.CuSetCharPos(6, &cursor);
  EXPECT_EQ(text.CuScanBackward(&cursor, letters), 4u);
  text.CuEndOfString(&cursor);
  EXPECT_EQ(text.CuScanForward(&cursor, letters), 7u) << "nothing to scan at the end";
}

}  // namespace
