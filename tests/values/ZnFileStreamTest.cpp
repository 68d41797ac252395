#include <znutil/values/ZnFileStream.h>

#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <znutil/platform/File.h>
#include <znutil/values/ZnStreamException.h>
#include <znutil/values/internal/FileStreamBufferPool.h>

#include "StreamTestSupport.h"

namespace {

using znutil::detail::FileStreamBufferPool;
using znutil_test::Bytes;
using znutil_test::Thrown;

// Removes the test folder when the program ends.
class RemoveTestFolder : public ::testing::Environment {
 public:
  void TearDown() override { std::filesystem::remove_all(znutil_test::TestFolder()); }
};
::testing::Environment *const removeTestFolder = ::testing::AddGlobalTestEnvironment(new RemoveTestFolder);

ZnString Path(std::string const &path) { return ZnString(path.c_str()); }

// A file holding the ints 0 .. count - 1.
std::string IntFile(int count) {
  std::string const path = znutil_test::TempFile("ints");
  ZnFileStream out(Path(path), ZnFileWrite, true);
  for (int i = 0; i < count; ++i) out << i;
  return path;
}

TEST(ZnFileStreamTest, OpeningMakesTheFolderInBothModes) {
  std::filesystem::path const folder = znutil_test::TestFolder() / "made" / "deeper";
  std::string const reading = (folder / "missing.bin").string();
  EXPECT_EQ(Thrown([&] { ZnFileStream in(Path(reading), ZnFileRead, true); }), ZnStreamOpenError);
  EXPECT_TRUE(std::filesystem::is_directory(folder));

  // Backslashes separate too; any mode but 0 writes, making a file the umask trims.
  std::string const made = (znutil_test::TestFolder() / "other" / "sub" / "file.bin").string();
  mode_t const umaskBefore = umask(022);
  std::string const writing = (znutil_test::TestFolder() / "other").string() + "\\sub\\file.bin";
  { ZnFileStream(Path(writing), static_cast<ZnFileMode>(7), false) << 9; }
  umask(umaskBefore);
  struct stat status;
  ASSERT_EQ(0, stat(made.c_str(), &status));
  EXPECT_EQ(0644u, status.st_mode & 07777);
  EXPECT_EQ(znutil_test::ReadWholeFile(made), (Bytes{9, 0, 0, 0}));
  EXPECT_EQ(Thrown([&] { ZnFileStream dir(Path(folder.string()), ZnFileRead, false); }), ZnStreamOpenError);
}

TEST(ZnFileStreamTest, ShortReadsCopyWhatIsThereAndThrow) {
  std::string const path = znutil_test::TempFile("short");
  znutil_test::WriteWholeFile(path, Bytes{1, 2, 3});
  ZnFileStream in(Path(path), ZnFileRead, true);
  unsigned char bytes[8] = {};
  EXPECT_EQ(Thrown([&] { in.ReadBytes(8, bytes, false); }), ZnStreamReadError);
  EXPECT_TRUE(bytes[2] == 3 && in.Status() == ZnStreamReadError);
  // Sticky: even a read that the file could serve throws.
  in.Seek(-3);
  EXPECT_EQ(Thrown([&] { in.ReadBytes(1, bytes, false); }), ZnStreamReadError);
  in.SetStatus(ZnStreamOk);
  EXPECT_EQ(Thrown([&] { in.ReadBytes(1, bytes, false); }), ZnStreamOk);
  EXPECT_EQ(bytes[0], 1);
  ZnFileStream unbuffered(Path(path), ZnFileRead, false);
  int value = 0;
  EXPECT_EQ(Thrown([&] { unbuffered >> value; }), ZnStreamReadError);
  EXPECT_EQ(unbuffered.Status(), ZnStreamReadError);
  unbuffered.Seek(-2);
  EXPECT_EQ(Thrown([&] { unbuffered.ReadBytes(1, bytes, false); }), ZnStreamReadError);  // sticky too
  ZnFileStream writeOnly(Path(znutil_test::TempFile("writeonly")), ZnFileWrite, false);
  EXPECT_EQ(Thrown([&] { writeOnly >> value; }), ZnStreamReadError);  // the read call itself fails
}

TEST(ZnFileStreamTest, SeekOnABufferedReadRefillsFromTheNewPlace) {
  ZnFileStream in(Path(IntFile(5000)), ZnFileRead, true);
  // The buffer holds 512 ints; a seek first moves the file back to what was delivered.
  int const steps[][2] = {{0, 0}, {4 * 99, 100}, {4 * 3000, 3101}, {-8, 3100}};
  for (auto const &step : steps) {
    int value = -1;
    in.Seek(step[0]);
    in >> value;
    EXPECT_EQ(value, step[1]);
  }
}

TEST(ZnFileStreamTest, WrappedHandleIsFlushedButLeftOpenAndSeekFlushesFirst) {
  std::string const path = znutil_test::TempFile("wrapped");
  HANDLE const file = znutil::platform::CreateFileA(path.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  {
    ZnFileStream out(file, ZnFileWrite, true);
    out << 1 << 2;
    out.Seek(-4);
    out << 3;
  }
  DWORD written = 0;
  EXPECT_TRUE(znutil::platform::WriteFile(file, "b", 1, &written) && znutil::platform::CloseHandle(file));
  EXPECT_EQ(znutil_test::ReadWholeFile(path), (Bytes{1, 0, 0, 0, 3, 0, 0, 0, 'b'}));
}

TEST(ZnFileStreamTest, WriteFailuresThrowAndFlushThrowsAPlainStatus) {
  // Every write to /dev/full fails. A full buffer that cannot go out throws
  // at once, and the flush failure of the destructor that follows is dropped.
  EXPECT_EQ(Thrown([] { ZnFileStream out(ZnString("/dev/full"), ZnFileWrite, false); out << 1; }), ZnStreamWriteError);
  EXPECT_EQ(Thrown([] {
              ZnFileStream out(ZnString("/dev/full"), ZnFileWrite, true);
              std::vector<char> const bytes(3000);
              out.WriteBytes(3000, bytes.data(), false);
            }),
            ZnStreamWriteError);

  auto *pending = new ZnFileStream(ZnString("/dev/full"), ZnFileWrite, true);
  *pending << 1;
  EXPECT_THROW(pending->Flush(), ZnStreamError);
  // The bytes still wait: destruction throws the same, but releases all.
  std::size_t const idle = FileStreamBufferPool::IdleCount();
  EXPECT_THROW(delete pending, ZnStreamError);
  EXPECT_EQ(FileStreamBufferPool::IdleCount(), idle + 1);
}

TEST(ZnFileStreamTest, WritingTruncatesAndCopiesShareTheHandleAndBuffer) {
  std::string const path = IntFile(100);
  char *const front = FileStreamBufferPool::Take();
  FileStreamBufferPool::Give(front);
  std::size_t const idle = FileStreamBufferPool::IdleCount();
  {
    auto *original = new ZnFileStream(Path(path), ZnFileWrite, true);
    *original << 1;
    original->Flush();
    ZnFileStream copy(*original);
    ZnFileStream assigned(Path(znutil_test::TempFile("other")), ZnFileWrite, false);
    EXPECT_EQ(FileStreamBufferPool::IdleCount(), idle - 1);  // one buffer taken, none for the unbuffered
    assigned = copy;
    delete original;
    copy << 2;
    copy.Flush();
    assigned << 3;
  }
  EXPECT_EQ(znutil_test::ReadWholeFile(path), (Bytes{1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0}));
  // The shared buffer went back once, to the front of the pool.
  EXPECT_EQ(FileStreamBufferPool::IdleCount(), idle);
  char *const next = FileStreamBufferPool::Take();
  EXPECT_EQ(next, front);
  FileStreamBufferPool::Give(next);
}

}  // namespace
