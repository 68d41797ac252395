// Formatting members of ZnString.
#include <znutil/text/ZnString.h>

#include <clocale>
#include <ctime>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <znutil/system/ZnSystemTime.h>
#include <znutil/system/ZnTime.h>

int ZnString::Format(char const *format, ...) {
  // Formats into a local buffer, and a larger one when that is too small,
  // so that no length of result overflows anything.
  char local[512];
  std::va_list arguments;
  va_start(arguments, format);
  std::va_list again;
  va_copy(again, arguments);
  int const length = std::vsnprintf(local, sizeof local, format, arguments);
  va_end(arguments);
  std::unique_ptr<char[]> large;
  char const *text = local;
  if (length >= static_cast<int>(sizeof local)) {
    large.reset(new char[static_cast<std::size_t>(length) + 1]);
    std::vsnprintf(large.get(), static_cast<std::size_t>(length) + 1, format, again);
    text = large.get();
  }
  va_end(again);
  if (length >= 0) {
    CopyOnWrite(length);
    pzsrRef->MakeCopy(text);
  }
  return length;
}

namespace {

// The Windows "#" flag (no leading zeros) is glibc's "-" flag.
std::string GlibcTimeFormat(char const *format) {
  std::string result(format != nullptr ? format : "");
  for (std::size_t i = 0; i + 1 < result.size(); ++i) {
    if (result[i] != '%') continue;
    if (result[i + 1] == '#') result[i + 1] = '-';
    ++i;  // "%%" and the conversion letter are not flags
  }
  return result;
}

}  // namespace

int ZnString::FormatCalendar(char const *format, std::tm const &calendar) {
  char text[512];
  std::size_t const length = std::strftime(text, sizeof text, GlibcTimeFormat(format).c_str(), &calendar);
  text[length] = '\0';
  CopyOnWrite(static_cast<int>(length));
  pzsrRef->MakeCopy(text);
  return static_cast<int>(length);
}

int ZnString::FormatTime(char const *format, ZnTime const &time) { return FormatCalendar(format, *time.LocalTime()); }

int ZnString::FormatTime(char const *format, ZnSystemTime const &time) {
  std::tm calendar{};
  time.Convert(&calendar);
  return FormatCalendar(format, calendar);
}

namespace {

// The first call switches the whole process to the "usa" locale, once.
// Linux knows no locale of that name; the "C" locale takes its place, so
// that numbers read and print with the US decimal point whatever the host
// had set before.
void SwitchProcessLocale() {
  static bool const localeSet = std::setlocale(LC_ALL, "usa") != nullptr || std::setlocale(LC_ALL, "C") != nullptr;
  (void)localeSet;
}

// The grouping of the "usa" locale, built in: the "C" locale has none, and
// a locale that the host sets later must not change it.
int const kGroupSize = 3;
char const kGroupSeparator[] = ",";

}  // namespace

void ZnString::FormatInt(long value, int width) {
  SwitchProcessLocale();
  unsigned long long divisor = 1;
  for (int i = 0; i < kGroupSize; ++i) divisor *= 10;
  unsigned long long rest = value < 0 ? 0ull - static_cast<unsigned long long>(value) : static_cast<unsigned long long>(value);
  std::vector<std::string> groups;  // lowest first
  int digits = 0;
  while (rest > 0) {
    char slot[32];
    unsigned long long const group = rest % divisor;
    if (rest < divisor)
      std::snprintf(slot, sizeof slot, "%d", static_cast<int>(group));
    else
      std::snprintf(slot, sizeof slot, "%0*d", kGroupSize, static_cast<int>(group));
    groups.push_back(slot);
    digits += static_cast<int>(groups.back().size());
    rest /= divisor;
  }
  Empty();
  // Zero has no group, so the size goes below zero and one space more than
  // the width is written: deliberate.
  int const separators = static_cast<int>(groups.size()) - 1;
  int const size = digits + separators * static_cast<int>(std::strlen(kGroupSeparator)) + (value < 0);
  for (int i = 0; i < width - size; ++i) pzsrRef->Append(' ');
  if (value < 0) pzsrRef->Append('-');
  for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
    if (group != groups.rbegin()) pzsrRef->Append(kGroupSeparator);
    pzsrRef->Append(group->c_str());
  }
}
