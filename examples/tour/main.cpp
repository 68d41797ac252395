// A tour of the znutil library: each section shows one subsystem at work
// and prints what it did.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <string>
#include <thread>

#include <znutil/znutil.h>

namespace {

void TourMemory() {
  std::printf("== Memory\n");
  void *small = ZnFixedBlockAllocator::Alloc(24);
  void *large = ZnFixedBlockAllocator::Alloc(4096);
  std::printf("allocated a 24-byte block at %p and a 4096-byte block at %p\n", small, large);
  ZnFixedBlockAllocator::Free(small);
  void *again = ZnFixedBlockAllocator::Alloc(24);
  std::printf("freed the small block; the next 24-byte request %s it\n", again == small ? "reuses" : "does not reuse");
  ZnFixedBlockAllocator::Free(again);
  ZnFixedBlockAllocator::Free(large);
}

void TourLocks() {
  std::printf("== Locks\n");
  ZnLock lock;
  bool const first = lock.Lock(0);
  bool const second = lock.Lock(25);
  std::printf("first Lock(0): %s; second Lock(25) on the held lock: %s\n", first ? "taken" : "refused",
              second ? "taken" : "refused");
  lock.Unlock();
  ZnAtomicWord word;
  word.Increment();
  std::printf("an atomic word incremented once holds %ld\n", word.Get());
}

void TourStrings() {
  std::printf("== Strings\n");
  ZnString name("report");
  ZnString copy = name;
  copy << ".txt";
  std::printf("\"%s\" copied and appended to: \"%s\" (the original is unchanged)\n", static_cast<char const *>(name),
              static_cast<char const *>(copy));
  ZnString greeting("world");
  greeting >> "hello, ";
  std::printf("prepending with >>: \"%s\"; as upper case: \"%s\"\n", static_cast<char const *>(greeting),
              static_cast<char const *>(greeting.ToUpper()));
  std::printf("\"lo\" found at %d; empty text equals NULL_STRING: %s\n", greeting.ContainsSubString(ZnString("lo")),
              ZnString("") == NULL_STRING ? "yes" : "no");
}

// Containers hold untyped pointers; the tour keeps small ints in them.
void *AsItem(int value) { return reinterpret_cast<void *>(static_cast<std::intptr_t>(value)); }
int AsInt(void *item) { return static_cast<int>(reinterpret_cast<std::intptr_t>(item)); }

class IntOrder : public ZnListItemCompare {
 public:
  int CompareItems(void *left, void *right) override { return AsInt(left) - AsInt(right); }
};

// A hash table entry keyed by a word, with the word's length as its value.
class WordItem : public ZnHashTableItem {
 public:
  explicit WordItem(char const *word) : pszWord(word) {}
  ZnULong Hash() const override { return ZnHash(pszWord, static_cast<ZnULong>(std::strlen(pszWord))); }
  void *GetKey() const override { return const_cast<char *>(pszWord); }
  void *GetData() const override { return AsItem(static_cast<int>(std::strlen(pszWord))); }
  ZnHashTableItem *Clone() const override { return new WordItem(pszWord); }
  bool Equals(ZnHashTableItem const *other) const override {
    return std::strcmp(static_cast<WordItem const *>(other)->pszWord, pszWord) == 0;
  }

 private:
  char const *pszWord;
};

class WordTable : public ZnHashTable {
 public:
  WordTable() : ZnHashTable(5, 2) {}
  ~WordTable() override { ClearItems(nullptr); }
  bool Add(char const *word) {
    ZnHashTableItem *existing;
    return AddItem(new WordItem(word), existing) == ZnHTSuccess;
  }
};

void TourLists() {
  ZnDblList list;
  for (int value = 1; value <= 6; ++value) list.Append(AsItem(value));
  ZnListContext position;
  void *item = list.GetFirst(position);
  while (item != nullptr) {  // Delete moves the context on, so the walk goes on with GetCurrent
    if (AsInt(item) % 2 == 0) {
      list.Delete(position);
      item = list.GetCurrent(position);
    } else {
      item = list.GetNext(position);
    }
  }
  std::printf("a list of 1..6 with the even values deleted while walking:");
  for (item = list.GetFirst(position); item != nullptr; item = list.GetNext(position)) std::printf(" %d", AsInt(item));
  std::printf("\n");
}

void TourOrderedList() {
  ZnOrderedList tree;
  IntOrder order;
  for (int value : {42, 7, 19, 88, 3, 61, 25}) tree.Add(AsItem(value), order);
  bool const again = tree.Add(AsItem(19), order);
  std::printf("an AVL tree of %d items, height %d, balanced: %s; adding 19 again: %s\n", tree.GetCount(),
              tree.Height(), tree.VerifyBalance() ? "yes" : "no", again ? "taken" : "refused");
  ZnListContext position;
  std::printf("in order from 19 on:");
  for (void *item = tree.Find(AsItem(19), order, position); item != nullptr; item = tree.GetNext(position)) {
    std::printf(" %d", AsInt(item));
  }
  std::printf("\n");
}

void TourHashTable() {
  WordTable table;
  for (char const *word : {"alpha", "beta", "gamma", "delta", "epsilon", "zeta", "eta"}) table.Add(word);
  bool const again = table.Add("beta");
  ZnHashTableStatistics stats;
  table.Statistics(&stats, 1 | 2);
  std::printf("a hash table of %d words in %d buckets of %d cells (%d in chains); adding \"beta\" again: %s\n",
              stats.iItemCount, stats.iBucketCount, stats.iSlotsPerBucket, stats.piHistogram[stats.iSlotsPerBucket],
              again ? "taken" : "refused");
  ZnListContext position;
  std::printf("walked as key=value:");
  for (void *value = table.GetFirst(position); value != nullptr; value = table.GetNext(position)) {
    std::printf(" %s=%d", static_cast<char const *>(position.Key()), AsInt(value));
  }
  std::printf("\nlookup2 of \"abc\": 0x%08x\n", static_cast<unsigned>(ZnHash("abc", 3)));
}

void TourContainers() {
  std::printf("== Containers\n");
  TourLists();
  TourOrderedList();
  TourHashTable();
}

void TourClocks() {
  std::printf("== Clocks\n");
  ZnStopWatch watch;
  watch.Start(20);
  ZnSleeper::Snooze(ZnTime(0, 25));
  std::printf("a stopwatch with a 20 ms period, after a 25 ms snooze: %lu ms elapsed, %s\n",
              static_cast<unsigned long>(watch.MeasureElapsed()), watch.HasExpired() ? "expired" : "not expired");
  std::printf("tick 5 minus tick 0xFFFFFFFF across the wrap: %lu (one short of the true 6, by design)\n",
              static_cast<unsigned long>(ZnSubtractTickCounts(5, 0xFFFFFFFF)));
  std::ostringstream spans;
  spans << ZnTime(1, 900) + ZnTime(0, 200) << ", and 1.000 - 2.000 = " << ZnTime(1, 0) - ZnTime(2, 0);
  std::printf("1.900 + 0.200 = %s\n", spans.str().c_str());
}

// Work that adds up a range of numbers on whatever thread runs it.
class SumWork : public ZnThreadWork {
 public:
  void Work() override {
    for (long i = 1; i <= 1000; ++i) sum += i;
    ranOn = ZnThread::GetThread();
    done.Signal();
  }
  long sum = 0;
  ZnThread *ranOn = nullptr;
  ZnEvent done{false};
};

void TourThreads() {
  std::printf("== Threads\n");
  ZnThread *worker = new ZnThread(ZnThread::kSelfDeleting);
  SumWork work;
  bool const taken = worker->AssignWork(&work, 0);
  work.done.Wait(INFINITE);
  std::printf("work %s by a library thread; 1 + ... + 1000 = %ld, run on %s\n", taken ? "taken" : "refused", work.sum,
              work.ranOn == worker ? "the worker" : "another thread");
  std::printf("the calling thread is %s library thread\n", ZnThread::GetThread() == nullptr ? "no" : "a");
  worker->SignalShutdown(true);
  std::printf("the worker shut down and deleted itself\n");
}

// An undoable edit of a text: appends, and restores what was there.
class AppendAction : public ZnAction {
 public:
  AppendAction(ZnString &document, char const *text) : fsDocument(document), fsText(text), fsLabel("Append") {}
  bool Execute() override {
    fsBefore = fsDocument;
    fsDocument << fsText;
    return true;
  }
  bool Revert() override {
    fsDocument = fsBefore;
    return true;
  }
  ZnString const &Label() override { return fsLabel; }

 private:
  ZnString &fsDocument;
  ZnString fsText, fsLabel, fsBefore;
};

void TourValues() {
  std::printf("== Values and streams\n");
  char const *temp = std::getenv("TMPDIR");
  ZnString const path = ZnString(temp != nullptr ? temp : "/tmp") ^ ZnString("znutil_tour\\values.bin");
  {
    ZnFileStream out(path, ZnFileWrite, true);  // makes the folder if it is missing
    out << 640 << 2.5 << ZnString("View") << true;
  }
  int width = 0;
  double scale = 0;
  ZnString name;
  bool shown = false;
  ZnFileStream in(path, ZnFileRead, true);
  in >> width >> scale >> name >> shown;
  std::printf("wrote and read back %s: %d, %g, \"%s\", %s (%d bytes on disk)\n", static_cast<char const *>(path),
              width, scale, static_cast<char const *>(name), shown ? "true" : "false",
              ZnStream::SizeOf(width) + ZnStream::SizeOf(scale) + ZnStream::SizeOf(name) + ZnStream::SizeOf(shown));
  try {
    in >> width;
  } catch (ZnStreamException const &e) {
    std::printf("reading past the end throws ZnStreamException with status %d\n", static_cast<int>(e.eError));
  }
  std::printf("ZnBinary(640) dumps as %s\n", static_cast<char const *>(ZnBinary(640).Dump(false)));
  ZnVariant const one(1), minusOne(-1), allOnes(0xFFFFFFFFu), oneAsDouble(1.0);
  std::printf("variants: -1 == 0xFFFFFFFFu is %d, 1 == 1.0 is %d (integers are not like floats)\n",
              minusOne == allOnes, one == oneAsDouble);

  ZnString document;
  ZnActionManager history;
  history.Do(new AppendAction(document, "hello"));
  history.Do(new AppendAction(document, ", world"));
  history.Undo();
  ZnString label;
  history.RedoLabel(label);
  std::printf("after two edits and an undo: \"%s\" (%d to undo, %d to redo: \"%s\")\n",
              static_cast<char const *>(document), history.UndoSize(), history.RedoSize(),
              static_cast<char const *>(label));
  history.Redo();
  std::printf("after redo: \"%s\"\n", static_cast<char const *>(document));
}

void TourRegex() {
  std::printf("== Regular expressions\n");
  ZnRegularExpression date("([0-9]+)-([0-9]+)-([0-9]+)");
  date.Optimize();
  ZnString const text("Released on 2024-06-11, patched later.");
  auto group = [&](int n) { return text.MidString(date.RegisterStart(n), date.RegisterEnd(n) - date.RegisterStart(n)); };
  if (date.Matches(text)) {
    std::printf("\"%s\" matched at %d..%d: year %s, month %s, day %s\n", static_cast<char const *>(text),
                date.MatchedStart(), date.MatchedEnd(), static_cast<char const *>(group(1)),
                static_cast<char const *>(group(2)), static_cast<char const *>(group(3)));
  }
  ZnRegularExpression bad("(unclosed");
  std::printf("\"(unclosed\" compiles: %s (%s)\n", bad.Valid() ? "yes" : "no",
              static_cast<char const *>(bad.CompileErrorString()));
  ZnString const pattern = ZnRegularExpression::DosToRegEx("*.TXT");
  std::printf("wildcard *.TXT becomes %s, which %s notes.txt\n", static_cast<char const *>(pattern),
              ZnRegularExpression(pattern).Matches("notes.txt") ? "matches" : "does not match");
}

void TourCollections() {
  std::printf("== String collections and dictionaries\n");
  ZnStringList words;
  ZnString("pear,apple,Fig,banana").Tokenize(ZnString(","), words);
  words.Sort(false);
  ZnString joined;
  ZnListContext position;
  for (ZnString *word = words.First(position); word != nullptr; word = words.Next(position))
    joined << (joined == NULL_STRING ? "" : " ") << *word;
  std::printf("tokenized and sorted ignoring case: %s\n", static_cast<char const *>(joined));

  ZnDictionary sizes;
  sizes.HashCaseInsensitive();
  int width = 640, height = 480;
  sizes.Add(ZnString("Width"), &width);
  sizes.Add(ZnString("Height"), &height);
  std::printf("a case-insensitive dictionary finds WIDTH = %d\n", *static_cast<int *>(sizes.Find(ZnString("WIDTH"))));
  ZnUuid id;
  std::printf("a new identifier: %s\n", static_cast<char const *>(static_cast<ZnString>(id)));
  ZnString grouped;
  grouped.FormatInt(1234567, 12);
  std::printf("FormatInt(1234567, 12): \"%s\"\n", static_cast<char const *>(grouped));
}

void PrintVersion(char const *path) {
  ZnExeResources image(path);
  ZnVersionResource version(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)));
  unsigned short const key[] = {'C', 'o', 'm', 'p', 'a', 'n', 'y', 'N', 'a', 'm', 'e', 0};
  ZnULong length;
  unsigned short const *company = version.GetString(key, &length);
  std::printf("file version %s, product version %s, company \"%s\"\n",
              static_cast<char const *>(version.GetFileVersion()),
              static_cast<char const *>(version.GetProductVersion()), static_cast<char const *>(ZnString(company)));
}

// Reads and stamps a copy of the sample Windows executable that the build
// puts next to the tour.
void TourImages(char const *tour) {
  std::printf("== Executable images\n");
  std::filesystem::path const sample = std::filesystem::path(tour).parent_path() / "sample.exe";
  if (!std::filesystem::exists(sample)) {
    std::printf("no sample.exe next to the tour; skipped\n");
    return;
  }
  std::string const copy = (std::filesystem::temp_directory_path() / "znutil-tour-sample.exe").string();
  std::filesystem::copy_file(sample, copy, std::filesystem::copy_options::overwrite_existing);
  ZnFileInformation info(copy.c_str());
  std::printf("a copy of the sample image, %u bytes: ", info.Size());
  PrintVersion(copy.c_str());
  {
    ZnExeResources image(copy.c_str());
    ZnVersionResource(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)))
        .SetFileVersion("2.14.0.1");
  }
  std::printf("stamped with SetFileVersion(\"2.14.0.1\") and read again: ");
  PrintVersion(copy.c_str());
  std::filesystem::remove(copy);
}

void TourPaths() {
  std::printf("== Paths and application identity\n");
  struct {
    char const *base, *path;
  } const joins[] = {{"C:\\a\\b", "..\\c"}, {"C:\\a\\", ".."}, {"C:/a", "/x"}, {"C:\\a", ".\\x"}};
  for (auto const &join : joins) {
    std::printf("CreateAbsolutePath(%s, %s) = %s\n", join.base, join.path,
                ZnDirectory::CreateAbsolutePath(join.base, join.path).Chars());
  }
  std::printf("CreateRelativePath(c:\\a\\b\\c, C:\\A) = %s (a way up ends in a separator)\n",
              ZnDirectory::CreateRelativePath("c:\\a\\b\\c", "C:\\A").Chars());
  std::printf("RemoveRelativePartsFromAbsolutePath(C:\\a\\.\\b\\..\\c\\) = %s\n",
              ZnDirectory::RemoveRelativePartsFromAbsolutePath("C:\\a\\.\\b\\..\\c\\").Chars());
  ZnString const tool("C:\\tools\\App.exe");
  std::printf("%s splits into drive %s, folder %s, base %s, extension %s\n", tool.Chars(),
              ZnGetDriveFromPath(tool).Chars(), ZnGetDirectoryFromPath(tool).Chars(),
              ZnGetBaseFileFromPath(tool).Chars(), ZnGetExtensionFromPath(tool).Chars());

  std::printf("this program is \"%s\" in %s; the library is loaded at %p\n", UtilityApp::AppName().Chars(),
              UtilityApp::StartupDir().Chars(), UtilityApp::LibInstance());
  ZnDirectory folder;
  if (folder.Open(UtilityApp::StartupDir())) {
    int folders = 0;
    for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next())
      folders += (entry->QueryAttributes() & FILE_ATTRIBUTE_DIRECTORY) != 0 ? 1 : 0;
    std::printf("its folder lists %d entries, %d of them folders (\".\" and \"..\" included)\n", folder.Count(),
                folders);
  }
}

// Two threads log; the library's stop writes everything to "<app>.log" in
// the folder that LOGDIR names, which the tour prints at its end.
void TourLogging() {
  std::printf("== Logging\n");
  auto worker = [](char const *source) {
    for (int step = 1; step <= 2; ++step) {
      std::string const line = std::string("step ") + std::to_string(step) + " done";
      ZnLogger::Log(ZnLogger::kInformation, ZnString(source), ZnString("Tour"), ZnString(line.c_str()));
    }
  };
  std::thread first(worker, "first"), second(worker, "second");
  first.join();
  second.join();
  ZnString const a("a warning of two lines,"), b("the second line");
  ZnLogger::Log(ZnLogger::kWarning, ZnString("main"), ZnString("Tour"), &a, &b, nullptr);
  std::printf("logged five messages from three threads; the log file follows at the end\n");
}

// Polls `condition` every 20 ms for up to five seconds.
template <typename Condition>
bool Within5Seconds(Condition condition) {
  for (int tries = 0; tries < 250; ++tries) {
    if (condition()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return false;
}

std::string FileText(std::filesystem::path const &path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The profile lives in the tour's own folder, so a setting lasts from one
// run of the tour to the next; the global file shows an edit from outside.
void TourConfiguration(std::filesystem::path const &folder) {
  std::printf("== Configuration\n");
  UtilityApp const app;
  int const runs = app.GetProfileIntA("Tour", "Runs", 0) + 1;
  app.WriteProfileInt("Tour", "Runs", runs);
  std::printf("this is run %d of the tour (profile Tour/Runs, kept in %s)\n", runs, (folder / "Tour.cfg").c_str());
  app.WriteGlobalInt("View", "Width", 1024);
  app.WriteGlobalString("View", "Title", "Tour");
  std::filesystem::path const global = folder / "Lumiframe.cfg";
  Within5Seconds([&] { return FileText(global).find("Width") != std::string::npos; });
  std::printf("after one turn of the configuration thread, %s holds:\n%s", global.c_str(), FileText(global).c_str());
  // An editor's change: a whole new file, later than the one on the disk.
  std::filesystem::path const edit = folder / "edit.tmp";
  std::ofstream(edit, std::ios::binary) << "# edited by hand\nsection \"View\"\n\"Width\" = (integer) 1280\n";
  std::filesystem::last_write_time(edit, std::filesystem::last_write_time(global) + std::chrono::seconds(1));
  std::filesystem::rename(edit, global);
  Within5Seconds([&] { return app.GetGlobalInt("View", "Width", 0) == 1280; });
  std::printf("after an edit from outside, View/Width reads %d and View/Title \"%s\": the file replaced all\n",
              app.GetGlobalInt("View", "Width", 0), app.GetGlobalString("View", "Title", "(none)").Chars());
}

}  // namespace

int main(int, char **argv) {
  // Everything the library writes goes to one folder of the tour's: the
  // profile, the global file and the log.
  std::filesystem::path const folder = std::filesystem::temp_directory_path() / "znutil-tour";
  std::filesystem::create_directories(folder);
  setenv("ZNUTIL_SYSTEM_DIR", folder.c_str(), 1);
  setenv("LOGDIR", folder.c_str(), 1);
  InitializeUtilityLibrary("ZNUTIL tour", (folder / "Tour.cfg").c_str(), false);
  TourMemory();
  TourLocks();
  TourStrings();
  TourContainers();
  TourCollections();
  TourClocks();
  TourThreads();
  TourValues();
  TourRegex();
  TourImages(argv[0]);
  TourPaths();
  TourLogging();
  TourConfiguration(folder);
  ShutdownUtilityLibrary();
  std::filesystem::path const log = folder / (std::string(UtilityApp::AppName().Chars()) + ".log");
  std::printf("== At the stop, %s holds:\n%s", log.c_str(), FileText(log).c_str());
  std::filesystem::remove(log);
  return 0;
}
