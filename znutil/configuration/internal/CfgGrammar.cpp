#include <znutil/configuration/internal/CfgGrammar.h>

#include <znutil/configuration/ZnCfgBinaryData.h>
#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnCfgFloatData.h>
#include <znutil/configuration/ZnCfgIntegerData.h>
#include <znutil/configuration/ZnCfgParserBinaryStream.h>
#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/configuration/ZnCfgTextData.h>
#include <znutil/configuration/internal/CfgScanner.h>
#include <znutil/configuration/internal/CfgTokens.h>

namespace znutil {
namespace detail {

CfgGrammar::CfgGrammar(CfgScanner &scanner, ZnCfgFileParser &parser)
    : rScanner(scanner), rParser(parser), tiAhead(), iAhead(kCfgEnd), bHaveAhead(false), fsAll("all") {}

bool CfgGrammar::Run() {
  auto *sections = new ZnCfgSectionList;
  while (Peek() == kCfgSection) {
    ZnCfgSection *section = Section();
    if (section == nullptr) return false;
    if (!sections->Add(section)) {
      ReportDuplicate("The section named ", section->Name());
      delete section;
    }
  }
  if (!Expect(kCfgEnd)) return false;
  rParser.SetInput(sections);
  return true;
}

int CfgGrammar::Peek() {
  if (!bHaveAhead) {
    iAhead = rScanner.Next(&tiAhead);
    bHaveAhead = true;
  }
  return iAhead;
}

bool CfgGrammar::Expect(int token, ZnCfgTokenInfo *info) {
  if (Peek() != token) {
    rParser.SyntaxError();
    return false;
  }
  if (info != nullptr) *info = tiAhead;
  bHaveAhead = false;
  return true;
}

ZnCfgSection *CfgGrammar::Section() {
  ZnCfgTokenInfo nameToken;
  if (!Expect(kCfgSection) || !Expect(kCfgString, &nameToken)) return nullptr;
  ZnString const name = *nameToken.pfsValue;
  auto *entries = new ZnCfgEntryList;
  while (Peek() == kCfgString) {
    ZnCfgEntry *entry = Entry();
    if (entry == nullptr) return nullptr;
    if (!entries->Add(entry)) {
      ReportDuplicate("The entry named ", entry->Name());
      delete entry;
    }
  }
  return new ZnCfgSection(name, entries);
}

ZnCfgEntry *CfgGrammar::Entry() {
  ZnCfgTokenInfo nameToken, value;
  if (!Expect(kCfgString, &nameToken)) return nullptr;
  ZnString const name = *nameToken.pfsValue;
  ZnString machine;
  if (!Machine(&machine) || !Expect(kCfgEquals)) return nullptr;
  if (Peek() == kCfgString) {
    Expect(kCfgString, &value);
    return new ZnCfgEntry(name, machine, new ZnCfgTextData(*value.pfsValue));
  }
  if (!Expect(kCfgLParen)) return nullptr;
  return TypedEntry(name, machine, nameToken.iLine);
}

bool CfgGrammar::Machine(ZnString *machine) {
  if (Peek() != kCfgLParen) {
    *machine = fsAll;
    return true;
  }
  ZnCfgTokenInfo word;
  if (!Expect(kCfgLParen) || !Expect(kCfgWord, &word) || !Expect(kCfgRParen)) return false;
  *machine = *word.pfsValue;
  return true;
}

ZnCfgEntry *CfgGrammar::TypedEntry(ZnString const &name, ZnString const &machine, int nameLine) {
  ZnCfgTokenInfo value;
  ZnBinary bytes;
  switch (Peek()) {
    case kCfgText:
      if (!Expect(kCfgText) || !Expect(kCfgRParen) || !Expect(kCfgString, &value)) return nullptr;
      return new ZnCfgEntry(name, machine, new ZnCfgTextData(*value.pfsValue));
    case kCfgInteger: return IntegerEntry(name, machine, nameLine);
    case kCfgFloat:
      if (!Expect(kCfgFloat) || !Expect(kCfgRParen) || !ByteList(&bytes)) return nullptr;
      return new ZnCfgEntry(name, machine,
                            new ZnCfgFloatData(CheckFourBytes(bytes, "float", nameLine) ? float(bytes) : 0.0f));
    case kCfgBinary:
      if (!Expect(kCfgBinary) || !Expect(kCfgRParen) || !ByteList(&bytes)) return nullptr;
      return new ZnCfgEntry(name, machine, new ZnCfgBinaryData(bytes));
    default: rParser.SyntaxError(); return nullptr;
  }
}

ZnCfgEntry *CfgGrammar::IntegerEntry(ZnString const &name, ZnString const &machine, int nameLine) {
  if (!Expect(kCfgInteger)) return nullptr;
  bool hex = false;
  if (Peek() == kCfgComma) {
    Expect(kCfgComma);
    hex = Peek() == kCfgHex;
    if (!Expect(hex ? kCfgHex : kCfgAscii)) return nullptr;
  }
  if (!Expect(kCfgRParen)) return nullptr;
  int value;
  if (hex) {
    ZnBinary bytes;
    if (!ByteList(&bytes)) return nullptr;
    value = CheckFourBytes(bytes, "integer", nameLine) ? int(bytes) : -1;
  } else {
    ZnCfgTokenInfo number;
    if (!Expect(kCfgNumber, &number)) return nullptr;
    value = number.iValue;
  }
  return new ZnCfgEntry(name, machine, new ZnCfgIntegerData(value));
}

bool CfgGrammar::ByteList(ZnBinary *bytes) {
  ZnCfgTokenInfo byte;
  if (!Expect(kCfgHexByte, &byte)) return false;
  // The stream is tracked: a syntax error in the list leaves it to the
  // sweep at the end of the parse.
  auto *stream = new ZnCfgParserBinaryStream;
  stream->AppendByte(static_cast<unsigned char>(byte.iValue));
  while (Peek() == kCfgComma) {
    if (!Expect(kCfgComma) || !Expect(kCfgHexByte, &byte)) return false;
    stream->AppendByte(static_cast<unsigned char>(byte.iValue));
  }
  *bytes = ZnBinary(*stream);
  delete stream;
  return true;
}

bool CfgGrammar::CheckFourBytes(ZnBinary const &bytes, char const *type, int nameLine) {
  if (bytes.Size() == 4) return true;
  // The second line says "integer" for a float too.
  ZnString message("Incorrect ");
  message << type << " entry format\n"
          << "The error occurred for the integer entry defined on line " << nameLine << "\n"
          << "There were " << static_cast<int>(bytes.Size()) << " bytes specified and only 4 are allowed.";
  rParser.ErrorMessage(message);
  return false;
}

void CfgGrammar::ReportDuplicate(char const *what, ZnString const &name) {
  // The name runs straight into "is already defined".
  ZnString message(what);
  message << name << "is already defined";
  rParser.ErrorMessage(message);
}

}  // namespace detail
}  // namespace znutil
