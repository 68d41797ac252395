#include <znutil/text/ZnStringList.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/text/ZnStrStack.h>
#include <znutil/text/ZnStringHeap.h>

namespace {

using Strings = std::vector<std::string>;

Strings Texts(ZnStringList const &list) {
  Strings texts;
  ZnListContext position;
  for (ZnString *text = list.First(position); text != nullptr; text = list.Next(position))
    texts.push_back(static_cast<char const *>(*text));
  return texts;
}

TEST(ZnStringListTest, AddStoresASharedValueAndSearchIsAlwaysExact) {
  ZnStringList list;
  ZnString original("value"), *stored = list.Add(original);
  *stored << "!";
  EXPECT_EQ(original, "value");
  list.Prepend(ZnString("first"));
  list.Append(ZnString("LAST"));
  list + ZnString("plus");
  EXPECT_EQ(Texts(list), (Strings{"first", "value!", "LAST", "plus"}));
  ZnListContext found = list.Search(ZnString("last"), false);
  EXPECT_EQ(list.Current(found), nullptr) << "the flag has no effect";
  found = list.Search(ZnString("LAST"), true);
  ASSERT_NE(list.Current(found), nullptr);
  EXPECT_EQ(*list.Current(found), "LAST");
}

TEST(ZnStringListTest, DeleteByValueUnlinksTheOtherFormsDestroy) {
  ZnStringList list;
  ZnString *kept = list.Add(ZnString("keep me"));
  for (char const *text : {"a", "b", "c", "d"}) list.Add(ZnString(text));
  list.Delete(ZnString("keep me"));
  list.Delete(ZnString("missing"));
  EXPECT_EQ(list.GetCount(), 4);
  EXPECT_EQ(*kept, "keep me") << "the object stays allocated";
  delete kept;  // the caller owns it now
  EXPECT_EQ(list.DeleteFirst(), nullptr);
  EXPECT_EQ(list.DeleteLast(), nullptr);
  ZnListContext position;
  list.First(position);
  EXPECT_EQ(list.Delete(position), nullptr);
  EXPECT_EQ(Texts(list), (Strings{"c"}));
  list.Clear();
  EXPECT_EQ(list.DeleteFirst(), nullptr);
}

TEST(ZnStringListTest, SortExactAndIgnoringCase) {
  ZnStringList list, empty;
  for (char const *text : {"c", "B", "a"}) list.Add(ZnString(text));
  list.Sort(false);
  EXPECT_EQ(Texts(list), (Strings{"a", "B", "c"}));
  list.Sort(true);
  empty.Sort(true);
  EXPECT_EQ(Texts(list), (Strings{"B", "a", "c"}));
  EXPECT_EQ(empty.GetCount(), 0);
}

TEST(ZnStringListTest, TokenizingAndConvertToLinesFillTheList) {
  ZnStringList list;
  ZnString("a,,b,").Tokenize(ZnString(","), list);
  EXPECT_EQ(Texts(list), (Strings{"a", "", "b", ""}));
  ZnString("a\r\r\nb\n").ConvertToLines(&list);
  EXPECT_EQ(Texts(list), (Strings{"a", "b", ""})) << "line ends dropped, old items gone";
  ZnString("single").ConvertToLines(&list);
  EXPECT_EQ(Texts(list), (Strings{"single"}));
  ZnString("\r\n\n").ConvertToLines(&list);
  EXPECT_EQ(Texts(list), (Strings{"", "", ""}));
}

TEST(ZnStringHeapTest, StringsHaveStableAddressesUntilReleased) {
  ZnStringHeap heap;
  ZnString *first = heap.AllocString(), *second = heap.AllocString();
  EXPECT_TRUE(*first == NULL_STRING);
  *first = "one";
  *second = "two";
  ZnString foreign("foreign");
  heap.ReleaseString(&foreign);
  EXPECT_EQ(heap.GetCount(), 2) << "a foreign pointer is ignored";
  heap.ReleaseString(first);
  EXPECT_EQ(heap.GetCount(), 1);
  EXPECT_EQ(*second, "two");
  heap.ReleaseAll();
  EXPECT_EQ(heap.GetCount(), 0);
}

TEST(ZnStrStackTest, TopIsTheTail) {
  ZnStrStack stack;
  stack.Push(ZnString("a"));
  stack.Push(ZnString("b"));
  EXPECT_EQ(stack.Count(), 2);
  EXPECT_EQ((std::vector<ZnString>{stack.Pop(), stack.Pop(), stack.Pop()}),
            (std::vector<ZnString>{ZnString("b"), ZnString("a"), NULL_STRING}));
  stack.Push(ZnString("left for the destructor"));
  auto *onHeap = new ZnStrStack;
  onHeap->Push(ZnString("x"));
  onHeap->Clear();
  EXPECT_EQ(onHeap->Count(), 0);
  delete onHeap;
}

TEST(ZnStringListTest, HashIsTheLibraryKeyHash) {
  EXPECT_EQ(ZnString("abc").Hash(), 0x251e4793u);
  EXPECT_EQ(ZnString().Hash(), 0xbd49d10du);
  EXPECT_EQ(ZnString("Four score and seven years ago").Hash(), 0x50f2424bu);
}

}  // namespace
