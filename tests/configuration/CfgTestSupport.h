// Reads the configuration parser's queue of messages, which fills while the
// logger is not up (the configuration tests never start it).
#ifndef ZNUTIL_TESTS_CONFIGURATION_CFGTESTSUPPORT_H
#define ZNUTIL_TESTS_CONFIGURATION_CFGTESTSUPPORT_H

#include <string>
#include <vector>

#include <znutil/configuration/ZnCfgFileParser.h>

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

#endif  // ZNUTIL_TESTS_CONFIGURATION_CFGTESTSUPPORT_H
