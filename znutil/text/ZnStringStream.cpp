// The standard stream operators of ZnString.
#include <znutil/text/ZnString.h>

#include <istream>
#include <ostream>

std::ostream &operator<<(std::ostream &stream, ZnString const &text) {
  for (int i = 0; i < text.Length(); ++i) stream << text[i];
  return stream;
}

std::istream &operator>>(std::istream &stream, ZnString &text) {
  if (stream.fail()) return stream;
  char line[512];
  stream.getline(line, sizeof line);
  std::streamsize length = std::char_traits<char>::length(line);
  if (length > 0 && line[length - 1] == '\r') line[--length] = '\0';
  text = line;
  return stream;
}
