#include <map>
#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/reader/writings_reader.h"
#include "core/scripture/sources_reader.h"
#include "core/scripture/sutra_reader.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

using reader::WritingsReader;

struct RenderOptions {
  std::vector<std::string> folderArgs;
  SelectionOptions selection;
  std::optional<int> lpos;
  std::optional<std::string> sysNo;
  bool vertical = false;
  std::optional<std::string> search;
  int pane = 0;
  std::vector<std::pair<int, int>> keys;  // key code and Shift value
  search::SearchWindow window = search::SearchWindow::Writings;
};

// "Down", "Ctrl+Up", "Shift+Down", "Space", "X", "F1": a key and its modifiers.
std::optional<std::pair<int, int>> KeyOf(std::string name) {
  static const std::map<std::string, int> kKeys = {
      {"Up", reader::key::kUp},       {"Down", reader::key::kDown},   {"Left", reader::key::kLeft},
      {"Right", reader::key::kRight}, {"Space", reader::key::kSpace}, {"F1", reader::key::kF1},
      {"A", reader::key::kA},         {"F", reader::key::kF},         {"S", reader::key::kS},
      {"V", reader::key::kV},         {"X", reader::key::kX}};
  int shift = 0;
  for (;;) {
    if (name.starts_with("Shift+")) {
      shift |= reader::key::kShift;
      name = name.substr(6);
    } else if (name.starts_with("Ctrl+")) {
      shift |= reader::key::kCtrl;
      name = name.substr(5);
    } else if (name.starts_with("Alt+")) {
      shift |= reader::key::kAlt;
      name = name.substr(4);
    } else {
      break;
    }
  }
  const auto found = kKeys.find(name);
  if (found == kKeys.end()) return std::nullopt;
  return std::pair{found->second, shift};
}

std::optional<int> Number(const std::string& v) {
  if (v.empty() || v.size() > 9 || v.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  return std::stoi(v);
}

std::optional<RenderOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  RenderOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo render: " << why << "\n"
        << "usage: suizo render [--data DIR] [--window writings|sutra|sources] " << kSelectionUsage
        << " [--lpos N | --sysno N] [--vertical] [--search TEXT] [--pane N] [--keys KEY,KEY,...]\n";
    return std::nullopt;
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    bool matched = false;
    if (const auto why = ParseSelectionOption(args, i, o.selection, matched)) return usage(*why);
    if (matched) continue;
    if (a == "--data" && hasValue) {
      o.folderArgs = {a, args[++i]};
    } else if (a == "--window" && hasValue) {
      const auto v = WindowValue(args[++i]);
      if (!v) return usage("--window is writings, sutra or sources");
      o.window = *v;
    } else if (a == "--lpos" && hasValue) {
      o.lpos = Number(args[++i]);
      if (!o.lpos) return usage("--lpos is a line position");
    } else if (a == "--sysno" && hasValue) {
      o.sysNo = args[++i];
    } else if (a == "--vertical") {
      o.vertical = true;
    } else if (a == "--search" && hasValue) {
      o.search = args[++i];
    } else if (a == "--pane" && hasValue) {
      const auto n = Number(args[++i]);
      if (!n || *n > 10) return usage("--pane is a tab, 0 to 10");
      o.pane = *n;
    } else if (a == "--keys" && hasValue) {
      const std::u16string list = text::FromUtf8(args[++i]);
      for (const std::u16string_view name : text::Split(list, u",")) {
        const auto k = KeyOf(text::ToUtf8(name));
        if (!k) return usage("no key is called \"" + text::ToUtf8(name) + "\"");
        o.keys.push_back(*k);
      }
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
  }
  if (o.lpos && o.sysNo) return usage("give --lpos or --sysno, not both");
  const int tabs = o.window == search::SearchWindow::Writings ? 11 : 4;
  if (o.pane >= tabs) return usage("--pane of this window is 0 to " + std::to_string(tabs - 1));
  return o;
}

void PrintView(std::ostream& out, const reader::ReaderView& v, const reader::ReaderBase& r) {
  const auto str = [](std::u16string_view t) { return text::JsonString(t); };
  const std::u16string& chapter = r.engine().pos.chapter;
  out << "{\"Muki1\":" << v.Muki1
      << ",\"Mpos\":" << (chapter.empty() ? std::to_string(r.Mpos()) : str(chapter))
      << ",\"Lpos\":" << r.Lpos() << ",\"BlockLines\":" << v.BlockLines
      << ",\n\"caption\":" << str(v.caption) << ",\"Bangou\":" << str(v.Bangou)
      << ",\"Text1\":" << str(v.Text1) << ",\"Text4\":" << str(v.Text4)
      << ",\"Text5\":" << str(v.Text5) << ",\"Text6\":" << str(v.Text6)
      << ",\"Text2\":" << str(v.Text2) << ",\"Text3\":" << str(v.Text3) << ",\n\"pageBoxes\":{";
  for (std::size_t i = 0; i < v.pageBoxes.size(); ++i) {
    out << (i ? "," : "") << "\"" << v.pageBoxes[i].first << "\":" << str(v.pageBoxes[i].second);
  }
  out << "},\n\"PageTitle\":{";
  for (std::size_t i = 0; i < v.pageBoxes.size(); ++i) {
    const int title = reader::PageTitleOf(v.pageBoxes[i].first);
    out << (i ? "," : "") << "\"" << title
        << "\":" << v.clev.PageTitle[static_cast<std::size_t>(title)];
  }
  out << "},\"Clev\":[";
  for (std::size_t i = 0; i < v.clev.Clev.size(); ++i) out << (i ? "," : "") << v.clev.Clev[i];
  out << "],\n\"SinSyaButton\":{\"caption\":" << str(v.SinSyaCaption)
      << ",\"colour\":" << v.SinSyaColour << "},\"TyoKatButton\":" << str(v.TyoKatCaption)
      << ",\"Kakko\":" << (v.KakkoVisible ? "true" : "false")
      << ",\"Label3\":{\"text\":" << str(v.Label3Text) << ",\"colour\":" << v.Label3Colour
      << ",\"enabled\":" << (v.Label3Enabled ? "true" : "false") << "},\"tabDown\":" << v.tabDown
      << ",\"tabs\":[";
  for (std::size_t i = 0; i < v.tabVisible.size(); ++i)
    out << (i ? "," : "") << (v.tabVisible[i] ? 1 : 0);
  out << "],\n\"panes\":[";
  for (int p = 1; p <= 7; ++p) {
    const reader::PaneView& pane = v.panes[static_cast<std::size_t>(p)];
    out << (p > 1 ? ",\n" : "\n") << "{\"pane\":" << p;
    if (pane.frame) out << ",\"frame\":" << str(*pane.frame);
    if (pane.colourSet) out << ",\"colour\":" << pane.colour;
    if (pane.written) out << ",\"body\":" << str(pane.body);
    out << "}";
  }
  out << "]";
  if (v.measuringFrame) out << ",\n\"measuringFrame\":" << str(*v.measuringFrame);
  out << "}\n";
}

}  // namespace

int Render(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const auto folder = DataFolderArgument(options->folderArgs, "render", context);
  if (!folder) return kFailed;
  corpus::Corpus store(*folder);
  for (const int group : {0, 6}) store.ReadData(group);
  corpus::Selection selection = ApplySelectionOptions(store, options->selection);
  corpus::Settings settings;
  const int muki = options->vertical ? 1 : 0;
  std::unique_ptr<reader::ReaderBase> made;
  const std::u16string sysNo = options->sysNo ? text::FromUtf8(*options->sysNo) : u"";
  switch (options->window) {
    case search::SearchWindow::Writings: {
      auto writings = std::make_unique<WritingsReader>(store, selection, settings, nullptr, muki);
      if (store.MosMaxY == 0) {
        context.err << "suizo render: no document is listed in this selection\n";
        return kFailed;
      }
      if (options->lpos) {
        if (*options->lpos < 1 || *options->lpos > store.DasMaxY) {
          context.err << "suizo render: --lpos is 1 to " << store.DasMaxY << " in this order\n";
          return kFailed;
        }
        writings->GoToLine(*options->lpos);
      } else if (options->sysNo) {
        const corpus::ReaderPlace place = corpus::FindReaderPlace(store, sysNo);
        if (place.OldLsys != sysNo) {
          context.err << "suizo render: no line of this order has ｼｽﾃﾑNo. " << *options->sysNo
                      << "\n";
          return kFailed;
        }
        writings->GoToLine(place.Lpos);
      }
      made = std::move(writings);
      break;
    }
    case search::SearchWindow::Sutra: {
      auto sutra =
          std::make_unique<scripture::SutraReader>(store, selection, settings, nullptr, muki);
      const corpus::Table& hok = store.table(corpus::TableId::Hok);
      int row = options->lpos.value_or(1);
      if (options->sysNo) {
        row = 0;
        for (int r = 1; r <= hok.rows() && row == 0; ++r) {
          if (hok.Get(r, corpus::hok::kNumber) == sysNo) row = r;
        }
      }
      if (row < 1 || row > hok.rows()) {
        context.err << "suizo render: the sutra has rows 1 to " << hok.rows() << "\n";
        return kFailed;
      }
      sutra->GoToRow(row);
      made = std::move(sutra);
      break;
    }
    case search::SearchWindow::Sources: {
      auto sources =
          std::make_unique<scripture::SourcesReader>(store, selection, settings, nullptr, muki);
      if (store.SMosMaxY == 0) {
        context.err << "suizo render: no source is listed\n";
        return kFailed;
      }
      if (options->lpos) {
        if (*options->lpos < 1 || *options->lpos > store.SDasMaxY) {
          context.err << "suizo render: --lpos is 1 to " << store.SDasMaxY
                      << " in the sources' order\n";
          return kFailed;
        }
        sources->GoToLine(*options->lpos);
      } else if (options->sysNo) {
        const corpus::ReaderPlace place = corpus::FindSourceReaderPlace(store, sysNo);
        if (place.OldLsys != sysNo) {
          context.err << "suizo render: no line of the sources has ｼｽﾃﾑNo. " << *options->sysNo
                      << "\n";
          return kFailed;
        }
        sources->GoToLine(place.Lpos);
      }
      made = std::move(sources);
      break;
    }
  }
  reader::ReaderBase& reader = *made;
  reader::ReaderView view = reader.Hyouji();
  // A later render writes no frame: keep the first ones to print them.
  const reader::ReaderView first = view;
  reader.engine().Tab = options->pane;
  if (options->search) {
    reader.engine().Combo1 = text::FromUtf8(*options->search);
    const reader::ReaderOutcome out = reader.Combo1Enter();
    if (out.toast) context.err << "suizo render: " << text::ToUtf8(search::kNotFound) << "\n";
    view = reader.Hyouji();
  }
  for (const auto& [code, shift] : options->keys) {
    if (reader.KeyDownAll(code, shift).redraw) view = reader.Hyouji();
  }
  for (std::size_t p = 1; p < view.panes.size(); ++p) {
    if (!view.panes[p].frame) view.panes[p].frame = first.panes[p].frame;
  }
  if (!view.measuringFrame) view.measuringFrame = first.measuringFrame;
  PrintView(context.out, view, reader);
  return kOk;
}

}  // namespace suizo::cli
