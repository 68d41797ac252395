// Events over one pthread mutex and one condition variable each.
//
// Waiters re-check the state after every wake-up. A pulse cannot be seen
// in the state it leaves (unsignalled), so it counts itself in `pulses`;
// a waiter that saw the count change while it slept was waiting at the
// moment of the pulse. For auto-reset events a pulse also leaves one
// release in `pulseReleases`, which exactly one of those waiters takes,
// whether it waits for this event alone or for all of several: a wait for
// all that finds the others unsignalled gives the release back.
//
// A wait for all events locks their mutexes in address order, checks them
// together, and otherwise sleeps on the first one that is not signalled,
// holding no other lock; a change there makes it check all of them again.
#include <znutil/platform/Event.h>

#include <algorithm>
#include <functional>
#include <new>
#include <pthread.h>

#include <znutil/platform/WinTypes.h>
#include <znutil/platform/linux/PosixSync.h>

namespace znutil {
namespace platform {
namespace {

struct EventState {
  pthread_mutex_t mutex;
  pthread_cond_t changed;
  std::uint64_t pulses;         // pulses that found a thread waiting
  std::uint32_t singleWaiters;  // threads asleep in Wait
  std::uint32_t allWaiters;     // threads asleep here in WaitForAll
  std::uint32_t asleepAtPulse;  // threads of both kinds asleep at the last pulse and still so
  std::uint32_t pulseReleases;  // auto-reset: releases owed to those, one per pulse at most
  bool manualReset;
  bool signalled;
};

static_assert(sizeof(EventState) <= 128, "Event storage is too small");
static_assert(alignof(EventState) <= 8, "Event storage is misaligned");

EventState &State(unsigned char *storage) { return *std::launder(reinterpret_cast<EventState *>(storage)); }

// Takes the signal if there is one: an auto-reset event gives it up.
bool TakeSignal(EventState &state) {
  if (!state.signalled) return false;
  if (!state.manualReset) state.signalled = false;
  return true;
}

// Counts a thread asleep on the event, in Wait or in WaitForAll, for as
// long as it sleeps. Being a destructor, the count also comes down when a
// cancelled thread unwinds.
class Sleeper {
 public:
  Sleeper(EventState &state, std::uint32_t EventState::*kind) : state_(state), kind_(kind), seen_(state.pulses) {
    ++(state_.*kind_);
  }
  ~Sleeper() {
    --(state_.*kind_);
    if (!Pulsed()) return;
    --state_.asleepAtPulse;
    // A release owed to a waiter that has left by its timeout lapses.
    state_.pulseReleases = std::min(state_.pulseReleases, state_.asleepAtPulse);
  }
  Sleeper(Sleeper const &) = delete;
  Sleeper &operator=(Sleeper const &) = delete;

  // Whether a pulse since this thread fell asleep releases it; for auto
  // reset it takes one of the releases owed, if one is left.
  bool TakePulse() {
    if (!Pulsed()) return false;
    if (state_.manualReset) return true;
    if (state_.pulseReleases == 0) return false;
    --state_.pulseReleases;
    return true;
  }

 private:
  bool Pulsed() const { return state_.pulses != seen_; }

  EventState &state_;
  std::uint32_t EventState::*kind_;
  std::uint64_t const seen_;
};

bool SleepForOne(EventState &state, Deadline const &deadline) {
  Sleeper counted(state, &EventState::singleWaiters);
  bool released = false;
  bool inTime = true;
  while (!released && inTime) {
    inTime = deadline.Sleep(state.changed, state.mutex);
    released = TakeSignal(state) || counted.TakePulse();
  }
  return released;
}

// Sleeps for a wait-for-all on the event that holds it up, until that event
// is signalled or pulsed or the deadline passes. True if a pulse ended it:
// the event then counts as signalled for one more check of all of them,
// and of an auto-reset event this thread holds the pulse's release.
bool SleepForAll(EventState &state, Deadline const &deadline, bool *inTime) {
  Sleeper counted(state, &EventState::allWaiters);
  for (;;) {
    if (state.signalled) return false;
    if (counted.TakePulse()) return true;
    if (!*inTime) return false;
    *inTime = deadline.Sleep(state.changed, state.mutex);
  }
}

// Gives back the release of an auto-reset pulse that a wait-for-all held
// but could not use, if a thread asleep at the pulse is left to take it.
bool ReturnPulse(EventState &state) {
  if (state.manualReset || state.pulseReleases >= state.asleepAtPulse) return false;
  ++state.pulseReleases;
  return true;
}

// The events of a wait-for-all in lock order; false if the set is not one
// that Windows would accept.
bool SortDistinct(Event *const *events, std::size_t count, Event **sorted) {
  if (count == 0 || count > Event::kMaximumWaitObjects) return false;
  std::copy(events, events + count, sorted);
  std::sort(sorted, sorted + count, std::less<Event *>());
  return sorted[0] != nullptr && std::adjacent_find(sorted, sorted + count) == sorted + count;
}

}  // namespace

Event::Event(bool manualReset) {
  EventState &state = *new (storage_) EventState();
  pthread_mutex_init(&state.mutex, nullptr);
  InitMonotonicCondition(&state.changed);
  state.manualReset = manualReset;
}

Event::~Event() {
  EventState &state = State(storage_);
  pthread_cond_destroy(&state.changed);
  pthread_mutex_destroy(&state.mutex);
}

// Sleepers are woken after the lock is released, so that they do not wake
// only to wait for it; every sleeper re-checks, since one asleep for a
// wait-for-all cannot take the signal of an auto-reset event on behalf of
// a thread asleep in Wait.
void Event::Set() {
  SeamSection const section;  // a suspension waits until the sleepers are woken too
  EventState &state = State(storage_);
  bool sleepers;
  {
    Locked locked(state.mutex);
    state.signalled = true;
    sleepers = state.singleWaiters + state.allWaiters > 0;
  }
  if (sleepers) pthread_cond_broadcast(&state.changed);
}

void Event::Reset() {
  EventState &state = State(storage_);
  Locked locked(state.mutex);
  state.signalled = false;
}

void Event::Pulse() {
  SeamSection const section;  // as in Set
  EventState &state = State(storage_);
  bool sleepers;
  {
    Locked locked(state.mutex);
    std::uint32_t const asleep = state.singleWaiters + state.allWaiters;
    sleepers = asleep > 0;
    if (sleepers) {
      if (!state.manualReset && asleep > state.pulseReleases) ++state.pulseReleases;
      state.asleepAtPulse = asleep;
      ++state.pulses;
    }
    state.signalled = false;
  }
  if (sleepers) pthread_cond_broadcast(&state.changed);
}

WaitResult Event::Wait(std::uint32_t milliseconds) {
  EventState &state = State(storage_);
  Deadline const deadline(milliseconds);
  Locked locked(state.mutex);
  bool const released = TakeSignal(state) || (milliseconds != 0 && SleepForOne(state, deadline));
  return released ? WaitResult::kSignalled : WaitResult::kTimeout;
}

WaitResult Event::WaitForAll(Event *const *events, std::size_t count, std::uint32_t milliseconds) {
  Event *sorted[kMaximumWaitObjects];
  if (!SortDistinct(events, count, sorted)) return WaitResult::kFailed;
  SeamSection const section;  // over the locks taken by hand below
  EventState *states[kMaximumWaitObjects];
  std::transform(sorted, sorted + count, states, [](Event *event) { return &State(event->storage_); });
  auto lockAll = [&] { for (std::size_t i = 0; i < count; ++i) pthread_mutex_lock(&states[i]->mutex); };
  auto unlockAllBut = [&](EventState *kept) {
    for (std::size_t i = count; i-- > 0;) {
      if (states[i] != kept) pthread_mutex_unlock(&states[i]->mutex);
    }
  };
  Deadline const deadline(milliseconds);
  bool inTime = milliseconds != 0;
  EventState *pulsed = nullptr;
  for (;;) {
    lockAll();
    EventState *const *blocker = std::find_if(
        states, states + count, [&](EventState *state) { return !state->signalled && state != pulsed; });
    if (blocker == states + count) {
      for (std::size_t i = 0; i < count; ++i) TakeSignal(*states[i]);
      unlockAllBut(nullptr);
      return WaitResult::kSignalled;
    }
    EventState &holdUp = **blocker;
    EventState *const returned = pulsed != nullptr && ReturnPulse(*pulsed) ? pulsed : nullptr;
    unlockAllBut(&holdUp);
    if (returned != nullptr) pthread_cond_broadcast(&returned->changed);
    Locked locked(holdUp.mutex, Locked::kAlreadyHeld);
    if (!inTime) return WaitResult::kTimeout;
    pulsed = SleepForAll(holdUp, deadline, &inTime) ? &holdUp : nullptr;
  }
}

}  // namespace platform
}  // namespace znutil
