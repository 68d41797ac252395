// What the logger keeps outside itself: its flags from one run to the next,
// and the folder of its log file. One function each, so that the settings
// can stand behind them without the logger knowing how they are kept.
#ifndef ZNUTIL_LOGGING_INTERNAL_LOGGERSETTINGS_H
#define ZNUTIL_LOGGING_INTERNAL_LOGGERSETTINGS_H

#include <znutil/text/ZnString.h>

namespace znutil {
namespace detail {

/// The flags saved by an earlier run; only their high 16 bits are used.
int LoadSavedLoggerFlags();
/// Keeps the logger's flags (high 16 bits) for the next run.
void SaveLoggerFlags(int flags);
/// The folder tried first for the log file: LOGDIR when set, else
/// `startupFolder`; empty for none.
ZnString LoggerDirectory(ZnString const &startupFolder);

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_LOGGING_INTERNAL_LOGGERSETTINGS_H
