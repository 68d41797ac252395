// File mappings over mmap(MAP_SHARED), with a table of the views made here.
#include <znutil/platform/FileMapping.h>

#include <cstdint>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {
namespace {

// Start address -> size of every live view. Never destroyed, so that a view
// unmapped by a static destructor still finds it.
struct ViewTable {
  std::mutex lock;
  std::map<std::uintptr_t, std::size_t> views;
};

ViewTable &Views() {
  static ViewTable *const table = new ViewTable;
  return *table;
}

}  // namespace

HANDLE CreateFileMappingA(HANDLE file) {
  struct stat status;
  int const descriptor = DescriptorOf(file);
  if (descriptor < 0 || fstat(descriptor, &status) != 0 || status.st_size <= 0) return nullptr;
  int const own = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  if (own < 0) return nullptr;
  return new MappingHandleObject(own, static_cast<std::size_t>(status.st_size));
}

void *MapViewOfFile(HANDLE mapping, std::size_t *size) {
  *size = 0;
  auto *object = dynamic_cast<MappingHandleObject *>(ObjectOf(mapping));
  if (object == nullptr) return nullptr;
  void *view = mmap(nullptr, object->Size(), PROT_READ | PROT_WRITE, MAP_SHARED, object->Descriptor(), 0);
  if (view == MAP_FAILED) return nullptr;
  ViewTable &table = Views();
  std::lock_guard<std::mutex> guard(table.lock);
  table.views[reinterpret_cast<std::uintptr_t>(view)] = object->Size();
  *size = object->Size();
  return view;
}

bool UnmapViewOfFile(void *view) {
  ViewTable &table = Views();
  std::lock_guard<std::mutex> guard(table.lock);
  auto const found = table.views.find(reinterpret_cast<std::uintptr_t>(view));
  if (found == table.views.end()) return false;
  munmap(view, found->second);
  table.views.erase(found);
  return true;
}

void const *MappedViewEnd(void const *address) {
  std::uintptr_t const where = reinterpret_cast<std::uintptr_t>(address);
  ViewTable &table = Views();
  std::lock_guard<std::mutex> guard(table.lock);
  auto after = table.views.upper_bound(where);
  if (after == table.views.begin()) return nullptr;
  --after;
  std::uintptr_t const end = after->first + after->second;
  return where < end ? reinterpret_cast<void const *>(end) : nullptr;
}

}  // namespace platform
}  // namespace znutil
