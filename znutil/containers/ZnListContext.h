// ZnListContext: the position handle with which every container of the
// library is walked.
//
//   ZnListContext position;
//   for (void *item = list.GetFirst(position); item != nullptr; item = list.GetNext(position)) { ... }
//
// The container writes its position into the context; it keeps no cursor of
// its own and never tracks the contexts that point into it. A context at a
// node stays valid exactly as long as that node exists. Besides the
// position (data), a context carries a key for the container's own use and
// a shared, counted ZnListContextData in which the ordered list and the hash
// table keep their walk state: copies of such a context move one walk.
#ifndef ZNUTIL_CONTAINERS_ZNLISTCONTEXT_H
#define ZNUTIL_CONTAINERS_ZNLISTCONTEXT_H

#include <znutil/containers/ZnListContextData.h>
#include <znutil/containers/ZnNullContext.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListContext {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// No position: all three fields null.
  ZnListContext() : pData(nullptr), pKey(nullptr), pOwnedData(nullptr) {}
  /// No position; lets NULL_CONTEXT stand wherever a context is taken.
  ZnListContext(ZnNullContext const &) : ZnListContext() {}
  /// A position at data, with no key and no owned data.
  explicit ZnListContext(void *data) : pData(data), pKey(nullptr), pOwnedData(nullptr) {}
  /// Copies data and key and shares the owned data.
  ZnListContext(ZnListContext const &other) : pData(other.pData), pKey(other.pKey), pOwnedData(other.pOwnedData) {
    if (pOwnedData != nullptr) pOwnedData->AddRef();
  }
  /// Copies data and key; shares the other's owned data and releases its own.
  ZnListContext &operator=(ZnListContext const &other) {
    pData = other.pData;
    pKey = other.pKey;
    SetOwnedData(other.pOwnedData);
    return *this;
  }
  /// Releases the owned data.
  ~ZnListContext() {
    if (pOwnedData != nullptr) pOwnedData->Release();
  }

  /// The container's position, or null for none.
  void *Data() const { return pData; }
  void SetData(void *data) { pData = data; }
  /// A value for the container's own use.
  void *Key() const { return pKey; }
  void SetKey(void *key) { pKey = key; }
  /// The shared walk state, or null.
  ZnListContextData *OwnedData() const { return pOwnedData; }
  /// Releases the old walk state and takes a reference to the new one. The
  /// caller still holds its own reference and gives it back itself.
  void SetOwnedData(ZnListContextData *data) {
    if (data != nullptr) data->AddRef();  // first, so that setting the same object again is safe
    if (pOwnedData != nullptr) pOwnedData->Release();
    pOwnedData = data;
  }

  /// Compare the position only: key and owned data do not count.
  bool operator==(void *data) const { return pData == data; }
  bool operator!=(void *data) const { return pData != data; }
  bool operator==(ZnListContext const &other) const { return pData == other.pData; }
  bool operator!=(ZnListContext const &other) const { return pData != other.pData; }
  bool operator==(ZnNullContext const &) const { return pData == nullptr; }
  bool operator!=(ZnNullContext const &) const { return pData != nullptr; }

 private:
  void *pData;
  void *pKey;
  ZnListContextData *pOwnedData;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTCONTEXT_H
