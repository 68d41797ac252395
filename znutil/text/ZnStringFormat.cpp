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

// The group size and separator of the locale; 3 and "," where it has none.
void Grouping(int *size, std::string *separator) {
  // The first call asks for the "usa" locale, once for the whole process.
  // Linux knows no locale of that name, so the locale stays as it was.
  static bool const localeSet = (std::setlocale(LC_ALL, "usa"), true);
  (void)localeSet;
  std::lconv const *conventions = std::localeconv();
  *size = static_cast<unsigned char>(conventions->grouping[0]);
  *separator = conventions->thousands_sep;
  if (*size == 0 || *size > 9) {
    *size = 3;
    *separator = ",";
  }
}

}  // namespace

void ZnString::FormatInt(long value, int width) {
  int groupSize = 0;
  std::string separator;
  Grouping(&groupSize, &separator);
  unsigned long long divisor = 1;
  for (int i = 0; i < groupSize; ++i) divisor *= 10;
  unsigned long long rest = value < 0 ? 0ull - static_cast<unsigned long long>(value) : static_cast<unsigned long long>(value);
  std::vector<std::string> groups;  // lowest first
  int digits = 0;
  while (rest > 0) {
    char slot[32];
    unsigned long long const group = rest % divisor;
    if (rest < divisor)
      std::snprintf(slot, sizeof slot, "%d", static_cast<int>(group));
    else
      std::snprintf(slot, sizeof slot, "%0*d", groupSize, static_cast<int>(group));
    groups.push_back(slot);
    digits += static_cast<int>(groups.back().size());
    rest /= divisor;
  }
  Empty();
  // Zero has no group, so the size goes below zero and one space more than
  // the width is written: deliberate.
  int const size = digits + (static_cast<int>(groups.size()) - 1) * static_cast<int>(separator.size()) + (value < 0);
  for (int i = 0; i < width - size; ++i) pzsrRef->Append(' ');
  if (value < 0) pzsrRef->Append('-');
  for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
    if (group != groups.rbegin()) pzsrRef->Append(separator.c_str());
    pzsrRef->Append(group->c_str());
  }
}
