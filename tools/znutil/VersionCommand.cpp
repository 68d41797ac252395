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

#include "Commands.h"

namespace {

char const kUsage[] =
    "usage: znutil version [--set-file-version A.B.C.D] [--set-product-version A.B.C.D]\n"
    "                      [--language ID] FILE\n\n"
    "Prints the file and product versions and the strings of the version resource\n"
    "of the 32-bit Windows executable FILE. The --set options first write new\n"
    "numbers into the fixed version information of FILE, in place; missing\n"
    "numbers are 0 (2.1 stands for 2.1.0.0). The string table is not changed.\n"
    "FILE is opened for reading and writing, even just to print.\n\n"
    "options:\n"
    "  --set-file-version A.B.C.D     stamp the file version\n"
    "  --set-product-version A.B.C.D  stamp the product version\n"
    "  --language ID                  language of the resource, such as 0x409 or 1033\n"
    "                                 (default: 0x409, then 0 for neutral)\n"
    "  -h, --help                     show this help\n";

// The standard keys of a version string table, printed when present.
char const *const kStandardKeys[] = {"Comments",     "CompanyName",    "FileDescription", "FileVersion",
                                     "InternalName", "LegalCopyright", "LegalTrademarks", "OriginalFilename",
                                     "PrivateBuild", "ProductName",    "ProductVersion",  "SpecialBuild"};

struct Options {
  char const *file = nullptr;
  char const *fileVersion = nullptr;
  char const *productVersion = nullptr;
  long language = -1;
};

int Fail(int status, std::string const &message) {
  std::fprintf(stderr, "znutil version: %s\n", message.c_str());
  return status;
}

// Up to four numbers of 0 to 65535, separated by single dots.
bool IsVersion(char const *text) {
  int parts = 0;
  for (char const *at = text;; ++at) {
    char *end;
    if (!std::isdigit(static_cast<unsigned char>(*at)) || std::strtol(at, &end, 10) > 65535 || ++parts > 4)
      return false;
    at = end;
    if (*at == '\0') return true;
    if (*at != '.') return false;
  }
}

bool ParseLanguage(char const *text, long *language) {
  char *end;
  *language = std::isdigit(static_cast<unsigned char>(*text)) ? std::strtol(text, &end, 0) : -1;
  return *language >= 0 && *language <= 0xFFFF && *end == '\0';
}

// Takes the value of an option, from "--name=value" or the next argument.
char const *OptionValue(char const *name, int argc, char **argv, int *i) {
  std::size_t const length = std::strlen(name);
  if (std::strncmp(argv[*i], name, length) != 0) return nullptr;
  if (argv[*i][length] == '=') return argv[*i] + length + 1;
  if (argv[*i][length] != '\0') return nullptr;
  return *i + 1 < argc ? argv[++*i] : "";
}

int BadValue(char const *what, char const *value, char const *expected) {
  return Fail(kExitUsage, "bad " + std::string(what) + " '" + value + "' (expected " + expected + ")");
}

char const kVersionForm[] = "up to four numbers 0-65535, such as 1.2.3.4";

// Returns -1 when parsed, else the exit status.
int ParseArguments(int argc, char **argv, Options *options) {
  for (int i = 1; i < argc; ++i) {
    char const *value;
    if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
      std::fputs(kUsage, stdout);
      return kExitOk;
    } else if ((value = OptionValue("--set-file-version", argc, argv, &i)) != nullptr) {
      if (!IsVersion(value)) return BadValue("file version", value, kVersionForm);
      options->fileVersion = value;
    } else if ((value = OptionValue("--set-product-version", argc, argv, &i)) != nullptr) {
      if (!IsVersion(value)) return BadValue("product version", value, kVersionForm);
      options->productVersion = value;
    } else if ((value = OptionValue("--language", argc, argv, &i)) != nullptr) {
      if (!ParseLanguage(value, &options->language))
        return BadValue("language", value, "a number 0-65535, such as 0x409");
    } else if (argv[i][0] == '-' && argv[i][1] != '\0') {
      return Fail(kExitUsage, "unknown option '" + std::string(argv[i]) + "' (see 'znutil version --help')");
    } else if (options->file != nullptr) {
      return Fail(kExitUsage, "more than one FILE given (see 'znutil version --help')");
    } else {
      options->file = argv[i];
    }
  }
  return options->file != nullptr ? -1 : Fail(kExitUsage, "no FILE given (see 'znutil version --help')");
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

int Run(Options const &options) {
  std::string const file = options.file;
  ZnExeResources image(options.file);
  if (!image.IsOpen()) return Fail(kExitFailure, WhyNotOpen(file));
  if (!IsPe32(image)) return Fail(kExitFailure, "'" + file + "' is not a 32-bit Windows executable");
  void *block = FindVersionBlock(image, options.language);
  ZnVersionResource version(static_cast<unsigned char *>(block));
  if (block == nullptr || version.GetFileVersion() == NULL_STRING)
    return Fail(kExitFailure, "'" + file + "' has no version resource" +
                                  (options.language >= 0 ? " in language " + std::to_string(options.language) : ""));
  if (options.fileVersion != nullptr) version.SetFileVersion(options.fileVersion);
  if (options.productVersion != nullptr) version.SetProductVersion(options.productVersion);
  PrintVersion(version);
  return kExitOk;
}

}  // namespace

int RunVersionCommand(int argc, char **argv) {
  Options options;
  int const status = ParseArguments(argc, argv, &options);
  return status >= 0 ? status : Run(options);
}
