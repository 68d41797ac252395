// ZnRegularExpression (with and without Optimize) against std::regex and
// POSIX regcomp/regexec, all ignoring case: counting the lines of 1 MiB of
// English-like text that hold a literal word, a word with a set, and one of
// five words; and two patterns that backtrack exponentially or cubically
// without the memo of failed states.
#include <regex.h>

#include <cstdint>
#include <functional>
#include <regex>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/regex/ZnRegularExpression.h>

namespace {

char const *const kPatterns[] = {"garden", "gr[ae]y", "river|mountain|forest|valley|ocean"};
char const *const kPatternNames[] = {"literal", "set", "alternation"};

char const *const kCommonWords[] = {
    "the", "of", "and", "a", "to", "in", "is", "was", "that", "for", "it", "with", "as", "his", "on", "be",
    "at", "by", "had", "not", "are", "but", "from", "or", "have", "an", "they", "which", "one", "you", "were",
    "her", "all", "she", "there", "would", "their", "we", "him", "been", "has", "when", "who", "will", "more",
    "no", "if", "out", "so", "said", "what", "up", "its", "about", "into", "than", "them", "can", "only"};
char const *const kRareWords[] = {
    "garden", "grey", "gray", "river", "mountain", "forest", "valley", "ocean", "morning", "evening", "window",
    "letter", "history", "village", "stranger", "journey", "winter", "summer", "harbour", "lantern", "granite",
    "gravel", "greyhound", "garland", "rivet", "forestall", "mount", "valleys", "oceanic", "grain", "great"};

// A deterministic generator, so that every run searches the same text.
class Lcg {
 public:
  std::uint32_t Next() {
    state_ = state_ * 6364136223846793005ull + 1442695040888963407ull;
    return static_cast<std::uint32_t>(state_ >> 33);
  }
  template <typename T, std::size_t N>
  char const *Pick(T const (&words)[N]) {
    return words[Next() % N];
  }

 private:
  std::uint64_t state_ = 20240611;
};

// Sentences of common words with a rare word now and then, capitalised,
// in lines of at most 72 characters, up to 1 MiB.
std::vector<std::string> MakeLines() {
  Lcg random;
  std::vector<std::string> lines;
  std::string line;
  std::size_t total = 0;
  bool sentenceStart = true;
  while (total < (1u << 20)) {
    std::string word = random.Next() % 8 == 0 ? random.Pick(kRareWords) : random.Pick(kCommonWords);
    if (sentenceStart) word[0] = static_cast<char>(word[0] - 'a' + 'A');
    sentenceStart = random.Next() % 10 == 0;
    if (sentenceStart) word += '.';
    if (line.size() + word.size() + 1 > 72) {
      total += line.size() + 1;
      lines.push_back(line);
      line.clear();
    }
    line += line.empty() ? word : " " + word;
  }
  return lines;
}

std::vector<std::string> const &Lines() {
  static std::vector<std::string> const lines = MakeLines();
  return lines;
}

std::int64_t TextBytes() {
  std::int64_t bytes = 0;
  for (std::string const &line : Lines()) bytes += static_cast<std::int64_t>(line.size()) + 1;
  return bytes;
}

template <typename Search>
void RunLines(benchmark::State &state, Search search) {
  std::int64_t matched = 0;
  for (auto _ : state) {
    matched = search();
    benchmark::DoNotOptimize(matched);
  }
  state.SetBytesProcessed(state.iterations() * TextBytes());
  state.counters["lines"] = static_cast<double>(matched);
  state.SetLabel(kPatternNames[state.range(0)]);
}

void BM_ZnRegularExpression(benchmark::State &state, bool optimize) {
  std::vector<ZnString> lines;
  for (std::string const &line : Lines()) lines.emplace_back(line.c_str());
  ZnRegularExpression expression(kPatterns[state.range(0)]);
  if (optimize) expression.Optimize();
  RunLines(state, [&] {
    std::int64_t matched = 0;
    for (ZnString const &line : lines) matched += expression.Matches(line);
    return matched;
  });
}

void BM_ZnRegex(benchmark::State &state) { BM_ZnRegularExpression(state, false); }
void BM_ZnRegexOptimized(benchmark::State &state) { BM_ZnRegularExpression(state, true); }

void BM_StdRegex(benchmark::State &state) {
  std::regex const expression(kPatterns[state.range(0)], std::regex::extended | std::regex::icase);
  RunLines(state, [&] {
    std::int64_t matched = 0;
    for (std::string const &line : Lines()) matched += std::regex_search(line, expression);
    return matched;
  });
}

void BM_Regexec(benchmark::State &state) {
  regex_t expression;
  if (regcomp(&expression, kPatterns[state.range(0)], REG_EXTENDED | REG_ICASE | REG_NOSUB) != 0) {
    state.SkipWithError("regcomp failed");
    return;
  }
  RunLines(state, [&] {
    std::int64_t matched = 0;
    for (std::string const &line : Lines()) matched += regexec(&expression, line.c_str(), 0, nullptr, 0) == 0;
    return matched;
  });
  regfree(&expression);
}

// Backtracking that the memo of failed states keeps linear (or quadratic):
// (a|aa)*(a|aa)*b over 1,000 lines of 40 a, and a? 3,000 times then a
// 3,000 times over 3,000 a. std::regex, a backtracker without such a memo,
// does not finish the first (exponential) and overflows its stack on the
// second, so glibc's regexec is the peer here.
struct BacktrackingCase {
  std::string pattern;
  std::vector<std::string> lines;
};

BacktrackingCase const &Backtracking(std::int64_t which) {
  static BacktrackingCase const cases[] = {
      {"(a|aa)*(a|aa)*b", std::vector<std::string>(1000, std::string(40, 'a'))},
      {[] {
         std::string pattern;
         for (int i = 0; i < 3000; ++i) pattern += "a?";
         return pattern + std::string(3000, 'a');
       }(),
       {std::string(3000, 'a')}},
  };
  return cases[which];
}

void RunBacktracking(benchmark::State &state, std::function<bool(std::string const &)> const &matches) {
  BacktrackingCase const &c = Backtracking(state.range(0));
  std::int64_t matched = 0;
  for (auto _ : state) {
    matched = 0;
    for (std::string const &line : c.lines) matched += matches(line);
    benchmark::DoNotOptimize(matched);
  }
  state.counters["lines"] = static_cast<double>(matched);
  state.SetLabel(state.range(0) == 0 ? "(a|aa)*(a|aa)*b" : "a?^3000 a^3000");
}

void BM_ZnRegexBacktracking(benchmark::State &state) {
  ZnRegularExpression expression(Backtracking(state.range(0)).pattern.c_str());
  expression.Optimize();
  RunBacktracking(state, [&](std::string const &line) {
    bool const found = expression.Matches(line.c_str());
    if (expression.GaveUp()) state.SkipWithError("gave up");
    return found;
  });
}

void BM_RegexecBacktracking(benchmark::State &state) {
  regex_t expression;
  if (regcomp(&expression, Backtracking(state.range(0)).pattern.c_str(), REG_EXTENDED | REG_ICASE | REG_NOSUB) != 0) {
    return state.SkipWithError("regcomp failed");
  }
  RunBacktracking(state, [&](std::string const &line) { return regexec(&expression, line.c_str(), 0, nullptr, 0) == 0; });
  regfree(&expression);
}

BENCHMARK(BM_ZnRegexBacktracking)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RegexecBacktracking)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);

BENCHMARK(BM_ZnRegex)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ZnRegexOptimized)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdRegex)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Regexec)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
