// Helpers for the configuration tests: parsing a text through a scratch
// file, and reading the messages the parser queued.
#ifndef ZNUTIL_TESTS_CONFIGURATION_CFGTESTSUPPORT_H
#define ZNUTIL_TESTS_CONFIGURATION_CFGTESTSUPPORT_H

#include <memory>
#include <string>
#include <vector>

#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnCfgSectionList.h>

#include "../system/ScratchDirectory.h"

// Reads the parser's queue of messages, which fills while the logger is
// not up (it is never started in this program).
class ZnCfgFileParserTestAccess {
 public:
  struct Message {
    int level;
    std::string source, category, text;
  };
  static std::vector<Message> TakeMessages() {
    std::vector<Message> messages;
    ZnString source, category, text;
    for (int level; (level = ZnCfgFileParser::TakeQueuedMessage(&source, &category, &text)) >= 0;)
      messages.push_back({level, source.Chars(), category.Chars(), text.Chars()});
    return messages;
  }
};

namespace cfgtest {

using Message = ZnCfgFileParserTestAccess::Message;

// The texts of the messages queued since the last call.
inline std::vector<std::string> TakeTexts() {
  std::vector<std::string> texts;
  for (Message const &message : ZnCfgFileParserTestAccess::TakeMessages()) texts.push_back(message.text);
  return texts;
}

// A parse of one text, with what it reported.
struct Parsed {
  std::unique_ptr<ZnCfgSectionList> sections;
  std::vector<std::string> messages;
  std::string path;  // in the library's form

  // The tree as the writer writes it, or "null".
  std::string Written() const { return sections ? sections->FormatFile().Chars() : "null"; }
};

class ParseFixture {
 public:
  Parsed Parse(std::string const &text) {
    std::string const path = znutil_test::WriteFile(folder / "test.cfg", text);
    return ParseFile(znutil_test::Backslashed(path));
  }
  Parsed ParseFile(std::string const &path) {
    TakeTexts();
    ZnCfgFileParser parser(path.c_str());
    Parsed parsed;
    parsed.sections.reset(parser.Parse());
    parsed.messages = TakeTexts();
    parsed.path = path;
    return parsed;
  }

  znutil_test::ScratchDirectory folder;
};

}  // namespace cfgtest

#endif  // ZNUTIL_TESTS_CONFIGURATION_CFGTESTSUPPORT_H
