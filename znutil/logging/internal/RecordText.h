// The text of a log record, appended to a buffer, and the word of a type.
#ifndef ZNUTIL_LOGGING_INTERNAL_RECORDTEXT_H
#define ZNUTIL_LOGGING_INTERNAL_RECORDTEXT_H

#include <string>

#include <znutil/logging/ZnLogger.h>

namespace znutil {
namespace detail {

/// The time format of a record.
extern char const kRecordTimeFormat[];

/// "Information", "Warning", "Error", or "Unknown".
char const *TypeWord(int type);

/// Appends the record: `stamp` (the time in kRecordTimeFormat), the type's
/// word, source and category two blanks apart, then each line after a tab,
/// then an empty line; LF line ends.
void AppendRecordText(std::string &out, char const *stamp, ZnLogger::ZnLogMessage const &message);

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_LOGGING_INTERNAL_RECORDTEXT_H
