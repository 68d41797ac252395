#include <znutil/system/ZnTime.h>

#include <cstdint>

#include <znutil/platform/Clock.h>

namespace {

// Both fields keep 32 bits and wrap like the original's.
ZnLong Wrap(std::int64_t value) { return static_cast<ZnLong>(static_cast<ZnULong>(value)); }

}  // namespace

ZnTime::ZnTime() { Update(); }

ZnTime::ZnTime(long milliseconds) { *this = milliseconds; }

ZnTime::ZnTime(long seconds, long milliseconds)
    : lSeconds(Wrap(seconds)), lMilliseconds(Wrap(milliseconds % 1000)) {}

ZnTime &ZnTime::operator=(long milliseconds) {
  lSeconds = Wrap(milliseconds / 1000);
  lMilliseconds = Wrap(milliseconds % 1000);
  return *this;
}

void ZnTime::Update() {
  std::int64_t seconds = 0;
  std::uint16_t milliseconds = 0;
  znutil::platform::CurrentTime(&seconds, &milliseconds);
  lSeconds = Wrap(seconds);
  lMilliseconds = milliseconds;
}

int ZnTime::operator==(ZnTime const &other) const {
  return lSeconds == other.lSeconds && lMilliseconds == other.lMilliseconds;
}

int ZnTime::operator<(ZnTime const &other) const {
  return lSeconds < other.lSeconds || (lSeconds == other.lSeconds && lMilliseconds < other.lMilliseconds);
}

ZnTime ZnTime::operator+(ZnTime const &other) const {
  ZnTime sum(*this);
  return sum += other;
}

ZnTime &ZnTime::operator+=(ZnTime const &other) {
  std::int64_t const milliseconds = std::int64_t{lMilliseconds} + other.lMilliseconds;
  lSeconds = Wrap(std::int64_t{lSeconds} + other.lSeconds + milliseconds / 1000);
  lMilliseconds = Wrap(milliseconds % 1000);
  return *this;
}

ZnTime ZnTime::operator-(ZnTime const &other) const {
  ZnTime difference(*this);
  return difference -= other;
}

ZnTime &ZnTime::operator-=(ZnTime const &other) {
  std::int64_t milliseconds = std::int64_t{lMilliseconds} - other.lMilliseconds;
  std::int64_t seconds = lSeconds;
  if (milliseconds < 0) {
    milliseconds += 1000;
    --seconds;
  }
  seconds -= other.lSeconds;
  lSeconds = Wrap(seconds < 0 ? -seconds : seconds);
  lMilliseconds = Wrap(milliseconds);
  return *this;
}

std::tm *ZnTime::LocalTime() const { return znutil::platform::SharedLocalTime(lSeconds); }

std::tm *ZnTime::GreenwichMeanTime() const { return znutil::platform::SharedUtcTime(lSeconds); }
