#include "core/corpus/startup.h"

#include <optional>

#include "core/corpus/conversion.h"
#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/corpus/note_journal.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::corpus {

std::u16string VersionString(int major, int minor, int revision) {
  return text::IntText(major) + u"." + text::IntText(minor) + u"." + text::IntText(revision);
}

std::optional<std::u16string> ReadStoredVersion(const std::filesystem::path& dataPath) {
  const auto path = dataPath / "ver.dax";
  if (!std::filesystem::exists(path)) return std::nullopt;
  const std::u16string text = ReadShiftJisFile(path);
  // The line ends at CR: a bare LF stays in the text, so a version written
  // with other line ends reads as another version.
  const auto end = text.find(u'\r');
  return text.substr(0, end == std::u16string::npos ? text.size() : end);
}

bool HasStartStores(const std::filesystem::path& dataPath) {
  for (const int group : kStartGroups) {
    for (const TableId id : GroupTables(group)) {
      std::error_code error;
      if (!std::filesystem::is_regular_file(TableFile(dataPath, id, ".dax"), error)) return false;
    }
  }
  return true;
}

StartupDecision DecideStartup(const std::filesystem::path& dataPath, std::u16string_view version) {
  StartupDecision decision;
  const std::optional<std::u16string> stored = ReadStoredVersion(dataPath);
  decision.versionRecorded = stored.has_value();
  if (stored) decision.storedVersion = *stored;
  if (stored && *stored == StoreVersion(version)) {
    decision.path = StartupPath::Current;
  } else if (!HasExports(dataPath) && HasStartStores(dataPath)) {
    decision.path = StartupPath::AsItIs;
  } else {
    decision.path = stored ? StartupPath::Reconvert : StartupPath::FirstRun;
  }
  return decision;
}

std::u16string AsItIsQuestion(const StartupDecision& decision) {
  std::u16string out = decision.versionRecorded
                           ? u"このデータフォルダの『翠蔵』データは、別の版（" +
                                 decision.storedVersion + u"）で作られたものです。\n"
                           : std::u16string(
                                 u"このデータフォルダの『翠蔵』データには、作った版の記録（ver."
                                 u"dax）がありません。\n");
  out +=
      u"変換に使う書き出しファイル（.dat）がないため、データを作り直すことはできません。\n"
      u"データは、このまま読むことができます。変換はせず、ver.dax も変えません。"
      u"ノートを編集したときだけ、そのノートをデータに書き込みます。\n\n"
      u"このまま開きますか。";
  return out;
}

void WriteVersion(const std::filesystem::path& dataPath, std::u16string_view version) {
  WriteFileWhole(dataPath / "ver.dax", text::EncodeSjis(std::u16string(version) + u"\r\n"));
}

std::u16string K3Line(std::u16string_view line) {
  const bool marked = line.find_first_of(u"“”") != std::u16string_view::npos ||
                      line.find(u"\"\"") != std::u16string_view::npos;
  if (!marked) return std::u16string(line);
  std::u16string out(line);
  for (const std::u16string_view mark : {u"““", u"””", u"“", u"”", u"\"\""}) {
    out = text::ReplaceAll(out, mark, u"´");
  }
  return out;
}

void K3Dat(const std::filesystem::path& exportFile, const std::filesystem::path& datFile) {
  std::u16string text;
  if (exportFile.extension() == ".k3x") {
    const std::string bytes = ReadFileBytes(exportFile);
    std::size_t start = bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE' ? 2 : 0;
    for (std::size_t i = start; i + 1 < bytes.size(); i += 2) {
      text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                    static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
  } else {
    text = ReadShiftJisFile(exportFile);
  }
  std::u16string out;
  for (auto line : text::Split(text, u"\n")) {
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    out += K3Line(line);
    out += u"\r\n";
  }
  if (!text.empty() && text.back() == u'\n') out.resize(out.size() - 2);  // no extra last line
  try {
    WriteFileWhole(datFile, text::EncodeSjis(out));
  } catch (const text::SjisEncodeError& e) {
    throw CorpusError({DisplayPath(exportFile)}, e.what());
  }
}

StartupReport OpenStore(Corpus& corpus, std::u16string_view version, const ImportOptions& options,
                        OutsideDatabase& outside, const AskAsItIs& ask) {
  StartupReport report;
  const auto& dataPath = corpus.dataPath();
  report.leftovers = FinishInterruptedConversion(dataPath);
  RemoveLeftoverTemporaries(dataPath);
  report.decision = DecideStartup(dataPath, version);
  // A store without ver.dax may yet have its product to export from.
  if (report.decision.path == StartupPath::AsItIs && !report.decision.versionRecorded &&
      outside.ExportTo(dataPath) && HasExports(dataPath)) {
    report.decision.path = StartupPath::FirstRun;
  }
  if (report.decision.path == StartupPath::AsItIs) {
    for (const int group : kStartGroups) corpus.ReadData(group);
    if (!ask || !ask(report.decision)) throw StartDeclined();
    report.openedAsItIs = true;
  }
  if (report.decision.path == StartupPath::Current || report.openedAsItIs) {
    // The store holds its notes: a pending mark left by a conversion killed
    // before its commit says nothing the store does not, and must not make a
    // later conversion take the older memo files for the store's notes.
    RemoveFile(dataPath / kNotesPending);
  } else {
    if (report.decision.path == StartupPath::FirstRun) outside.ExportTo(dataPath);
    if (!HasExports(dataPath))
      throw CorpusError({DisplayPath(dataPath)}, text::ToUtf8(kNoProductMessage));
    report.notesRestored = ConvertFolder(corpus, version, options).notesCarried;
    // The notes are in the new store already; the exit writes them again.
    if (report.notesRestored) corpus.DatDirty = corpus.HokDirty = corpus.SDatDirty = 1;
  }
  for (const int group : kStartGroups) corpus.ReadData(group);
  // Edits of a run that did not end cleanly.
  report.journalEntries = NoteJournal(dataPath).Replay(corpus);
  return report;
}

}  // namespace suizo::corpus
