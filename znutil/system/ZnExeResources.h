// ZnExeResources: a mapped executable with a lookup in its resource tree.
//
//   ZnExeResources image("build\\app.exe");
//   void *block = image.FindResourceA(RT_VERSION, 1, 0x409);
//   if (block != nullptr) ZnVersionResource(static_cast<unsigned char *>(block)).SetFileVersion("2.1.0.5");
//
// The tree has three levels: type, number, language. Only numbered entries
// are searched, never named ones, and the language must match exactly:
// there is no fall-back to a neutral language. The resource found lies in
// the writable view, so changing it changes the file.
#ifndef ZNUTIL_SYSTEM_ZNEXERESOURCES_H
#define ZNUTIL_SYSTEM_ZNEXERESOURCES_H

#include <znutil/platform/Export.h>
#include <znutil/platform/PeFormat.h>
#include <znutil/system/ZnExeFileMapping.h>

class ZNUTIL_API ZnExeResources : public ZnExeFileMapping {
 public:
  ZnExeResources();
  /// Opens the file as ZnExeFileMapping does.
  explicit ZnExeResources(char const *path);
  ~ZnExeResources();
  ZnExeResources(ZnExeResources const &other) = default;
  ZnExeResources &operator=(ZnExeResources const &other) = default;

  /// The data of the resource with the numbers `type` (passed as a pointer,
  /// as MAKEINTRESOURCEA makes it; its low 16 bits count), `id` and
  /// `language` (compared whole), or null. Null as well when the data, or any directory on
  /// the way to it, does not lie inside the view.
  void *FindResourceA(char const *type, int id, int language);

 private:
  unsigned char *GetNamedEntryStart(unsigned char *directory);
  unsigned char *GetIdEntryStart(unsigned char *directory);
  /// The root plus an offset whose top bit is masked; null outside the view.
  unsigned char *GetAddressFromOffset(DWORD offset, std::size_t bytes);
  /// The entry of `directory` whose name's low 16 bits equal `id`, or null.
  unsigned char *FindIdEntry(unsigned char *directory, long id);

  /// The root directory of the tree, as found by the last search.
  unsigned char *pResourceRoot;
  /// The header of the section ".rsrc", as found by the last search.
  IMAGE_SECTION_HEADER ishResourceSection;
};

#endif  // ZNUTIL_SYSTEM_ZNEXERESOURCES_H
