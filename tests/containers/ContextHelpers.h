// Helpers for tests of the containers: a whole walk, the reference count of
// a context's owned data, and item callbacks over int items.
#ifndef ZNUTIL_TESTS_CONTAINERS_CONTEXTHELPERS_H
#define ZNUTIL_TESTS_CONTAINERS_CONTEXTHELPERS_H

#include <znutil/containers/ZnListContext.h>

#include <znutil/containers/ZnListItemCopy.h>
#include <znutil/containers/ZnListItemDestroy.h>
#include <znutil/containers/ZnListItemFilter.h>
#include <znutil/containers/ZnListItemIterate.h>
#include <znutil/containers/ZnListItemMatches.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

// The items from the first one forward, or from the last one backward.
template <typename Container>
std::vector<void *> Walk(Container const &container, bool forward = true) {
  std::vector<void *> seen;
  ZnListContext at;
  for (void *item = forward ? container.GetFirst(at) : container.GetLast(at); item != nullptr;
       item = forward ? container.GetNext(at) : container.GetPrev(at)) {
    seen.push_back(item);
  }
  return seen;
}

// The count of data, read through AddRef and Release alone.
inline int CountOf(ZnListContextData *data) {
  data->AddRef();
  return data->Release() - 1;
}

// Every item callback in one, for items that point at ints: matches by value,
// picks odd values, copies all but the value 2, and records what it destroys
// or iterates (the data of Iterate must be the callbacks themselves).
class ItemCallbacks : public ZnListItemMatches,
                      public ZnListItemFilter,
                      public ZnListItemCopy,
                      public ZnListItemDestroy,
                      public ZnListItemIterate {
 public:
  bool MatchItem(void *key, void *item) override { return *static_cast<int *>(key) == *static_cast<int *>(item); }
  bool FilterItem(void *item) override { return *static_cast<int *>(item) % 2 == 1; }
  void *CopyItem(void *item) override { return *static_cast<int *>(item) == 2 ? nullptr : item; }
  void DestroyItem(void *item) override { seen.push_back(item); }
  bool IterateItem(void *item, void *data, int index) override {
    EXPECT_EQ(data, this);
    EXPECT_EQ(index, static_cast<int>(seen.size()));
    seen.push_back(item);
    return seen.size() < stopAfter;
  }
  std::vector<void *> seen;
  std::size_t stopAfter = SIZE_MAX;
};

#endif  // ZNUTIL_TESTS_CONTAINERS_CONTEXTHELPERS_H
