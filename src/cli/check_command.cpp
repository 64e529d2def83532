#include <iomanip>
#include <optional>
#include <sstream>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/bookmarks.h"
#include "core/corpus/file_io.h"
#include "core/corpus/folder_check.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

using corpus::FolderFindings;
using corpus::SchemaOf;
using text::ToUtf8;

// The verdict "refused": the folder would not open.
constexpr int kRefused = 1;

std::string Text(const std::string& utf8) {
  return text::JsonString(text::FromUtf8(utf8));
}

std::string FieldName(corpus::TableId id, int field) {
  return ToUtf8(SchemaOf(id).fields[static_cast<std::size_t>(field)]);
}

std::string_view PathWord(corpus::StartupPath path) {
  switch (path) {
    case corpus::StartupPath::Current:
      return "current";
    case corpus::StartupPath::Reconvert:
      return "reconvert";
    case corpus::StartupPath::FirstRun:
      return "first-run";
    case corpus::StartupPath::AsItIs:
      return "as-it-is";
  }
  return "";
}

void PrintText(std::ostream& out, const FolderFindings& f) {
  out << "data folder: " << corpus::DisplayPath(f.folder) << "\n";
  out << "version: "
      << (f.decision.versionRecorded ? ToUtf8(f.decision.storedVersion)
                                     : std::string("none (no ver.dax)"))
      << " (this program's stores hold " << ToUtf8(f.ourVersion) << ")\n\n";
  if (!f.stores.empty()) out << "table  file            fields   rows\n";
  for (const auto& s : f.stores) {
    const auto& schema = SchemaOf(s.id);
    PrintStoreName(out, schema);
    if (!s.present) {
      out << "(no file)\n";
    } else if (!s.fault.empty()) {
      out << "refused: " << s.fault << "\n";
    } else {
      std::ostringstream fields;
      fields << s.fields << "/" << schema.FieldMax();
      out << std::right << std::setw(6) << fields.str() << std::setw(7) << s.rows;
      if (s.fields < schema.FieldMax()) {
        out << "  (fields " << s.fields + 1 << " to " << schema.FieldMax()
            << " read empty: " << FieldName(s.id, s.fields + 1)
            << (s.fields + 1 < schema.FieldMax() ? " ..." : "") << ")";
      }
      out << "\n";
    }
  }
  out << "\nexports: ";
  if (f.exports.empty())
    out << "none";
  else
    out << f.exports.size() << " of " << corpus::kTableCount;
  if (!f.exports.empty() && f.exports.size() < static_cast<std::size_t>(corpus::kTableCount)) {
    const char* sep = ": ";
    for (const auto id : f.exports) {
      out << sep << SchemaOf(id).stem << ".dat";
      sep = ", ";
    }
  }
  out << "\n";
  int total = 0;
  for (const auto& n : f.notes) total += n.count;
  out << "notes: " << total;
  const char* sep = " (";
  for (const auto& n : f.notes) {
    out << sep << SchemaOf(n.table).stem << " " << FieldName(n.table, n.field) << " " << n.count;
    sep = ", ";
  }
  out << (f.notes.empty() ? "" : ")") << "\n";
  if (f.journalEntries > 0) {
    out << "note edits in notes.journal, put back at the next start: " << f.journalEntries << "\n";
  }
  if (f.notesPending)
    out << "notes.pending: a conversion was cut while the notes were in the memo files\n";
  out << "bookmarks set: " << f.bookmarks << " of " << 3 * corpus::kBookmarks << "\n";
  out << "left by a killed write: ";
  if (f.leftovers.empty()) out << "none";
  sep = "";
  for (const auto& name : f.leftovers) {
    out << sep << name;
    sep = ", ";
  }
  out << "\ncorpus font: "
      << (f.font ? "found: " + corpus::DisplayPath(f.font->filename()) : std::string("not found"))
      << "\n\n";
  out << "verdict: " << corpus::VerdictText(f.verdict) << "\n";
  out << "why: " << f.reason << "\n";
  for (const auto& w : f.warnings) out << "warning: " << w << "\n";
}

void PrintJson(std::ostream& out, const FolderFindings& f) {
  out << "{\"folder\":" << Text(corpus::DisplayPath(f.folder)) << ",\"version\":"
      << (f.decision.versionRecorded ? text::JsonString(f.decision.storedVersion) : "null")
      << ",\"ourVersion\":" << text::JsonString(f.ourVersion) << ",\"path\":\""
      << PathWord(f.decision.path) << "\""
      << ",\"stores\":[";
  const char* sep = "";
  for (const auto& s : f.stores) {
    const auto& schema = SchemaOf(s.id);
    out << sep << "{\"table\":\"" << schema.name
        << "\",\"file\":" << Text(std::string(schema.stem) + ".dax")
        << ",\"present\":" << (s.present ? "true" : "false") << ",\"fields\":" << s.fields
        << ",\"fieldMax\":" << schema.FieldMax() << ",\"fewestFields\":" << schema.FewestFields()
        << ",\"rows\":" << s.rows << ",\"fault\":" << (s.fault.empty() ? "null" : Text(s.fault))
        << "}";
    sep = ",";
  }
  out << "],\"exports\":[";
  sep = "";
  for (const auto id : f.exports) {
    out << sep << Text(std::string(SchemaOf(id).stem) + ".dat");
    sep = ",";
  }
  out << "],\"exportFault\":" << (f.exportFault.empty() ? "null" : Text(f.exportFault))
      << ",\"notes\":[";
  sep = "";
  for (const auto& n : f.notes) {
    out << sep << "{\"table\":\"" << SchemaOf(n.table).name << "\",\"field\":" << n.field
        << ",\"name\":" << Text(FieldName(n.table, n.field)) << ",\"count\":" << n.count << "}";
    sep = ",";
  }
  out << "],\"journalEntries\":" << f.journalEntries
      << ",\"notesPending\":" << (f.notesPending ? "true" : "false")
      << ",\"bookmarks\":" << f.bookmarks << ",\"leftovers\":[";
  sep = "";
  for (const auto& name : f.leftovers) {
    out << sep << Text(name);
    sep = ",";
  }
  out << "],\"commitUnderway\":" << (f.commitUnderway ? "true" : "false")
      << ",\"font\":" << (f.font ? Text(corpus::DisplayPath(*f.font)) : "null") << ",\"verdict\":\""
      << corpus::VerdictWord(f.verdict) << "\",\"verdictText\":\"" << corpus::VerdictText(f.verdict)
      << "\",\"reason\":" << Text(f.reason) << ",\"warnings\":[";
  sep = "";
  for (const auto& w : f.warnings) {
    out << sep << Text(w);
    sep = ",";
  }
  out << "]}\n";
}

}  // namespace

// Reads only: no first-use filling, no cleaning of what a killed write left
// (it is reported instead), no lock.
int Check(const std::vector<std::string>& args, const Context& context) {
  std::optional<std::filesystem::path> data;
  bool json = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--data" && i + 1 < args.size()) {
      data = args[++i];
    } else if (args[i] == "--json") {
      json = true;
    } else {
      context.err << "suizo check: unexpected argument \"" << args[i] << "\"\n"
                  << "usage: suizo check [--data DIR] [--json]\n";
      return kFailed;
    }
  }
  const FolderFindings findings =
      corpus::CheckFolder(FindCommandDataPlace(data, context).folder, kVersion);
  if (json) {
    PrintJson(context.out, findings);
  } else {
    PrintText(context.out, findings);
  }
  return findings.verdict == corpus::FolderVerdict::Refused ? kRefused : kOk;
}

}  // namespace suizo::cli
