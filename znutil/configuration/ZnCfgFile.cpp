#include <znutil/configuration/ZnCfgFile.h>

#include <znutil/concurrency/internal/Entered.h>
#include <znutil/configuration/ZnCfgBinaryData.h>
#include <znutil/configuration/ZnCfgEntry.h>
#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnCfgFloatData.h>
#include <znutil/configuration/ZnCfgIntegerData.h>
#include <znutil/configuration/ZnCfgSection.h>
#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/configuration/ZnCfgTextData.h>
#include <znutil/configuration/internal/CfgEntryIndex.h>
#include <znutil/platform/Clock.h>
#include <znutil/platform/File.h>
#include <znutil/system/ZnFileInformation.h>
#include <znutil/system/ZnPathFunctions.h>

using znutil::detail::CfgKey;
using znutil::detail::Entered;

namespace {

constexpr int kWriteTries = 5;
constexpr int kBackupGenerations = 5;

// String counts are plain, so no text is shared between threads: each
// call makes its own "all", and the file name is copied deeply where used.
constexpr char kAllMachines[] = "all";
ZnString AllMachines() { return ZnString(kAllMachines); }

// A string with a ref of its own, for text that goes into the tree or
// comes out of it: the tree's strings are counted under the file's lock
// only, the caller's on the caller's thread.
ZnString OwnCopy(ZnString const &text) {
  ZnString own;
  own << text;
  return own;
}

void Unshare(ZnString *text) { *text = OwnCopy(*text); }
// Numbers and ZnBinary are copied deeply already.
template <typename Value>
void Unshare(Value *) {}

}  // namespace

ZnCfgFile::ZnCfgFile(ZnString const &fileName)
    : fsFileName(fileName.Chars()),
      ftFileTime(1),
      ftModifiedTime(1),
      plSections(nullptr),
      pIndex(new znutil::detail::CfgEntryIndex) {}

ZnCfgFile::~ZnCfgFile() {
  delete plSections;
  delete pIndex;
}

void ZnCfgFile::SetModified() { ftModifiedTime = znutil::platform::SystemTimeAsFileTime(); }

unsigned long ZnCfgFile::LookupSectionAndEntry(ZnString const &section, ZnString const &entry,
                                               ZnString const &machine, ZnCfgSection **foundSection,
                                               ZnCfgEntryList **foundEntries, ZnCfgEntry **foundEntry) {
  Entered const lock(csFileLock);
  *foundSection = nullptr;
  *foundEntries = nullptr;
  *foundEntry = nullptr;
  if (plSections == nullptr) return CfgNoData;
  if (!pIndex->Reliable()) return LookupInTree(section, entry, machine, foundSection, foundEntries, foundEntry);
  CfgKey const sectionKey = CfgKey::OfSection(section);
  *foundSection = pIndex->FindSection(sectionKey);
  if (*foundSection == nullptr) return CfgNoSection;
  *foundEntries = (*foundSection)->Entries();
  ZnCfgData *data;
  *foundEntry = FindIndexedEntry(sectionKey, entry, machine, &data);
  return *foundEntry != nullptr ? CfgOk : CfgNoEntry;
}

// The entry of `machine`, else the one for all machines, by the index.
ZnCfgEntry *ZnCfgFile::FindIndexedEntry(CfgKey const &sectionKey, ZnString const &entry, ZnString const &machine,
                                        ZnCfgData **data) const {
  CfgKey const ofName = CfgKey::OfName(sectionKey, entry);
  ZnCfgEntry *found = pIndex->FindEntry(CfgKey::WithMachine(ofName, entry, machine.Chars()), data);
  return found != nullptr ? found : pIndex->FindEntry(CfgKey::WithMachine(ofName, entry, kAllMachines), data);
}

// The lookup of a read: as LookupSectionAndEntry, giving the value only,
// which the index holds, so that the entry is not touched.
unsigned long ZnCfgFile::LookupData(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                    ZnCfgData **data) {
  *data = nullptr;
  if (plSections != nullptr && pIndex->Reliable()) {
    CfgKey const sectionKey = CfgKey::OfSection(section);
    if (FindIndexedEntry(sectionKey, entry, machine, data) != nullptr) return CfgOk;
    return pIndex->FindSection(sectionKey) != nullptr ? CfgNoEntry : CfgNoSection;
  }
  ZnCfgSection *foundSection;
  ZnCfgEntryList *foundEntries;
  ZnCfgEntry *foundEntry;
  unsigned long const status =
      LookupSectionAndEntry(section, entry, machine, &foundSection, &foundEntries, &foundEntry);
  if (foundEntry != nullptr) *data = foundEntry->Data();
  return status;
}

// The lookup down the trees, when the index cannot be trusted.
unsigned long ZnCfgFile::LookupInTree(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                      ZnCfgSection **foundSection, ZnCfgEntryList **foundEntries,
                                      ZnCfgEntry **foundEntry) {
  *foundSection = plSections->FindSection(section);
  if (*foundSection == nullptr) return CfgNoSection;
  *foundEntries = (*foundSection)->Entries();
  if (*foundEntries == nullptr) return CfgNoEntry;
  *foundEntry = (*foundEntries)->FindEntry(entry, machine);
  if (*foundEntry == nullptr) *foundEntry = (*foundEntries)->FindEntry(entry, AllMachines());
  return *foundEntry != nullptr ? CfgOk : CfgNoEntry;
}

unsigned long ZnCfgFile::CreateSectionAndEntry(ZnString const &section, ZnString const &entry,
                                               ZnString const &machine, ZnCfgSection **foundSection,
                                               ZnCfgEntryList **foundEntries, ZnCfgEntry **foundEntry) {
  Entered const lock(csFileLock);
  if (plSections == nullptr) plSections = new ZnCfgSectionList(false);
  unsigned long status = LookupSectionAndEntry(section, entry, machine, foundSection, foundEntries, foundEntry);
  bool const newSection = status == CfgNoSection;
  if (newSection) {
    *foundSection = new ZnCfgSection(OwnCopy(section), new ZnCfgEntryList(false), false);
    plSections->Add(*foundSection);
    pIndex->AddSection(*foundSection);
    *foundEntries = (*foundSection)->Entries();
    status = CfgNoEntry;
  }
  if (status == CfgNoEntry) {
    *foundEntry = new ZnCfgEntry(OwnCopy(entry), AllMachines(), nullptr, false);
    (*foundEntries)->Add(*foundEntry);
    pIndex->AddEntry(CfgKey::OfSection((*foundSection)->Name()), *foundEntry);
    if (newSection) SetModified();
  }
  return CfgOk;
}

template <typename Value>
unsigned long ZnCfgFile::GetEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                  Value *result, bool (ZnCfgData::*get)(Value *) const,
                                  bool (ZnCfgData::*convert)(Value *) const, unsigned long notConverted) {
  // A null result is refused before the lock is taken: no thread is left
  // stalled behind a lock that the caller kept.
  if (result == nullptr) return CfgNullResult;
  Entered const lock(csFileLock);
  ZnCfgData *data;
  unsigned long const status = LookupData(section, entry, machine, &data);
  if (status != CfgOk) return status;
  if (data == nullptr) return notConverted;
  if (!(data->*get)(result) && !(data->*convert)(result)) return notConverted;
  Unshare(result);
  return CfgOk;
}

unsigned long ZnCfgFile::GetTextEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                      ZnString *result) {
  return GetEntry(section, entry, machine, result, &ZnCfgData::GetText, &ZnCfgData::ConvertToText, CfgNotText);
}

unsigned long ZnCfgFile::GetIntegerEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                         int *result) {
  return GetEntry(section, entry, machine, result, &ZnCfgData::GetInteger, &ZnCfgData::ConvertToInteger,
                  CfgNotInteger);
}

unsigned long ZnCfgFile::GetFloatEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                       float *result) {
  return GetEntry(section, entry, machine, result, &ZnCfgData::GetFloat, &ZnCfgData::ConvertToFloat, CfgNotFloat);
}

unsigned long ZnCfgFile::GetBinaryEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                        ZnBinary *result) {
  return GetEntry(section, entry, machine, result, &ZnCfgData::GetBinary, &ZnCfgData::ConvertToBinary,
                  CfgNotBinary);
}

unsigned long ZnCfgFile::SetEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                  ZnCfgData *data) {
  Entered const lock(csFileLock);
  ZnCfgSection *foundSection;
  ZnCfgEntryList *foundEntries;
  ZnCfgEntry *foundEntry;
  CreateSectionAndEntry(section, entry, machine, &foundSection, &foundEntries, &foundEntry);
  foundEntry->SetData(data);
  pIndex->SetLastData(data);
  SetModified();
  return CfgOk;
}

unsigned long ZnCfgFile::SetTextEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                      ZnString const &value) {
  // The copy's temporary ends with this statement, before the value is
  // shared with the tree's readers.
  ZnCfgData *data = new ZnCfgTextData(OwnCopy(value));
  return SetEntry(section, entry, machine, data);
}

unsigned long ZnCfgFile::SetIntegerEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                         int value) {
  return SetEntry(section, entry, machine, new ZnCfgIntegerData(value));
}

unsigned long ZnCfgFile::SetFloatEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                       float value) {
  return SetEntry(section, entry, machine, new ZnCfgFloatData(value));
}

unsigned long ZnCfgFile::SetBinaryEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                        ZnBinary const &value) {
  return SetEntry(section, entry, machine, new ZnCfgBinaryData(value));
}

void ZnCfgFile::Clear() {
  Entered const lock(csFileLock);
  delete plSections;
  plSections = nullptr;
  pIndex->Rebuild(nullptr);
  SetModified();
}

// The file's facts are read before the lock; the time stamps, which
// setters on other threads change, are compared under it.
bool ZnCfgFile::Refresh() {
  ZnFileInformation const information(Path());
  if (!information.Valid()) return false;
  Entered const lock(csFileLock);
  if (!(information.ModifiedTime() > ftFileTime)) return false;
  delete plSections;
  plSections = ZnCfgFileParser(Path()).Parse();
  pIndex->Rebuild(plSections);
  ftFileTime = information.ModifiedTime();
  return true;
}

bool ZnCfgFile::Flush() {
  ZnFileInformation information(Path());
  Entered const lock(csFileLock);
  if (information.Valid() && !(ftModifiedTime > information.ModifiedTime())) return false;
  ftFileTime = WriteText(plSections != nullptr ? plSections->FormatFile() : ZnString(), &information);
  return true;
}

// The write time to remember: that of the file written, or, when every try
// failed, the one the information last held.
ZnFileTime ZnCfgFile::WriteText(ZnString const &text, ZnFileInformation *information) {
  for (int attempt = 0; attempt < kWriteTries; ++attempt) {
    FILETIME written;
    if (znutil::platform::ReplaceFileContents(fsFileName.Chars(), text.Chars(), static_cast<std::size_t>(text.Length()),
                                              &written) &&
        information->Refresh())
      return ZnFileTime(written, 1);
  }
  return information->ModifiedTime();
}

bool ZnCfgFile::Backup() {
  auto const generation = [this](int number) { return Path() + ZnString(".") + ZnString(number); };
  for (int number = kBackupGenerations - 1; number >= 1; --number) ZnCopyFile(generation(number), generation(number + 1));
  ZnCopyFile(Path(), generation(1));
  return true;
}
