// ZnLogger::ZnLogMessage and ZnLogger::LoggerFilter: the record of one
// message, its text forms, and one filter.
#include <znutil/logging/ZnLogger.h>

#include <string>

namespace {

char const kTimeFormat[] = "%#m/%#d/%y %#I:%M:%S %p";

int const kTypeBits = 0xFFFF;

// A copy that shares nothing with `text`, so that it may cross threads.
ZnString Detached(ZnString const &text) { return ZnString(text.Chars()); }

std::string TimeText(ZnSystemTime const &time) {
  ZnString text;
  text.FormatTime(kTimeFormat, time);
  return text.Chars();
}

}  // namespace

ZnLogger::ZnLogMessage::ZnLogMessage(int typeAndFlags, ZnString const &source, ZnString const &category)
    : iType(typeAndFlags & kTypeBits),
      stTime(0),
      fsSource(Detached(source)),
      fsCategory(Detached(category)),
      iFlags(static_cast<int>(static_cast<unsigned>(typeAndFlags) & ~static_cast<unsigned>(kTypeBits))),
      iListItem(-1) {
  if (iType == kInformation) iFlags |= kQuiet;
  stTime.GetLocalTime();
}

ZnLogger::ZnLogMessage::~ZnLogMessage() {}

void ZnLogger::ZnLogMessage::AddLine(ZnString const &line) { slMessage.Append(Detached(line)); }

ZnString ZnLogger::ZnLogMessage::FileText() const {
  std::string text = TimeText(stTime);
  ZnString const type = TypeToString(iType);
  for (ZnString const *field : {&type, &fsSource, &fsCategory}) {
    text += "  ";
    text += field->Chars();
  }
  text += '\n';
  ZnListContext position;
  for (ZnString *line = slMessage.First(position); line != nullptr; line = slMessage.Next(position)) {
    text += '\t';
    text += line->Chars();
    text += '\n';
  }
  text += '\n';
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
