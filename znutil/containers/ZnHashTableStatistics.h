// ZnHashTableStatistics: what ZnHashTable::Statistics reports of a table's
// shape.
//
//   ZnHashTableStatistics stats;
//   table.Statistics(&stats, 1 | 2);   // 1: item count, 2: histogram
//
// piHistogram[s] counts the buckets' filled cells at slot s, and its last
// entry, piHistogram[iSlotsPerBucket], the items in overflow chains.
#ifndef ZNUTIL_CONTAINERS_ZNHASHTABLESTATISTICS_H
#define ZNUTIL_CONTAINERS_ZNHASHTABLESTATISTICS_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnHashTableStatistics {
 public:
  ZnHashTableStatistics() : iBucketCount(0), iSlotsPerBucket(0), piHistogram(nullptr), iItemCount(0) {}
  ZnHashTableStatistics(ZnHashTableStatistics const &) = delete;
  ZnHashTableStatistics &operator=(ZnHashTableStatistics const &) = delete;
  /// Deletes the histogram.
  virtual ~ZnHashTableStatistics();

  int iBucketCount;
  int iSlotsPerBucket;
  /// iSlotsPerBucket + 1 entries, or null when not asked for.
  int *piHistogram;
  int iItemCount;
};

#endif  // ZNUTIL_CONTAINERS_ZNHASHTABLESTATISTICS_H
