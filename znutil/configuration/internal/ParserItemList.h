// The tracking list of one parse (plParserItems), reached through a
// thread-local pointer so that parses on several threads never touch each
// other's items.
#ifndef ZNUTIL_CONFIGURATION_INTERNAL_PARSERITEMLIST_H
#define ZNUTIL_CONFIGURATION_INTERNAL_PARSERITEMLIST_H

#include <vector>

class ZnCfgFileParserItem;

namespace znutil {
namespace detail {

class ParserItemList {
 public:
  ParserItemList() = default;
  ParserItemList(ParserItemList const &) = delete;
  ParserItemList &operator=(ParserItemList const &) = delete;
  ~ParserItemList() { DestroyAll(); }

  void Append(ZnCfgFileParserItem *item) { vItems.push_back(item); }
  /// Takes `item` off the list; false if it is not there. Searches from the
  /// newest item, which is nearly always the one taken.
  bool Remove(ZnCfgFileParserItem *item);
  /// Destroys every listed item.
  void DestroyAll();

  /// The list of the parse running on this thread, or null.
  static ParserItemList *Current();

 private:
  friend class ParserItemScope;
  std::vector<ZnCfgFileParserItem *> vItems;
};

/// Makes a list the current one of this thread for its lifetime; the one
/// current before comes back afterwards.
class ParserItemScope {
 public:
  explicit ParserItemScope(ParserItemList &list);
  ParserItemScope(ParserItemScope const &) = delete;
  ParserItemScope &operator=(ParserItemScope const &) = delete;
  ~ParserItemScope();

 private:
  ParserItemList *plPrevious;
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONFIGURATION_INTERNAL_PARSERITEMLIST_H
