// Holds a critical section for the life of a scope.
#ifndef ZNUTIL_CONCURRENCY_INTERNAL_ENTERED_H
#define ZNUTIL_CONCURRENCY_INTERNAL_ENTERED_H

#include <znutil/concurrency/ZnCriticalSection.h>

namespace znutil {
namespace detail {

class Entered {
 public:
  explicit Entered(ZnCriticalSection &section) : section_(section) { section_.Enter(); }
  ~Entered() { section_.Leave(); }
  Entered(Entered const &) = delete;
  Entered &operator=(Entered const &) = delete;

 private:
  ZnCriticalSection &section_;
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONCURRENCY_INTERNAL_ENTERED_H
