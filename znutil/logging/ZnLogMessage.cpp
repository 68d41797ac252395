// ZnLogger::ZnLogMessage and ZnLogger::LoggerFilter: the record of one
// message, its text forms, and one filter.
#include <znutil/logging/ZnLogger.h>

#include <cstdint>
#include <ctime>
#include <string>

#include <znutil/logging/internal/RecordText.h>
#include <znutil/platform/Clock.h>

namespace {

int const kTypeBits = 0xFFFF;

// A copy that shares nothing with `text`, so that it may cross threads.
ZnString Detached(ZnString const &text) { return ZnString(text.Chars()); }

// The local time now. The calling thread keeps the broken-down time of the
// last second it saw, since one thread logs many messages a second.
void StampLocalTime(ZnSystemTime &time) {
  thread_local std::int64_t lastSecond = -1;
  thread_local std::tm lastCalendar{};
  std::int64_t seconds = 0;
  std::uint16_t milliseconds = 0;
  znutil::platform::CurrentTime(&seconds, &milliseconds);
  if (seconds != lastSecond) {
    if (std::tm const *calendar = znutil::platform::SharedLocalTime(seconds)) lastCalendar = *calendar;
    lastSecond = seconds;
  }
  time = lastCalendar;
  time.wMilliseconds = milliseconds;
}

std::string TimeText(ZnSystemTime const &time) {
  ZnString text;
  text.FormatTime(znutil::detail::kRecordTimeFormat, time);
  return text.Chars();
}

}  // namespace

namespace znutil {
namespace detail {

char const kRecordTimeFormat[] = "%#m/%#d/%y %#I:%M:%S %p";

char const *TypeWord(int type) {
  static char const *const words[] = {"Information", "Warning", "Error"};
  return type >= 0 && type <= ZnLogger::kError ? words[type] : "Unknown";
}

void AppendRecordText(std::string &out, char const *stamp, ZnLogger::ZnLogMessage const &message) {
  for (char const *field : {stamp, "  ", TypeWord(message.iType), "  ", message.fsSource.Chars(), "  ",
                            message.fsCategory.Chars(), "\n"}) {
    out += field;
  }
  ZnListContext position;
  for (ZnString *line = message.slMessage.First(position); line != nullptr; line = message.slMessage.Next(position)) {
    out += '\t';
    out += line->Chars();
    out += '\n';
  }
  out += '\n';
}

}  // namespace detail
}  // namespace znutil

ZnLogger::ZnLogMessage::ZnLogMessage(int typeAndFlags, ZnString const &source, ZnString const &category)
    : iType(typeAndFlags & kTypeBits),
      stTime(0),
      fsSource(Detached(source)),
      fsCategory(Detached(category)),
      iFlags(static_cast<int>(static_cast<unsigned>(typeAndFlags) & ~static_cast<unsigned>(kTypeBits))),
      iListItem(-1) {
  if (iType == kInformation) iFlags |= kQuiet;
  StampLocalTime(stTime);
}

ZnLogger::ZnLogMessage::~ZnLogMessage() {}

void ZnLogger::ZnLogMessage::AddLine(ZnString const &line) { slMessage.Append(Detached(line)); }

ZnString ZnLogger::ZnLogMessage::FileText() const {
  std::string text;
  znutil::detail::AppendRecordText(text, TimeText(stTime).c_str(), *this);
  return ZnString(text.c_str());
}

ZnString ZnLogger::ZnLogMessage::ConsoleText() const {
  std::string text = TimeText(stTime) + "\n\tSource:   " + fsSource.Chars() + "\n\tCategory: " + fsCategory.Chars() + "\n";
  ZnListContext position;
  for (ZnString *line = slMessage.First(position); line != nullptr; line = slMessage.Next(position)) {
    text += "\t\t";
    text += line->Chars();
    text += '\n';
  }
  return ZnString(text.c_str());
}

ZnLogger::LoggerFilter::LoggerFilter(int type, bool enabled, ZnString const &text)
    : iFilterType(type), bEnabled(enabled), fsText(text) {}

ZnLogger::LoggerFilter::LoggerFilter(LoggerFilter const &other)
    : iFilterType(other.iFilterType), bEnabled(other.bEnabled), fsText(other.fsText) {}

ZnLogger::LoggerFilter &ZnLogger::LoggerFilter::operator=(LoggerFilter const &other) {
  iFilterType = other.iFilterType;
  bEnabled = other.bEnabled;
  fsText = other.fsText;
  return *this;
}

ZnLogger::LoggerFilter::~LoggerFilter() {}
