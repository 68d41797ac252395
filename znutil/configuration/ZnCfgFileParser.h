// ZnCfgFileParser: reads one configuration file into a ZnCfgSectionList.
//
//   ZnCfgFileParser parser("C:\\app\\app.cfg");
//   ZnCfgSectionList *sections = parser.Parse();   // the caller owns it
//   if (sections == nullptr) ...                    // unreadable, or a syntax error
//
// Everything that goes wrong is reported to the logger with source
// "CfgFile" and category "Reader"; the result tells only whether the file
// was read. A file that cannot be opened or has a syntax error gives null:
// nothing of it is kept. Unknown characters, duplicate sections and entries
// (the first definition stands) and byte lists of the wrong length are
// reported and the parse goes on. Messages found while the logger is not up
// wait in a queue, oldest first, and come out ahead of any later message
// once it is (PurgeErrorMessages delivers them).
//
// Parses may run on any number of threads at once. A file that ends inside
// a string makes the next parse in the process start inside a string:
// deliberate.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGFILEPARSER_H
#define ZNUTIL_CONFIGURATION_ZNCFGFILEPARSER_H

#include <climits>
#include <cstddef>
#include <cstring>

#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/configuration/ZnCfgTokenInfo.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnCfgFileParser {
 public:
  /// Stores the name; nothing is opened yet.
  explicit ZnCfgFileParser(ZnString const &fileName);
  ZnCfgFileParser(ZnCfgFileParser const &other) = default;
  ZnCfgFileParser &operator=(ZnCfgFileParser const &other) = default;
  virtual ~ZnCfgFileParser();

  /// Reads the file: a new list that the caller owns, or null.
  ZnCfgSectionList *Parse();

  // The scanner's and the grammar's calls back into the parse.

  /// Stores the result; called when the whole file has been read.
  void SetInput(ZnCfgSectionList *sections) { plSections = sections; }
  /// Reads up to `size` bytes of the open file; the count read.
  int YYInput(char *buffer, int size);
  /// Called for each character of a comment; does nothing.
  void LexGotCharacter() {}
  /// The current line goes up by one (to INT_MAX at most).
  void LexGotNewLine() {
    if (iLine < INT_MAX) ++iLine;
  }
  /// Called for every match whose text is read (the matches of tokens and
  /// of reports): notes the line and copies the `length` bytes of text and
  /// a terminator into the parse's text pool.
  void LexMatchedText(char const *text, int length, ZnCfgTokenInfo *info) {
    info->iLine = iLine;
    info->pszText = pTextPool != nullptr ? pTextPool->Copy(text, static_cast<std::size_t>(length)) : "";
  }
  /// Reports an unknown character; the parse goes on.
  void LexJammed(char const *token);
  /// Reports a syntax error, which ends the parse.
  void SyntaxError();
  /// Reports an error; the parse goes on.
  void ErrorMessage(ZnString const &message) const;
  /// Reports a warning; the parse goes on.
  void WarningMessage(ZnString const &message) const;

  /// The current line, from 1.
  int Line() const { return iLine; }

  /// Delivers the queued messages if the logger is up, and forgets them.
  static void PurgeErrorMessages();

 private:
  friend class ZnCfgFileParserTestAccess;

  /// The text pool of a parse: one block for the copies of all matched
  /// texts. Every match takes at least one input byte and its copy that
  /// many bytes and a terminator, so a block of twice the input and one
  /// byte never fills up; a copy that would not fit is refused all the same.
  struct TextPool {
    char *pcStart;
    char *pcNext;
    std::size_t szSize;

    char const *Copy(char const *text, std::size_t length) {
      if (length >= szSize - static_cast<std::size_t>(pcNext - pcStart)) return "";
      char *copy = pcNext;
      std::memcpy(copy, text, length);
      copy[length] = '\0';
      pcNext += length + 1;
      return copy;
    }
  };
  struct QueuedErrorMessage;
  struct ErrorQueue;

  /// Takes the oldest queued message out: its level, or -1 when the queue
  /// is empty.
  static int TakeQueuedMessage(ZnString *source, ZnString *category, ZnString *text);

  /// Logs the message if the logger is up, after every queued one; queues
  /// it otherwise.
  static void EmitErrorMessage(int level, ZnString const &source, ZnString const &category, ZnString const &text);
  void Report(int level, ZnString const &text) const;

  ZnString fsFileName;
  int iLine;
  void *pInputFile;
  TextPool *pTextPool;
  ZnCfgSectionList *plSections;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGFILEPARSER_H
