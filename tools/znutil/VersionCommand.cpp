// znutil version: prints the version numbers and strings of a 32-bit
// Windows executable, and stamps new version numbers into it in place.
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include <znutil/platform/PeFormat.h>
#include <znutil/system/ZnExeResources.h>
#include <znutil/system/ZnVersionResource.h>

#include "Command.h"

namespace {

using namespace znutil_tool;

char const kUsage[] =
    "Usage: znutil version [--set-file-version A.B.C.D] [--set-product-version A.B.C.D]\n"
    "                      [--language ID] FILE\n"
    "Prints the file and product versions and the strings of the version resource\n"
    "of the 32-bit Windows executable FILE. The --set options first write new\n"
    "numbers into the fixed version information of FILE, in place; missing\n"
    "numbers are 0 (2.1 stands for 2.1.0.0). The string table is not changed.\n"
    "FILE is opened for reading and writing, even just to print.\n"
    "  --set-file-version A.B.C.D     stamp the file version\n"
    "  --set-product-version A.B.C.D  stamp the product version\n"
    "  --language ID                  language of the resource, such as 0x409 or 1033\n"
    "                                 (default: 0x409, then 0 for neutral)\n"
    "  --help                         print this help\n"
    "Exit status: 0 on success, 2 on bad usage or a file that cannot be read or\n"
    "has no version resource.\n";

// The standard keys of a version string table, printed when present.
char const *const kStandardKeys[] = {"Comments",     "CompanyName",    "FileDescription", "FileVersion",
                                     "InternalName", "LegalCopyright", "LegalTrademarks", "OriginalFilename",
                                     "PrivateBuild", "ProductName",    "ProductVersion",  "SpecialBuild"};

struct VersionOptions {
  bool help = false;
  std::string file;
  std::string fileVersion, productVersion;
  bool haveFile = false, haveFileVersion = false, haveProductVersion = false;
  long language = -1;
};

// Up to four numbers of 0 to 65535, separated by single dots.
bool IsVersion(std::string const &text) {
  int parts = 0;
  for (char const *at = text.c_str();; ++at) {
    char *end;
    if (!std::isdigit(static_cast<unsigned char>(*at)) || std::strtol(at, &end, 10) > 65535 || ++parts > 4)
      return false;
    at = end;
    if (*at == '\0') return true;
    if (*at != '.') return false;
  }
}

bool ParseLanguage(std::string const &text, long *language) {
  char *end = nullptr;
  *language = std::isdigit(static_cast<unsigned char>(text[0])) ? std::strtol(text.c_str(), &end, 0) : -1;
  return *language >= 0 && *language <= 0xFFFF && *end == '\0';
}

// Takes the value of the option `name` from "--name=value" or from the next
// argument; false when `arguments[*i]` is another option.
bool OptionValue(char const *name, Arguments const &arguments, std::size_t *i, std::string *value) {
  std::string const &argument = arguments[*i];
  std::size_t const length = std::strlen(name);
  if (argument.compare(0, length, name) != 0) return false;
  if (argument.size() > length && argument[length] != '=') return false;
  *value = argument.size() > length ? argument.substr(length + 1) : *i + 1 < arguments.size() ? arguments[++*i] : "";
  return true;
}

std::string BadValue(char const *what, std::string const &value, char const *expected) {
  return "bad " + std::string(what) + " '" + value + "' (expected " + expected + ")";
}

char const kVersionForm[] = "up to four numbers 0-65535, such as 1.2.3.4";

// False with `error` set on bad usage.
bool ParseOptions(Arguments const &arguments, VersionOptions *options, std::string *error) {
  std::string value;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string const &argument = arguments[i];
    if (argument == "--help") {
      options->help = true;
    } else if (OptionValue("--set-file-version", arguments, &i, &value)) {
      if (!IsVersion(value)) return *error = BadValue("file version", value, kVersionForm), false;
      options->fileVersion = value;
      options->haveFileVersion = true;
    } else if (OptionValue("--set-product-version", arguments, &i, &value)) {
      if (!IsVersion(value)) return *error = BadValue("product version", value, kVersionForm), false;
      options->productVersion = value;
      options->haveProductVersion = true;
    } else if (OptionValue("--language", arguments, &i, &value)) {
      if (!ParseLanguage(value, &options->language))
        return *error = BadValue("language", value, "a number 0-65535, such as 0x409"), false;
    } else if (argument.size() > 1 && argument[0] == '-') {
      return *error = "unknown option '" + argument + "' (try znutil version --help)", false;
    } else if (options->haveFile) {
      return *error = "more than one FILE given (try znutil version --help)", false;
    } else {
      options->file = argument;
      options->haveFile = true;
    }
  }
  if (!options->help && !options->haveFile) return *error = "missing FILE (try znutil version --help)", false;
  return true;
}

bool IsPe32(ZnExeResources &image) {
  auto const *signature = static_cast<unsigned char const *>(image.NTSignatureAddress());
  auto const *optional = static_cast<unsigned char const *>(image.OptHeaderAddress());
  // A signature in the view means that the DOS header is there as well.
  return signature != nullptr && optional != nullptr && std::memcmp(image.Address(), "MZ", 2) == 0 &&
         std::memcmp(signature, "PE\0\0", 4) == 0 && optional[0] == 0x0B && optional[1] == 0x01;
}

// UTF-8 from 16-bit units, pairs of surrogates included.
std::string ToUtf8(unsigned short const *units, ZnULong length) {
  std::string text;
  for (ZnULong i = 0; i < length && units[i] != 0; ++i) {
    unsigned long code = units[i];
    if (code >= 0xD800 && code < 0xDC00 && i + 1 < length && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000)
      code = 0x10000 + ((code - 0xD800) << 10) + (units[++i] - 0xDC00);
    if (code < 0x80) {
      text += static_cast<char>(code);
      continue;
    }
    int const extra = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    text += static_cast<char>(((0xFF00 >> (extra + 1)) & 0xFF) | (code >> (6 * extra)));
    for (int shift = 6 * (extra - 1); shift >= 0; shift -= 6)
      text += static_cast<char>(0x80 | ((code >> shift) & 0x3F));
  }
  return text;
}

void PrintVersion(ZnVersionResource &version) {
  std::printf("%-17s %s\n", "File version:", static_cast<char const *>(version.GetFileVersion()));
  std::printf("%-17s %s\n", "Product version:", static_cast<char const *>(version.GetProductVersion()));
  for (char const *key : kStandardKeys) {
    unsigned short wide[32];
    std::size_t const units = std::strlen(key);
    for (std::size_t i = 0; i <= units; ++i) wide[i] = static_cast<unsigned char>(key[i]);
    ZnULong length;
    unsigned short const *value = version.GetString(wide, &length);
    // A key with no value at all gives null with the length 0xFFFFFFFF.
    if (value == nullptr && length == 0) continue;
    std::string const label = std::string(key) + ":";
    std::printf("%-17s %s\n", label.c_str(), value != nullptr ? ToUtf8(value, length).c_str() : "");
  }
}

void *FindVersionBlock(ZnExeResources &image, long language) {
  if (language >= 0) return image.FindResourceA(RT_VERSION, 1, static_cast<int>(language));
  void *block = image.FindResourceA(RT_VERSION, 1, 0x409);
  return block != nullptr ? block : image.FindResourceA(RT_VERSION, 1, 0);
}

std::string WhyNotOpen(std::string const &file) {
  std::error_code error;
  std::filesystem::file_status const status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) return "no such file '" + file + "'";
  if (std::filesystem::is_directory(status)) return "'" + file + "' is a folder";
  if (std::filesystem::file_size(file, error) == 0) return "'" + file + "' is empty";
  return "cannot open '" + file + "' for reading and writing";
}

int Run(VersionOptions const &options) {
  std::string const &file = options.file;
  ZnExeResources image(file.c_str());
  if (!image.IsOpen()) return Complain("version", WhyNotOpen(file));
  if (!IsPe32(image)) return Complain("version", "'" + file + "' is not a 32-bit Windows executable");
  void *block = FindVersionBlock(image, options.language);
  ZnVersionResource version(static_cast<unsigned char *>(block));
  if (block == nullptr || version.GetFileVersion() == NULL_STRING)
    return Complain("version", "'" + file + "' has no version resource" +
                                   (options.language >= 0 ? " in language " + std::to_string(options.language) : ""));
  if (options.haveFileVersion) version.SetFileVersion(options.fileVersion.c_str());
  if (options.haveProductVersion) version.SetProductVersion(options.productVersion.c_str());
  PrintVersion(version);
  return 0;
}

}  // namespace

namespace znutil_tool {

int RunVersion(Arguments const &arguments) {
  VersionOptions options;
  std::string error;
  if (!ParseOptions(arguments, &options, &error)) return Complain("version", error);
  if (options.help) {
    std::fputs(kUsage, stdout);
    return 0;
  }
  return Run(options);
}

}  // namespace znutil_tool
