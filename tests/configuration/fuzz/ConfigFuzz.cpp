// libFuzzer target for the configuration parser: any bytes as a file,
// parsed; a tree that comes out is written and read again, and from then on
// the written form must be stable.
//
// The carried-over start condition (a file that ends inside a string) would
// make runs depend on the input before; a short file that ends any string
// is parsed after each input to start the next one afresh.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <unistd.h>

#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnCfgSectionList.h>

// Empties the parser's queue of messages, which fills while no logger runs.
class ZnCfgFileParserTestAccess {
 public:
  static void DropMessages() {
    ZnString source, category, text;
    while (ZnCfgFileParser::TakeQueuedMessage(&source, &category, &text) >= 0) {
    }
  }
};

namespace {

std::string const &ScratchFile() {
  static std::string const path = [] {
    char const *folder = std::getenv("TMPDIR");
    std::string pattern = std::string(folder != nullptr ? folder : "/tmp") + "/config-fuzz-XXXXXX";
    int const file = mkstemp(pattern.data());
    if (file < 0) std::abort();
    close(file);
    return pattern;
  }();
  return path;
}

std::unique_ptr<ZnCfgSectionList> ParseBytes(char const *data, std::size_t size) {
  FILE *file = std::fopen(ScratchFile().c_str(), "wb");
  if (file == nullptr) std::abort();
  std::fwrite(data, 1, size, file);
  std::fclose(file);
  std::unique_ptr<ZnCfgSectionList> sections(ZnCfgFileParser(ScratchFile().c_str()).Parse());
  ZnCfgFileParserTestAccess::DropMessages();
  return sections;
}

std::string Written(ZnCfgSectionList const &sections) { return sections.FormatFile().Chars(); }

// Names that the writer puts out as they stand and the reader takes back:
// printable, and neither a double quote nor a backslash.
bool WritableName(ZnString const &name) {
  for (int i = 0; i < name.Length(); ++i) {
    unsigned char const c = static_cast<unsigned char>(name[i]);
    if (c < 0x20 || c > 0x7e || c == '"' || c == '\\') return false;
  }
  return true;
}

bool WritableNames(ZnCfgSectionList const &sections) {
  ZnListContext position;
  for (void *item = sections.GetFirst(position); item != nullptr; item = sections.GetNext(position)) {
    auto const *section = static_cast<ZnCfgSection const *>(item);
    if (!WritableName(section->Name())) return false;
    ZnListContext inner;
    ZnCfgEntryList const *entries = section->Entries();
    for (void *entry = entries->GetFirst(inner); entry != nullptr; entry = entries->GetNext(inner)) {
      if (!WritableName(static_cast<ZnCfgEntry const *>(entry)->Name())) return false;
    }
  }
  return true;
}

void CheckRoundTrip(ZnCfgSectionList const &sections) {
  std::string const first = Written(sections);
  std::unique_ptr<ZnCfgSectionList> const again = ParseBytes(first.data(), first.size());
  if (!WritableNames(sections)) return;
  // Unprintable text bytes come back as zero bytes; after one round trip
  // nothing changes any more.
  if (again == nullptr) std::abort();
  std::string const second = Written(*again);
  std::unique_ptr<ZnCfgSectionList> const third = ParseBytes(second.data(), second.size());
  if (third == nullptr || Written(*third) != second) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
  std::unique_ptr<ZnCfgSectionList> const sections = ParseBytes(reinterpret_cast<char const *>(data), size);
  ParseBytes("q\n", 2);
  if (sections != nullptr) CheckRoundTrip(*sections);
  return 0;
}
