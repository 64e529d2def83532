// The benchmark suite: one run on the full-scale corpus that prints a table,
// each figure beside what it is measured against in the same run: the
// machine's floor (reading the bytes, transcoding them), outside programs
// doing the same work (pcre2grep, ripgrep, iconv, cat), or the simple way
// of doing it. Then the same load, search and lookup at a quarter and a half
// of the corpus, to see how the cost grows.
//
// suizo-bench-suite [--bench-dir DIR] [--runs N]
// DIR holds render_bench and reader_steps_bench (default: beside this program).
#include <fcntl.h>
#include <spawn.h>
#include <sys/utsname.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "core/corpus/file_io.h"
#include "core/corpus/import.h"
#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/corpus/startup.h"
#include "core/reader/navigation.h"
#include "core/reader/writings_window.h"
#include "core/search/compilers.h"
#include "core/search/driver.h"
#include "core/text/like.h"
#include "core/text/utf16.h"
#include "core/views/chronology.h"
#include "core/views/contents.h"
#include "core/views/dictionary.h"
#include "core/views/dictionary_lookup.h"
#include "core/views/record.h"
#include "core/views/selection_dialog.h"
#include "full_corpus.h"

extern char** environ;

namespace suizo::bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kStartGroups[] = {0, 1, 2, 6};
int gRuns = 7;

double Ms(Clock::duration d) {
  return std::chrono::duration<double, std::milli>(d).count();
}

// The median of `runs` timings of `work`, in milliseconds.
double Median(int runs, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto start = Clock::now();
    work();
    times.push_back(Ms(Clock::now() - start));
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

// Two ways of the same work, timed in turn so that a slow moment of a shared
// machine falls on both: the medians of each.
std::pair<double, double> Paired(int runs, const std::function<void()>& a,
                                 const std::function<void()>& b) {
  std::vector<double> ta, tb;
  for (int i = 0; i < runs; ++i) {
    auto start = Clock::now();
    a();
    ta.push_back(Ms(Clock::now() - start));
    start = Clock::now();
    b();
    tb.push_back(Ms(Clock::now() - start));
  }
  std::sort(ta.begin(), ta.end());
  std::sort(tb.begin(), tb.end());
  return {ta[ta.size() / 2], tb[tb.size() / 2]};
}

// Pushes every earlier byte out of the caches, so that a run at any size
// starts from memory as a run at full size must.
void FlushCaches() {
  static std::vector<std::uint64_t> scratch(128u << 17);  // 128 MB
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < scratch.size(); i += 8) sum += ++scratch[i];
  if (sum == 1) std::abort();  // never: keeps the loop
}

// The median of cold runs.
double ColdMedian(int runs, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    FlushCaches();
    const auto start = Clock::now();
    work();
    times.push_back(Ms(Clock::now() - start));
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

bool OnPath(const std::string& program) {
  const char* path = std::getenv("PATH");
  std::stringstream dirs(path != nullptr ? path : "");
  for (std::string dir; std::getline(dirs, dir, ':');) {
    if (!dir.empty() && ::access((fs::path(dir) / program).c_str(), X_OK) == 0) return true;
  }
  return false;
}

// An outside program, its output kept or thrown away, with its wall time.
struct Ran {
  double ms = 0;
  int status = -1;
  std::string out;
};

Ran Run(const std::vector<std::string>& args, bool keepOutput) {
  std::vector<char*> argv;
  for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  int pipeFds[2];
  if (::pipe(pipeFds) != 0) return {};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  if (keepOutput) {
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 1);
  } else {
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  }
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addclose(&actions, pipeFds[0]);
  Ran ran;
  const auto start = Clock::now();
  pid_t pid = 0;
  const int spawned = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(pipeFds[1]);
  char buffer[4096];
  for (ssize_t n; (n = ::read(pipeFds[0], buffer, sizeof buffer)) > 0;)
    ran.out.append(buffer, static_cast<std::size_t>(n));
  ::close(pipeFds[0]);
  if (spawned != 0) return ran;
  int status = 0;
  ::waitpid(pid, &status, 0);
  ran.ms = Ms(Clock::now() - start);
  ran.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return ran;
}

// The median wall time of an outside program; its output from the last run.
Ran RunMedian(int runs, const std::vector<std::string>& args, bool keepOutput) {
  std::vector<double> times;
  Ran last;
  for (int i = 0; i < runs; ++i) {
    last = Run(args, keepOutput);
    times.push_back(last.ms);
  }
  std::sort(times.begin(), times.end());
  last.ms = times[times.size() / 2];
  return last;
}

std::vector<fs::path> StartFiles(const fs::path& store) {
  corpus::Corpus names(store);
  std::vector<fs::path> files;
  for (const int group : kStartGroups) {
    for (const auto id : corpus::GroupTables(group)) files.push_back(names.FilePath(id, ".dax"));
  }
  return files;
}

std::int64_t Bytes(const std::vector<fs::path>& files) {
  std::int64_t total = 0;
  for (const auto& f : files) total += static_cast<std::int64_t>(fs::file_size(f));
  return total;
}

std::vector<fs::path> Exports(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".dat") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// --- the table ---

struct Row {
  std::string what;
  std::string figure;
  std::string against;
  std::string ratio;
  std::string goal;
};

std::string Fixed(double v, int digits = 1) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", digits, v);
  return text;
}
std::string MsText(double ms) {
  return ms < 10 ? Fixed(ms, 2) + " ms" : Fixed(ms, 1) + " ms";
}

void Print(const std::string& title, const std::vector<Row>& rows,
           const std::string& header = "| what | figure | measured against | ratio | goal |") {
  std::cout << "\n### " << title << "\n\n" << header << "\n|---|---|---|---|---|\n";
  for (const Row& r : rows) {
    std::cout << "| " << r.what << " | " << r.figure << " | " << r.against << " | " << r.ratio
              << " | " << r.goal << " |\n";
  }
  std::cout.flush();
}

std::string Verdict(bool met) {
  return met ? "met" : "**missed**";
}

// --- the corpus ---

// A corpus written, converted and loaded as the program starts.
struct Store {
  fs::path folder;
  double convertMs = 0;
  std::unique_ptr<corpus::Corpus> corpus;
  corpus::Selection selection;

  Store(const fs::path& where, int percent, bool timeConversion) : folder(where) {
    WriteCorpus(folder, percent);
    const auto convert = [&] {
      corpus::Corpus imported(folder);
      corpus::ReadDataFirst(imported, corpus::ImportOptionsFor(folder));
    };
    convertMs = timeConversion ? Median(3, convert) : (convert(), 0.0);
    corpus = std::make_unique<corpus::Corpus>(folder);
    for (const int group : {0, 1, 2, 3, 6}) corpus->ReadData(group);
    corpus::InitialOrders(*corpus, selection);
  }
};

double ColdLoadMs(const fs::path& folder) {
  return ColdMedian(gRuns, [&] {
    corpus::Corpus c(folder);
    for (const int group : kStartGroups) c.ReadData(group);
  });
}

// The writings' pane 0 as one line per main text, for the line tools.
fs::path ExportPane0(const Store& s, const fs::path& file) {
  const auto table = search::TextTable::Writings(*s.corpus, s.selection);
  std::ofstream out(file, std::ios::binary);
  search::Position p{1, 1, {}};
  table.ScanStart(p, false);
  for (;;) {
    for (const int column : {table.PaneColumn(0), search::TextTable::kSecondMainColumn}) {
      std::u16string line(table.Text(p.Lpos, column));
      std::replace(line.begin(), line.end(), u'\n', u' ');
      std::replace(line.begin(), line.end(), u'\r', u' ');
      out << text::ToUtf8(line) << '\n';
    }
    const int before = p.Lpos;
    table.Down(p, false);
    if (p.Lpos == before) break;
  }
  return file;
}

struct WordSearch {
  const char16_t* box;
  search::Method method;
  const char* name;
};
constexpr WordSearch kWordSearches[] = {
    {u"題目　功徳", search::Method::And, "AND 2 words"},
    {u"浄土　弥陀　宝塔", search::Method::Or, "OR 3 words"},
    {u"候", search::Method::Not, "NOT 1 word"},
};

struct EngineRun {
  double ms = 0;
  int hits = 0;
};

EngineRun EngineSearch(const Store& s, const char16_t* box, search::Method method, int divMode,
                       bool cold = false) {
  corpus::Settings settings;
  settings.AutoDiv = 0;  // each query measures one kind of search
  search::SearchEngine engine(search::TextTable::Writings(*s.corpus, s.selection), settings);
  EngineRun r;
  r.ms = (cold ? ColdMedian : Median)(gRuns, [&] {
    engine.pos = {1, 1, {}};
    engine.Combo1 = box;
    engine.SrMethod = method;
    engine.DivMode = divMode;
    engine.Kensaku(0);
  });
  r.hits = engine.Srn;
  return r;
}

// The split search against the simple way: each character's wildcard test
// "*c*" run on every line, as the engine's scoring is defined. Timed in turn.
std::pair<EngineRun, EngineRun> SplitAgainstNaive(const Store& s, const std::u16string& box) {
  corpus::Settings settings;
  settings.AutoDiv = 0;
  search::SearchEngine engine(search::TextTable::Writings(*s.corpus, s.selection), settings);
  const auto query = search::SplitQuery::Compile(box, 1, search::SearchWindow::Writings, 1);
  std::vector<text::LikePattern> likes;
  for (const std::u16string& entry : query->Sw()) likes.emplace_back(u"*" + entry + u"*");
  const auto table = search::TextTable::Writings(*s.corpus, s.selection);
  EngineRun fast, naive;
  const auto [engineMs, naiveMs] = Paired(
      gRuns,
      [&] {
        engine.pos = {1, 1, {}};
        engine.Combo1 = box;
        engine.SrMethod = search::Method::And;
        engine.DivMode = 1;
        engine.Kensaku(0);
      },
      [&] {
        naive.hits = 0;
        search::Position p{1, 1, {}};
        table.ScanStart(p, false);
        for (;;) {
          const std::u16string_view field = table.Text(p.Lpos, table.PaneColumn(0));
          int count = 0;
          for (const text::LikePattern& like : likes) count += like.Matches(field) ? 1 : 0;
          if (count >= query->Required()) ++naive.hits;
          const int before = p.Lpos;
          table.Down(p, false);
          if (p.Lpos == before) break;
        }
      });
  fast.ms = engineMs;
  fast.hits = engine.Srn;
  naive.ms = naiveMs;
  return {fast, naive};
}

// Twenty selections a reader might make: pieces of the writings' main text.
std::vector<std::u16string> Selections(const Store& s) {
  const auto table = search::TextTable::Writings(*s.corpus, s.selection);
  std::vector<std::u16string> picks;
  const int step = std::max(1, s.corpus->DasMaxY / 23);
  for (int lpos = step; lpos <= s.corpus->DasMaxY && picks.size() < 20; lpos += step) {
    const std::u16string_view line = table.Text(lpos, table.PaneColumn(0));
    const std::size_t length = 2 + picks.size() % 7;
    if (line.size() < length + 4) continue;
    const std::u16string_view piece = line.substr(3, length);
    if (piece.find_first_of(u"\r\n 　") != std::u16string_view::npos) continue;
    picks.emplace_back(piece);
  }
  return picks;
}

// Twenty lookups on one kept object, each run from emptied caches.
double ColdLookupsMs(const Store& s, const std::vector<std::u16string>& picks) {
  const views::DictionaryLookup kept(*s.corpus, 1);
  for (const auto& p : picks) kept.KensakuDic(p, 0);  // the window's patterns, compiled once
  return ColdMedian(gRuns, [&] {
    for (const auto& p : picks) kept.KensakuDic(p, 0);
  });
}

// A benchmark of another program of the suite, by name, from its JSON.
std::optional<double> BenchFigure(const std::vector<std::string>& command,
                                  const std::string& name) {
  const Ran ran = Run(command, true);
  if (ran.status != 0) return std::nullopt;
  const std::regex figure("\"name\": \"" + name + "\"[^}]*?\"real_time\": ([0-9.e+-]+)");
  std::smatch m;
  if (!std::regex_search(ran.out, m, figure)) return std::nullopt;
  return std::stod(m[1]);
}

// This process's peak resident memory in kB. Not `getrusage`: Linux carries
// the spawning process's peak across `exec` into that figure.
long PeakKb() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmHWM:", 0) == 0) return std::atol(line.c_str() + 6);
  }
  return 0;
}

// The peak memory of a fresh process that loads the start's groups, and
// what it held before.
int MemoryProbe(const char* folder) {
  const long before = PeakKb();
  corpus::Corpus c{fs::path(folder)};
  for (const int group : kStartGroups) c.ReadData(group);
  std::printf("%ld %ld\n", PeakKb(), before);
  return 0;
}

std::string Machine() {
  std::string cpu = "unknown";
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);) {
    if (line.rfind("model name", 0) == 0) {
      cpu = line.substr(line.find(':') + 2);
      break;
    }
  }
  long memKb = 0;
  std::ifstream mem("/proc/meminfo");
  for (std::string line; std::getline(mem, line);) {
    if (line.rfind("MemTotal:", 0) == 0) memKb = std::atol(line.c_str() + 9);
  }
  utsname u{};
  ::uname(&u);
  std::ostringstream out;
  out << cpu << ", " << std::thread::hardware_concurrency() << " threads, " << memKb / 1024 / 1024
      << " GiB; " << u.sysname << " " << u.release << "; " << __VERSION__;
  return out.str();
}

int Main(int argc, char** argv) {
  fs::path benchDir = fs::canonical("/proc/self/exe").parent_path();
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--memory-probe" && i + 1 < argc) return MemoryProbe(argv[i + 1]);
    if (arg == "--bench-dir" && i + 1 < argc) {
      benchDir = argv[++i];
    } else if (arg == "--runs" && i + 1 < argc) {
      gRuns = std::max(1, std::atoi(argv[++i]));
    } else {
      std::cerr << "usage: suizo-bench-suite [--bench-dir DIR] [--runs N]\n";
      return 2;
    }
  }
  const fs::path work = fs::temp_directory_path() / ("suizo-suite-" + std::to_string(::getpid()));
  std::cout << "Machine: " << Machine() << "\nRuns: median of " << gRuns
            << " (conversion, placements and the start: of 3); compared figures timed in turn\n";

  std::cerr << "writing and converting the full-scale corpus...\n";
  Store full(work / "full", 100, true);
  const auto startFiles = StartFiles(full.folder);
  const std::int64_t startBytes = Bytes(startFiles);
  std::vector<Row> rows;

  // Load against the bytes read.
  std::cerr << "load...\n";
  const auto [load, readLoop] = Paired(
      gRuns,
      [&] {
        corpus::Corpus c(full.folder);
        for (const int group : kStartGroups) c.ReadData(group);
      },
      [&] {
        for (const auto& f : startFiles) {
          if (corpus::ReadFileBytes(f).empty()) std::abort();
        }
      });
  std::vector<std::string> cat = {"cat"};
  for (const auto& f : startFiles) cat.push_back(f.string());
  const Ran catRun = RunMedian(gRuns, cat, false);
  rows.push_back(
      {"load of groups 0, 1, 2, 6 (" + Fixed(static_cast<double>(startBytes) / 1e6) +
           " MB of .dax)",
       MsText(load), "read loop " + MsText(readLoop) + "; `cat` to /dev/null " + MsText(catRun.ms),
       Fixed(load / readLoop, 2) + "× the read loop", "≤ 3×: " + Verdict(load <= 3 * readLoop)});

  // Conversion against transcoding alone.
  std::cerr << "conversion...\n";
  std::vector<std::string> iconv = {"iconv", "-f", "CP932", "-t", "UTF-16LE"};
  std::int64_t exportBytes = 0;
  for (const auto& f : Exports(full.folder)) {
    iconv.push_back(f.string());
    exportBytes += static_cast<std::int64_t>(fs::file_size(f));
  }
  const Ran iconvRun = RunMedian(3, iconv, false);
  rows.push_back(
      {"full conversion .dat → .dax (" + Fixed(static_cast<double>(exportBytes) / 1e6) + " MB)",
       MsText(full.convertMs), "`iconv -f CP932 -t UTF-16LE` " + MsText(iconvRun.ms),
       Fixed(full.convertMs / iconvRun.ms, 2) + "×", "≤ 5 s: " + Verdict(full.convertMs <= 5000)});

  // Word search against the line tools on the same text.
  std::cerr << "word search...\n";
  const fs::path lines = ExportPane0(full, work / "pane0.txt");
  const bool haveRg = OnPath("rg");
  for (const WordSearch& w : kWordSearches) {
    const EngineRun engine = EngineSearch(full, w.box, w.method, 0);
    const auto query = search::WordQuery::Compile(w.box, w.method, 1);
    const std::string pattern = text::ToUtf8(query->pattern());
    const Ran grep =
        RunMedian(gRuns, {"pcre2grep", "-u", "-c", "-e", pattern, lines.string()}, true);
    std::string against = "`pcre2grep` " + MsText(grep.ms) + " (" +
                          std::to_string(std::atoi(grep.out.c_str())) + " lines)";
    if (haveRg) {
      const Ran rg = RunMedian(gRuns, {"rg", "-P", "-c", "-e", pattern, lines.string()}, true);
      against += "; `rg -P` " + MsText(rg.ms);
    }
    rows.push_back({std::string("word search, ") + w.name + ", pane 0, " +
                        std::to_string(full.corpus->DasMaxY) + " lines",
                    MsText(engine.ms) + " (" + std::to_string(engine.hits) + " rows)", against,
                    Fixed(engine.ms / grep.ms, 2) + "× pcre2grep",
                    "≤ 1×: " + Verdict(engine.ms <= grep.ms)});
  }

  // Split search against the simple wildcard test.
  std::cerr << "split search...\n";
  const std::array<std::u16string, 3> splits = {u"功徳莫大", u"読誦の功徳をよろこび",
                                                u"衆生の心を見まゐらせ題目の声はいかにも尊し"};
  for (const std::u16string& box : splits) {
    const auto [engine, naive] = SplitAgainstNaive(full, box);
    rows.push_back({"split search of " + std::to_string(box.size()) + " characters",
                    MsText(engine.ms), "wildcard test per character " + MsText(naive.ms),
                    Fixed(naive.ms / engine.ms, 1) + "× faster",
                    "≥ 5×: " + Verdict(naive.ms >= 5 * engine.ms)});
  }

  // Lookups against compiling per lookup.
  std::cerr << "lookups...\n";
  const auto picks = Selections(full);
  double kept = 0, fresh = 0;
  {
    const views::DictionaryLookup window(*full.corpus, 1);
    for (const auto& p : picks) window.KensakuDic(p, 0);  // the window's patterns, compiled once
    std::tie(kept, fresh) = Paired(
        gRuns,
        [&] {
          for (const auto& p : picks) window.KensakuDic(p, 0);
        },
        [&] {
          for (const auto& p : picks) views::DictionaryLookup(*full.corpus, 1).KensakuDic(p, 0);
        });
  }
  rows.push_back({"dictionary lookup of " + std::to_string(picks.size()) + " selections (" +
                      std::to_string(full.corpus->DisMaxY) + " entries)",
                  MsText(kept), "patterns compiled per lookup " + MsText(fresh),
                  Fixed(fresh / kept, 1) + "× faster", "≥ 3×: " + Verdict(fresh >= 3 * kept)});

  // The placements alone, each collection.
  {
    double worst = 0;
    std::string worstName;
    for (const corpus::Collection& c : corpus::kCollections) {
      const double ms = Median(3, [&] {
        full.selection.Gk = c.gk;
        full.selection.MokRedo = 1;
        corpus::ApplySelection(*full.corpus, full.selection);
      });
      if (ms > worst) {
        worst = ms;
        worstName = text::ToUtf8(c.label);
      }
    }
    full.selection.Gk = 0;
    full.selection.MokRedo = 1;
    corpus::ApplySelection(*full.corpus, full.selection);
    rows.push_back({"placement of a collection (`ConvMok`), each collection",
                    "worst " + MsText(worst) + " (" + worstName + ")", "none", "",
                    "< 20 ms: " + Verdict(worst < 20)});
  }

  // A change of collection with five windows open.
  std::cerr << "change of collection...\n";
  {
    corpus::Settings settings;
    std::unique_ptr<reader::Navigator> navigator;
    const views::DictionaryLookup lookup(*full.corpus, 1);
    reader::WindowRegistry windows(
        [&](reader::FormKind kind) -> std::unique_ptr<reader::OpenWindow> {
          switch (kind) {
            case reader::FormKind::Form9:
              return std::make_unique<views::ContentsWindow>(
                  views::ContentsKind::Writings, *full.corpus, full.selection, settings);
            case reader::FormKind::Form2:
              return std::make_unique<reader::WritingsWindow>(*full.corpus, full.selection,
                                                              settings, *navigator);
            case reader::FormKind::Form5:
              return std::make_unique<views::RecordWindow>(*full.corpus, full.selection, settings);
            case reader::FormKind::Form12:
              return std::make_unique<views::ChronologyWindow>(*full.corpus, full.selection,
                                                               settings);
            case reader::FormKind::Form6:
              return std::make_unique<views::DictionaryWindow>(*full.corpus, full.selection,
                                                               settings, lookup);
            default:
              return nullptr;
          }
        });
    navigator = std::make_unique<reader::Navigator>(*full.corpus, windows);
    windows.Single(reader::FormKind::Form9);
    navigator->GoHonbun(u"", 40, 0, search::Method::And, 0, reader::kWritingsFamily);
    navigator->GoMok(u"", 40, reader::kWritingsFamily);
    navigator->GoNen(u"", 40, reader::kWritingsFamily);
    navigator->GoJisho(u"法華経", reader::kWritingsFamily);
    double worst = 0;
    std::string worstName;
    std::string each;
    for (const corpus::Collection& c : corpus::kCollections) {
      const double ms = Median(3, [&] {
        full.selection.Gk = c.gk;
        full.selection.MokRedo = 1;
        views::ConvSui(*full.corpus, full.selection, windows);
      });
      each += (each.empty() ? "" : ", ") + text::ToUtf8(c.label) + " " + Fixed(ms, 1);
      if (ms > worst) {
        worst = ms;
        worstName = text::ToUtf8(c.label);
      }
    }
    // Back to the system order, which the rest of the suite reads.
    full.selection.Gk = 0;
    full.selection.MokRedo = 1;
    views::ConvSui(*full.corpus, full.selection, windows);
    rows.push_back({"`ConvSui` with five windows, each collection",
                    "worst " + MsText(worst) + " (" + worstName + ")",
                    "none (ms each: " + each + ")", "", "< 50 ms: " + Verdict(worst < 50)});
  }

  // The page and the window, from their own benchmarks.
  std::cerr << "page render and window step...\n";
  const fs::path render = benchDir / "render_bench";
  for (const auto& [name, what] :
       {std::pair<std::string, std::string>{"BM_RenderVertical/24",
                                            "vertical page render (24 columns)"},
        {"BM_RenderHorizontalWithHits", "horizontal page render with hits"}}) {
    if (const auto page = BenchFigure(
            {render.string(), "--benchmark_filter=" + name, "--benchmark_format=json"}, name)) {
      rows.push_back(
          {what, Fixed(*page, 0) + " µs", "none", "", "< 2 ms: " + Verdict(*page < 2000)});
    } else {
      rows.push_back({what, "not run: " + render.string() + " failed", "", "", ""});
    }
  }
  const fs::path steps = benchDir / "reader_steps_bench";
  std::vector<std::string> stepCommand = {steps.string(), "--benchmark_filter=BM_VerticalPageStep",
                                          "--benchmark_format=json"};
  if (std::getenv("DISPLAY") == nullptr && OnPath("xvfb-run")) {
    stepCommand.insert(stepCommand.begin(), {"xvfb-run", "-a", "-s", "-screen 0 1600x1000x24"});
  }
  if (!fs::exists(steps)) {
    rows.push_back(
        {"key step in the vertical reader window", "not built (no desktop program)", "", "", ""});
  } else if (const auto step =
                 BenchFigure(stepCommand, "BM_VerticalPageStep/iterations:200/manual_time")) {
    rows.push_back({"key step in the vertical reader window, to both panes laid out", MsText(*step),
                    "none", "", "< 30 ms: " + Verdict(*step < 30)});
  } else {
    rows.push_back({"key step in the vertical reader window",
                    "not run: " + steps.string() + " failed", "", "", ""});
  }

  // The start of the desktop program on the converted store.
  const fs::path startup = benchDir.parent_path() / "src" / "app" / "suizo-startup-time";
  if (fs::exists(startup)) {
    corpus::WriteVersion(full.folder, u"" SUIZO_VERSION_U16);
    std::vector<std::string> command = {startup.string(), full.folder.string()};
    if (std::getenv("DISPLAY") == nullptr && OnPath("xvfb-run")) {
      command.insert(command.begin(), {"xvfb-run", "-a", "-s", "-screen 0 1600x1000x24"});
    }
    std::vector<double> starts;
    for (int i = 0; i < 3; ++i) {
      const Ran ran = Run(command, true);
      std::smatch m;
      if (ran.status == 0 &&
          std::regex_search(
              ran.out, m,
              std::regex("fast path start to the contents window shown: ([0-9]+) ms"))) {
        starts.push_back(std::stod(m[1]));
      }
    }
    if (starts.empty()) {
      rows.push_back({"start to the contents window shown",
                      "not run: " + startup.string() + " failed", "", "", ""});
    } else {
      std::sort(starts.begin(), starts.end());
      const double start = starts[starts.size() / 2];
      rows.push_back(
          {"start to the contents window shown (median of " + std::to_string(starts.size()) + ")",
           MsText(start), "none", "", "< 2 s: " + Verdict(start < 2000)});
    }
  }

  // Memory after the start against the size of what it read.
  std::cerr << "memory...\n";
  const Ran probe =
      Run({fs::canonical("/proc/self/exe").string(), "--memory-probe", full.folder.string()}, true);
  double peakKb = 0, baseKb = 0;
  std::istringstream(probe.out) >> peakKb >> baseKb;
  const double daxMb = static_cast<double>(startBytes) / 1048576.0;
  rows.push_back({"peak memory after the start (the process before loading: " +
                      Fixed(baseKb / 1024.0) + " MB)",
                  Fixed(peakKb / 1024.0) + " MB", "the .dax files read " + Fixed(daxMb) + " MB",
                  Fixed(peakKb / 1024.0 / daxMb, 2) + "×; loaded data " +
                      Fixed((peakKb - baseKb) / 1024.0 / daxMb, 2) + "×",
                  "—"});
  Print("Against peers and the machine (full-scale corpus)", rows);

  // Growth with size.
  std::cerr << "growth with size...\n";
  struct Point {
    int percent;
    double mb, read, load, search, lookups;
    int lines, entries;
  };
  std::vector<Point> points;
  for (const int percent : {25, 50, 100}) {
    std::optional<Store> part;
    const Store* s = &full;
    if (percent != 100)
      s = &part.emplace(work / ("part" + std::to_string(percent)), percent, false);
    const auto files = StartFiles(s->folder);
    const double read = ColdMedian(gRuns, [&] {
      for (const auto& f : files) {
        if (corpus::ReadFileBytes(f).empty()) std::abort();
      }
    });
    // The same twenty selections at every size, every run from memory.
    points.push_back({percent, static_cast<double>(Bytes(files)) / 1e6, read, ColdLoadMs(s->folder),
                      EngineSearch(*s, kWordSearches[0].box, kWordSearches[0].method, 0, true).ms,
                      ColdLookupsMs(*s, picks), s->corpus->DasMaxY, s->corpus->DisMaxY});
  }
  std::vector<Row> growth;
  const Point& quarter = points.front();
  const Point& whole = points.back();
  const auto line = [](const std::string& what, double t25, double t50, double t100, double size25,
                       double size100) {
    const double grew = (t100 / t25) / (size100 / size25);
    return Row{what, MsText(t25) + " / " + MsText(t50) + " / " + MsText(t100),
               "size × " + Fixed(size100 / size25, 2) + " from 25 % to 100 %",
               "time × " + Fixed(t100 / t25, 2),
               grew < 1.25 ? "linear (" + Fixed(grew, 2) + ")"
                           : "**faster than linear** (" + Fixed(grew, 2) + ")"};
  };
  growth.push_back(line("read loop of the same files (the floor)", quarter.read, points[1].read,
                        whole.read, quarter.mb, whole.mb));
  growth.push_back(line("load (MB of .dax: " + Fixed(quarter.mb) + " / " + Fixed(points[1].mb) +
                            " / " + Fixed(whole.mb) + ")",
                        quarter.load, points[1].load, whole.load, quarter.mb, whole.mb));
  growth.push_back(
      line("word search AND (lines: " + std::to_string(quarter.lines) + " / " +
               std::to_string(points[1].lines) + " / " + std::to_string(whole.lines) + ")",
           quarter.search, points[1].search, whole.search, quarter.lines, whole.lines));
  growth.push_back(
      line("20 lookups (entries: " + std::to_string(quarter.entries) + " / " +
               std::to_string(points[1].entries) + " / " + std::to_string(whole.entries) + ")",
           quarter.lookups, points[1].lookups, whole.lookups, quarter.entries, whole.entries));
  Print(
      "Growth with size: 25 % / 50 % / 100 % of the corpus, each run with the caches emptied first",
      growth, "| what | 25 % / 50 % / 100 % | size | time | growth (time over size) |");

  fs::remove_all(work);
  return 0;
}

}  // namespace
}  // namespace suizo::bench

int main(int argc, char** argv) {
  try {
    return suizo::bench::Main(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "suizo-bench-suite: " << e.what() << "\n";
    return 2;
  }
}
