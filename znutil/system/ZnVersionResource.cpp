#include <znutil/system/ZnVersionResource.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include <znutil/platform/FileMapping.h>
#include <znutil/platform/PeFormat.h>
#include <znutil/system/internal/VersionBlock.h>

using znutil::detail::ReadDword;
using znutil::detail::ReadVersionBlock;
using znutil::detail::ReadWord;
using znutil::detail::VersionBlock;
using znutil::detail::Within;

namespace {

bool Before(void const *left, void const *right) {
  return reinterpret_cast<std::uintptr_t>(left) < reinterpret_cast<std::uintptr_t>(right);
}

// The block's own wLength bounds what may be read, and so does the end of a
// mapped view that holds it.
unsigned char *ReadableEnd(unsigned char *block) {
  auto *viewEnd = static_cast<unsigned char *>(const_cast<void *>(znutil::platform::MappedViewEnd(block)));
  if (viewEnd != nullptr && !Within(block, sizeof(WORD), block, viewEnd)) return block;
  unsigned char *end = block + ReadWord(block);
  return viewEnd != nullptr && Before(viewEnd, end) ? viewEnd : end;
}

// Steps 4 bytes at a time from the block's start to the signature of a
// fixed part that lies wholly before `limit`.
unsigned char *FindFixedInfo(unsigned char *block, unsigned char const *limit) {
  for (unsigned char *at = block; Within(at, sizeof(VS_FIXEDFILEINFO), block, limit); at += 4)
    if (ReadDword(at) == VS_FFI_SIGNATURE) return at;
  return nullptr;
}

// Walks the blocks from `first` while they start before `end`, and gives
// the first one that `accept` takes.
template <typename Accept>
bool FindBlock(unsigned char *first, unsigned char *end, unsigned char const *limit, Accept accept) {
  VersionBlock block;
  for (unsigned char *at = first; Before(at, end) && ReadVersionBlock(at, limit, &block); at = block.Next())
    if (accept(block)) return true;
  return false;
}

}  // namespace

ZnVersionResource::ZnVersionResource(HINSTANCE)
    : pResource(nullptr), pStrings(nullptr), pStringsEnd(nullptr), pFixedInfo(nullptr), pResourceEnd(nullptr) {}

ZnVersionResource::ZnVersionResource(unsigned char *block) : ZnVersionResource(HINSTANCE{nullptr}) {
  BindToAddress(block);
}

void ZnVersionResource::BindToAddress(unsigned char *block) {
  pResource = block;
  if (block == nullptr) return;
  pResourceEnd = ReadableEnd(block);
  pFixedInfo = FindFixedInfo(block, pResourceEnd);
  if (pFixedInfo == nullptr) return;
  auto const chooseTable = [this](VersionBlock const &table) {
    if (!znutil::detail::KeyIs(table, u"040904b0") && !znutil::detail::KeyIs(table, u"040904e4")) return false;
    pStrings = table.Value();
    pStringsEnd = table.Next();
    return true;
  };
  auto const stringFileInfo = [this, &chooseTable](VersionBlock const &child) {
    return znutil::detail::KeyIs(child, u"StringFileInfo") &&
           FindBlock(child.Value(), child.Next(), pResourceEnd, chooseTable);
  };
  unsigned char *children = znutil::detail::AlignUp4(pFixedInfo + ReadWord(block + sizeof(WORD)));
  FindBlock(children, block + ReadWord(block) + 2, pResourceEnd, stringFileInfo);
}

unsigned short *ZnVersionResource::GetString(unsigned short const *key, ZnULong *length) {
  *length = 0;
  if (pStrings == nullptr || key == nullptr) return nullptr;
  VersionBlock entry;
  for (unsigned char *at = pStrings; Before(at, pStringsEnd) && ReadVersionBlock(at, pResourceEnd, &entry);) {
    unsigned char *value = entry.Value();
    if (znutil::detail::KeyIs(entry, key)) {
      if (entry.wValueLength != 0 && !Within(value, entry.wValueLength * sizeof(WORD), pResource, pResourceEnd))
        return nullptr;
      // Deliberately wValueLength - 1 in 32 bits: 0xFFFFFFFF for no value.
      *length = ZnULong{entry.wValueLength} - 1;
      return entry.wValueLength != 0 ? reinterpret_cast<unsigned short *>(value) : nullptr;
    }
    at = entry.wValueLength != 0 ? znutil::detail::AlignUp4(value + entry.wValueLength * sizeof(WORD)) : value;
  }
  return nullptr;
}

ZnString ZnVersionResource::VersionText(std::size_t offset) const {
  if (pFixedInfo == nullptr) return NULL_STRING;
  DWORD const high = ReadDword(pFixedInfo + offset), low = ReadDword(pFixedInfo + offset + sizeof(DWORD));
  ZnString text;
  text << static_cast<int>(high >> 16) << '.' << static_cast<int>(high & 0xFFFF) << '.' << static_cast<int>(low >> 16)
       << '.' << static_cast<int>(low & 0xFFFF);
  return text;
}

void ZnVersionResource::StampVersion(std::size_t offset, ZnString const &text) {
  if (pFixedInfo == nullptr) return;
  // Tokens as strtok finds them: runs of "." separate, and empty tokens do
  // not count, so "1..3" is 1.3.0.0.
  std::string const source(static_cast<char const *>(text));
  WORD parts[4] = {};
  std::size_t at = 0;
  for (WORD &part : parts) {
    at = source.find_first_not_of('.', at);
    if (at == std::string::npos) break;
    std::size_t const end = source.find('.', at);
    part = static_cast<WORD>(std::atoi(source.substr(at, end - at).c_str()));
    at = end;
  }
  znutil::detail::WriteDword(pFixedInfo + offset, DWORD{parts[0]} << 16 | parts[1]);
  znutil::detail::WriteDword(pFixedInfo + offset + sizeof(DWORD), DWORD{parts[2]} << 16 | parts[3]);
}

ZnString ZnVersionResource::GetFileVersion() { return VersionText(offsetof(VS_FIXEDFILEINFO, dwFileVersionMS)); }

ZnString ZnVersionResource::GetProductVersion() { return VersionText(offsetof(VS_FIXEDFILEINFO, dwProductVersionMS)); }

void ZnVersionResource::SetFileVersion(ZnString const &text) {
  StampVersion(offsetof(VS_FIXEDFILEINFO, dwFileVersionMS), text);
}

void ZnVersionResource::SetProductVersion(ZnString const &text) {
  StampVersion(offsetof(VS_FIXEDFILEINFO, dwProductVersionMS), text);
}
