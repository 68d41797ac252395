#include <znutil/configuration/ZnCfgFileParser.h>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdint>
#include <memory>
#include <vector>

#include <znutil/concurrency/ZnLock.h>
#include <znutil/configuration/internal/CfgGrammar.h>
#include <znutil/configuration/internal/CfgScanner.h>
#include <znutil/configuration/internal/ParserItemList.h>
#include <znutil/containers/ZnTDblList.h>
#include <znutil/logging/ZnLogger.h>
#include <znutil/platform/File.h>

using znutil::detail::CfgCondition;
using znutil::detail::CfgGrammar;
using znutil::detail::CfgScanner;
using znutil::detail::ParserItemList;
using znutil::detail::ParserItemScope;

struct ZnCfgFileParser::QueuedErrorMessage {
  int iLevel;
  ZnString fsSource;
  ZnString fsCategory;
  ZnString fsText;
};

namespace {

constexpr int kWarning = 1;
constexpr int kError = 2;

// Where the scanner stood at the end of the last parse in the process: a
// file that ends inside a string makes the next parse start inside one.
std::atomic<int> aiCarriedCondition{znutil::detail::kCfgNormal};

bool LoggerIsUp() { return ZnLogger::IsInitialized(); }

// The whole file, read through the parser in text mode: a carriage return
// right before a line feed is dropped.
std::vector<char> ReadText(ZnCfgFileParser &parser, std::size_t expected) {
  std::vector<char> text(expected + 1);
  std::size_t used = 0;
  for (;;) {
    // One byte more than expected tells the end; a file that grew goes on.
    if (used == text.size()) text.resize(text.size() * 2);
    int const room = static_cast<int>(std::min<std::size_t>(text.size() - used, INT_MAX));
    int const got = parser.YYInput(text.data() + used, room);
    if (got <= 0) break;
    used += static_cast<std::size_t>(got);
  }
  text.resize(used);
  // Most files have no carriage return at all.
  auto const first = std::find(text.begin(), text.end(), '\r');
  auto kept = first;
  for (auto c = first; c != text.end(); ++c) {
    if (*c != '\r' || c + 1 == text.end() || c[1] != '\n') *kept++ = *c;
  }
  text.erase(kept, text.end());
  return text;
}

}  // namespace

// The queue of messages that wait for the logger. It is never destroyed, so
// that a thread may still purge it while the process ends.
struct ZnCfgFileParser::ErrorQueue {
  ZnLock listLock;
  ZnTDblList<QueuedErrorMessage> listErrorMessages{true};

  static ErrorQueue &Get() {
    static ErrorQueue *queue = new ErrorQueue;
    return *queue;
  }
  /// Logs every queued message while the logger stays up, and forgets them
  /// all. The caller holds the lock.
  void Deliver() {
    ZnListContext position;
    for (QueuedErrorMessage *message = listErrorMessages.First(position); message != nullptr;
         message = listErrorMessages.Next(position)) {
      if (LoggerIsUp()) ZnLogger::Log(message->iLevel, message->fsSource, message->fsCategory, message->fsText);
    }
    while (listErrorMessages.First(position) != nullptr) listErrorMessages.DeleteFirst();
  }
};

ZnCfgFileParser::ZnCfgFileParser(ZnString const &fileName)
    : fsFileName(fileName), iLine(0), pInputFile(nullptr), pTextPool(nullptr), plSections(nullptr) {}

ZnCfgFileParser::~ZnCfgFileParser() = default;

ZnCfgSectionList *ZnCfgFileParser::Parse() {
  plSections = nullptr;
  pInputFile = znutil::platform::CreateFileA(fsFileName.Chars(), GENERIC_READ, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN);
  if (pInputFile == INVALID_HANDLE_VALUE) {
    pInputFile = nullptr;
    Report(kError, ZnString("Cannot open configuration file\n") << "The file name is " << fsFileName);
    return nullptr;
  }
  // The pool is sized from what was read, so a file that grows meanwhile
  // cannot overflow it.
  std::uint64_t size = 0;
  znutil::platform::GetFileSize(pInputFile, &size);
  std::vector<char> text = ReadText(*this, static_cast<std::size_t>(std::min<std::uint64_t>(size, 1u << 30)));
  znutil::platform::CloseHandle(pInputFile);
  pInputFile = nullptr;
  std::size_t const poolSize = 2 * text.size() + 1;
  std::unique_ptr<char[]> const poolBlock(new char[poolSize]);
  TextPool pool{poolBlock.get(), poolBlock.get(), poolSize};
  pTextPool = &pool;
  {
    ParserItemList items;
    ParserItemScope scope(items);
    iLine = 1;
    CfgScanner scanner(text.data(), text.size(), static_cast<CfgCondition>(aiCarriedCondition.load()), *this);
    CfgGrammar grammar(scanner, *this);
    grammar.Run();
    aiCarriedCondition.store(scanner.Condition());
    if (plSections != nullptr) static_cast<ZnCfgFileParserItem *>(plSections)->Release();
    // Whatever the tree did not take dies here: the partial tree of a failed
    // parse, and streams and items left by a syntax error.
    items.DestroyAll();
  }
  pTextPool = nullptr;
  return plSections;
}

int ZnCfgFileParser::YYInput(char *buffer, int size) {
  DWORD done = 0;
  if (pInputFile == nullptr || size <= 0) return 0;
  if (!znutil::platform::ReadFile(pInputFile, buffer, static_cast<DWORD>(size), &done)) return 0;
  return static_cast<int>(done);
}

void ZnCfgFileParser::LexJammed(char const *token) {
  ZnString text("Configuration File parser is jammed.\n");
  text << "Error in file " << fsFileName << " on line " << iLine << "\nThe token that was read is '" << token << "'";
  Report(kError, text);
}

void ZnCfgFileParser::SyntaxError() {
  ZnString text("Configuration File Syntax error.\n");
  text << "Error in file " << fsFileName << " on line " << iLine;
  Report(kError, text);
}

void ZnCfgFileParser::ErrorMessage(ZnString const &message) const {
  ZnString text("Error in configuration file.\n");
  text << "Error in file " << fsFileName << "\n" << message;
  Report(kError, text);
}

void ZnCfgFileParser::WarningMessage(ZnString const &message) const {
  ZnString text("Warning in configuration file.\n");
  text << "Warning for file " << fsFileName << "\n" << message;
  Report(kWarning, text);
}

void ZnCfgFileParser::Report(int level, ZnString const &text) const {
  EmitErrorMessage(level, "CfgFile", "Reader", text);
}

void ZnCfgFileParser::EmitErrorMessage(int level, ZnString const &source, ZnString const &category,
                                       ZnString const &text) {
  // Deciding under the lock keeps the order even when the logger comes up
  // meanwhile: no message can overtake one that is being queued.
  ErrorQueue &queue = ErrorQueue::Get();
  queue.listLock.Lock(-1);
  if (LoggerIsUp()) {
    queue.Deliver();
    ZnLogger::Log(level, source, category, text);
  } else {
    queue.listErrorMessages.Append(new QueuedErrorMessage{level, source, category, text});
  }
  queue.listLock.Unlock();
}

int ZnCfgFileParser::TakeQueuedMessage(ZnString *source, ZnString *category, ZnString *text) {
  ErrorQueue &queue = ErrorQueue::Get();
  queue.listLock.Lock(-1);
  ZnListContext position;
  QueuedErrorMessage *message = queue.listErrorMessages.First(position);
  int const level = message != nullptr ? message->iLevel : -1;
  if (message != nullptr) {
    *source = message->fsSource;
    *category = message->fsCategory;
    *text = message->fsText;
    queue.listErrorMessages.DeleteFirst();
  }
  queue.listLock.Unlock();
  return level;
}

void ZnCfgFileParser::PurgeErrorMessages() {
  if (!LoggerIsUp()) return;
  ErrorQueue &queue = ErrorQueue::Get();
  queue.listLock.Lock(-1);
  queue.Deliver();
  queue.listLock.Unlock();
}
