#include "core/corpus/outside_database.h"

#include <algorithm>
#include <cctype>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/text/like.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

std::filesystem::path Utf8Path(std::u16string_view text) {
  const std::string utf8 = text::ToUtf8(text);
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

[[noreturn]] void Stop(std::u16string_view message) {
  throw CorpusError({""}, text::ToUtf8(message));
}

}  // namespace

KiriInstall FindKiri(const std::function<bool(const std::filesystem::path&)>& exists) {
  const KiriInstall candidates[] = {
      {10, "C:/Program Files/K3/Kiri10/System/KIRI10.EXE"},
      {10, "C:/Program Files (x86)/K3/Kiri10/System/KIRI10.EXE"},
      {9, "C:/K3/KIRIV9/System/KIRI9.EXE"},
  };
  for (const KiriInstall& c : candidates) {
    if (exists(c.program)) return c;
  }
  return {};
}

std::string KiriCommandLine(const KiriInstall& install, const std::filesystem::path& commandFile) {
  return "\"" + DisplayPath(install.program) + "\" -R \"" + DisplayPath(commandFile) + "\"";
}

const std::vector<std::u16string>& KiriExportNames() {
  static const std::vector<std::u16string> names = {
      u"翠典資料",          u"翠典本文",         u"辞書事典",   u"注経本文",   u"年表",
      u"年表関連",          u"法華経",           u"法華経科文", u"法華経総科", u"本尊資料",
      u"史料ｼｽﾃﾑ/史料本文", u"史料ｼｽﾃﾑ/史料目次"};
  return names;
}

KiriDatabase::KiriDatabase(MachineAccess machine, std::string commandFile9,
                           std::string commandFile10, std::filesystem::path corpusFolder)
    : machine_(std::move(machine)),
      commandFile9_(std::move(commandFile9)),
      commandFile10_(std::move(commandFile10)),
      corpus_(std::move(corpusFolder)) {}

bool KiriDatabase::ExportTo(const std::filesystem::path& dataPath) {
  const text::LikePattern running(u"KIRI*.EXE");
  for (std::string name : machine_.processNames()) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return std::toupper(c); });
    if (running.Matches(text::FromUtf8(name))) Stop(kProductRunningMessage);
  }
  const KiriInstall install = FindKiri(machine_.exists);
  if (install.version == 0) return false;
  const bool ten = install.version == 10;
  if (!machine_.exists(corpus_ / (ten ? u8"翠典資料.TBX" : u8"翠典資料.TBL")))
    Stop(kCorpusMissingMessage);

  const auto commandFile = corpus_ / (ten ? "K3.cmx" : "K3.cmd");
  machine_.writeFile(commandFile, ten ? commandFile10_ : commandFile9_);
  machine_.runHidden(KiriCommandLine(install, commandFile));
  machine_.removeFile(commandFile);
  std::filesystem::create_directories(dataPath);
  for (const std::u16string& name : KiriExportNames()) {
    const auto source = corpus_ / Utf8Path(name + (ten ? u".k3x" : u".k3"));
    const auto stem =
        name.substr(name.find(u'/') == std::u16string::npos ? 0 : name.find(u'/') + 1);
    K3Dat(source, dataPath / Utf8Path(stem + u".dat"));
    machine_.removeFile(source);
  }
  // The corpus's images stand in folders named "*bmp" beside its tables.
  const text::LikePattern images(u"*bmp");
  if (std::filesystem::is_directory(corpus_)) {
    for (const auto& entry : std::filesystem::directory_iterator(corpus_)) {
      const auto name = entry.path().filename();
      if (!entry.is_directory() || !images.Matches(text::FromUtf8(DisplayPath(name)))) continue;
      std::filesystem::copy(entry.path(), dataPath / name,
                            std::filesystem::copy_options::recursive |
                                std::filesystem::copy_options::overwrite_existing);
    }
  }
  return true;
}

}  // namespace suizo::corpus
