#include "core/views/balloons.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "core/text/utf16.h"

namespace suizo::views {
namespace {

using Tools = std::vector<BalloonTool>;

constexpr std::array<std::u16string_view, 10> kForms = {u"Form9", u"Form15", u"Form6",  u"Form12",
                                                        u"Form5", u"Form3",  u"Form13", u"Form2",
                                                        u"Form7", u"Form16"};

void Add(Tools& tools, std::u16string_view control, std::u16string_view text) {
  tools.push_back({std::u16string(control), std::u16string(text)});
}

// Control arrays: "Label1(2)" and so on, one balloon for each.
void AddEach(Tools& tools, std::u16string_view array, std::initializer_list<int> indexes,
             std::u16string_view text) {
  for (const int i : indexes) {
    Add(tools, std::u16string(array) + u"(" + text::IntText(i) + u")", text);
  }
}

// ---- The search strip, as every list and text window carries it ----

std::u16string SearchBox(std::u16string_view subject, std::u16string_view middle) {
  std::u16string text = u"【検索ボックス】\nクリックして";
  text += subject;
  text += u"を入力して[Enter]キー\nまたは[検索]ボタンをクリックで検索を実行します。\n\n";
  text += middle;
  text += u"\n\n[Ctrl]+[F]キーでこのボックスにフォーカス移動可";
  return text;
}

constexpr std::u16string_view kAndSearch = u"ワードをスペースで区切るとAND検索になります。";

constexpr std::u16string_view kPinAuto =
    u"ウィンドウを自動で、または[Esc]キーで\n"
    u"閉じないようにロックします。";
constexpr std::u16string_view kPinEsc =
    u"ウィンドウを[Esc]キーで閉じない\n"
    u"ようにロックします。";

// Where the contents and reference views differ in a word.
struct StripWords {
  std::u16string_view subject;   // what the box is for
  std::u16string_view hiragana;  // the line on kana input; empty: none
  std::u16string_view refines;   // what a refinement narrows
  std::u16string_view pin;
};

constexpr StripWords kWritingsStrip = {u"翠典名(または対告者)", u"翠典名はひらがなでも検索可能",
                                       u"翠典の目次と本文", kPinAuto};

StripWords StripOf(std::u16string_view form) {
  if (form == u"Form15") {
    return {u"書名(または著者)", u"書名はひらがなでも検索可能", u"史料の目次と本文", kPinAuto};
  }
  if (form == u"Form6") {
    return {u"検索したいワード", u"読みのひらがなでも検索可能", u"翠典の目次と本文", kPinEsc};
  }
  if (form == u"Form12") return {u"検索したいワード", u"", u"年表の表示", kPinEsc};
  if (form == u"Form5") {
    StripWords words = kWritingsStrip;
    words.pin = kPinEsc;
    return words;
  }
  return kWritingsStrip;
}

void AddSearchStrip(Tools& tools, std::u16string_view form) {
  const StripWords words = StripOf(form);
  std::u16string middle;
  if (!words.hiragana.empty()) middle = std::u16string(words.hiragana) + u"\n";
  middle += kAndSearch;
  Add(tools, u"Combo1", SearchBox(words.subject, middle));
  Add(tools, u"Command12", u"検索履歴の表示・再入力");
  Add(tools, u"Command1",
      u"クリック：検索開始\n"
      u"\n"
      u"検索結果は[←][→]キーで移動できます");
  Add(tools, u"Label3",
      u"【検索結果】\n"
      u"表示中の位置／検索結果件数\n"
      u"\n"
      u"クリック：検索結果をクリア");
  Add(tools, u"Command14",
      u"検索結果がある状態でクリックすると\n" + std::u16string(words.refines) +
          u"を絞り込みます。");
  Add(tools, u"RefineLevel", u"絞り込みの深さ");
  Add(tools, u"Command15", u"絞り込みを1段解除");
  Add(tools, u"Pin", words.pin);
}

// ---- The three readers: one table, their unit word where it says 翠典 ----

std::u16string_view UnitWord(std::u16string_view form) {
  if (form == u"Form7") return u"品";
  if (form == u"Form16") return u"書";
  return u"翠典";
}

void AddReaderStrip(Tools& tools, std::u16string_view form) {
  const std::u16string_view unit = UnitWord(form);
  const auto add = [&](std::u16string_view control, std::u16string_view text) {
    Add(tools, control, text::ReplaceAll(text, u"翠典", unit));
  };
  add(u"Combo1", SearchBox(u"検索したいワード", u"複数ワードをスペースで区切って検索も可能です。"));
  add(u"Command12", u"検索履歴の表示・再入力");
  add(u"Command1",
      u"左クリック：検索開始\n"
      u"[Shift]+左クリック：1字ずつ分割して検索\n"
      u"[Ctrl]+左クリック：漢字のみ分割して検索\n"
      u"\n"
      u"検索結果は[←][→]キーで移動できます\n"
      u"\n"
      u"右クリック：検索方法切り替え\n"
      u"　通常(AND)検索、OR検索、NOT検索");
  add(u"Label3",
      u"【検索結果】\n"
      u"表示中の位置／検索結果件数\n"
      u"\n"
      u"クリック：検索結果をクリア(絞込は維持)\n"
      u"\n"
      u"(ボタンの色)\n"
      u"黄色：完全(ほぼ完全)一致\n"
      u"ピンク：１字ずつ分割検索の結果\n"
      u"水色：漢字のみ分割検索の結果");
  add(u"Command14",
      u"現在の検索結果を保持(絞り込み)します。\n"
      u"本文の絞り込みは行われません。");
  add(u"RefineLevel", u"絞り込みの深さ");
  add(u"Command15", u"絞り込みを1段解除");
  add(u"Pin", kPinEsc);
  add(u"Limit",
      u"翠典に限定／解除の切り替え\n"
      u"\n"
      u"[X]キーでも切り替え可");
  add(u"BTdown",
      u"クリック：次の行または行ブロック(縦書き時)へ移動\n"
      u"[Ctrl]+クリック：次の翠典の先頭へジャンプ\n"
      u"\n"
      u"[↓]キー、または[Ctrl]+[↓]\n"
      u"または[Shift]+[↓]キーでも可");
  add(u"BTup",
      u"クリック：前の行または行ブロック(縦書き時)へ移動\n"
      u"[Ctrl]+クリック：現在の翠典または前の翠典の先頭へジャンプ\n"
      u"\n"
      u"[↑]キー、または[Ctrl]+[↑]\n"
      u"または[Shift]+[↑]キーでも可");
  add(u"Okuri",
      u"【行送りオプション】\n"
      u"縦書き表示時に[Shift]キーを使わなくても\n"
      u"1行ずつ行送りできるようにする");
  // The writings reader words its keys as its other switches do.
  // The layout switch answers to Space in every reader; A flips panes.
  add(u"Command3", u"表示切り替え\n[Space]キーでも切り替え可");
}

constexpr std::u16string_view kSearchTarget = u"クリック：検索対象に設定";

constexpr std::u16string_view kNoteEditing =
    u"右のメモ欄を[Ctrl]+ダブルクリック：編集モード\n"
    u"(編集モード中)\n"
    u"[Ctrl]+[Enter]キー：改行\n"
    u"[Enter]キー：編集モード終了";

std::u16string Headed(std::u16string_view heading, std::u16string_view text) {
  return std::u16string(heading) + u"\n" + std::u16string(text);
}

// A text pane's tab: what the pane holds, then what a click does.
std::u16string PaneTab(std::u16string_view heading, std::u16string_view holds) {
  return Headed(heading, holds) + u"\n\n" + std::u16string(kSearchTarget);
}

void AddWritingsReader(Tools& tools) {
  Add(tools, u"Bangou", u"翠典番号");
  Add(tools, u"Command2", u"検索結果一覧を別ウィンドウで開く");
  Add(tools, u"Command16", u"システム版翠典⇔現代語訳");
  Add(tools, u"SinSyaButton",
      u"クリック：「真蹟」と「門下写本」の表示を切り替え\n"
      u"(データが存在する場合、「真」「写」のマークが点灯)\n"
      u"\n"
      u"[S]キーでも切り替え可");
  Add(tools, u"TyoKatButton", u"クリック：「直読」と「活用」形式の表示を切り替え");
  Add(tools, u"TagT(0)",
      PaneTab(u"【システム版翠典】", u"すべてを読み下しにし、検索等もしやすい表記。"));
  Add(tools, u"TagT(1)", PaneTab(u"【現代語訳】", u"システム版翠典の現代語訳"));
  Add(tools, u"TagT(2)",
      PaneTab(u"【真蹟直読】", u"真蹟(写真)を直に解読し、外字を用意して精確に表記。"));
  Add(tools, u"TagT(3)",
      PaneTab(u"【真蹟活用】", u"検索等の利便を考慮して、【真蹟直読】を常用字体で表記。"));
  Add(tools, u"TagT(4)",
      PaneTab(u"【門下写本】", u"上代門下の代表的写本を直に解読し、外字を用意して精確に表記。"));
  Add(tools, u"TagT(5)",
      PaneTab(u"【原型活用】",
              u"検索等の利便を考慮して、【門下写本】を常用字体を用いるが、原文の形態で表記。"));
  Add(tools, u"TagT(6)", PaneTab(u"【真蹟備考】", u"真蹟に関する備考欄"));
  Add(tools, u"TagT(7)", PaneTab(u"【写本備考】", u"門下写本に関する備考欄"));
  AddEach(tools, u"TagT", {8, 9}, Headed(u"【メモ】", kNoteEditing));
  // The list of abbreviations itself belongs to the data.
  Add(tools, u"TagT(10)",
      PaneTab(u"【引用索引】", u"本文に引用された経典・典籍の出典を略号で示す索引"));
  // The collections whose page numbers no search reads.
  AddEach(tools, u"Page", {24, 26, 27, 32, 36},
          u"この遺文集のページ検索は\n"
          u"現在利用できません");
}

void AddSourcesReader(Tools& tools) {
  Add(tools, u"TagT(3)", Headed(u"【備考】", kNoteEditing));
  Add(tools, u"PageTitle(1)",
      u"【ｼｽﾃﾑNo】\n"
      u"水色：システムNo順\n"
      u"ピンク：経年順");
  Add(tools, u"PageTitle(10)", u"【史料番号】");
  Add(tools, u"Text1", u"【蔵所】");
  Add(tools, u"Text6", u"【著者】");
  Add(tools, u"Text3", u"【経年】");
  Add(tools, u"Text2", u"【刊行本】");
  Add(tools, u"Check1",
      u"【表示の切替え】\n"
      u"読下本文 - 原型活用\n"
      u"原型活用 - 漢文成形\n"
      u"\n"
      u"[S]キーでも切り替え可");
}

void AddSutraReader(Tools& tools) {
  Add(tools, u"Check1",
      u"【表示の切替え】\n"
      u"訓読 - 現代語訳\n"
      u"真読 - 訓読\n"
      u"\n"
      u"[S]キーでも切り替え可");
}

// ---- The contents and reference views, and the two dialogs ----

// The classes as the selection dialog explains them.
std::u16string ClassLines() {
  return u"【部類】\n"
         u"C=0：真蹟が完全若しくはほぼ完全な形で現存し活字翠典と対応するもの。\n"
         u"C=1：真蹟が断簡で現存し、活字翠典の断簡と対応するもの。\n"
         u"C=2：真蹟の断片が現存し、活字翠典の一部分と対応するもの。\n"
         u"C=3：真蹟が明治８年の火災まで本山に存在していたもの。\n"
         u"C=4：真蹟は現存しないが継師書写本の現存するもの。\n"
         u"C=5：継師以外の上代諸師の古写本の現存するもの。\n"
         u"C=6：上記のC0～C5と下記のC7～C9以外の全てのもの。\n"
         u"C=7：口伝と講聞書。\n"
         u"C=8：門流の相伝書類。\n"
         u"C=9：偽書と云われるもの。";
}

void AddWritingsContents(Tools& tools) {
  Add(tools, u"Picture3", u"遺文集の選択・設定");
  Add(tools, u"Label1", u"遺文集の選択・設定");
  Add(tools, u"Command11",
      u"【翠蔵Viewerの各種設定】\n"
      u"\n"
      u"[F1]キーでも可\n"
      u"　他のウィンドウからでも直接\n"
      u"　開くことができます");
  Add(tools, u"Command2",
      u"翠蔵Viewerを終了します\n"
      u"\n"
      u"※このウィンドウの閉じるボタンは使用できません。\n"
      u"　この「終了」ボタンを使用してください。");
  Add(tools, u"Label5", u"表示中の件数／選択中の遺文集の目次総数");
  Add(tools, u"SelT(0)", u"クリック：検索対象を【翠典名】に設定");
  Add(tools, u"SelT(1)",
      u"クリック：検索対象を【対告者】に設定\n"
      u"\n"
      u"検索ボックスに「女」「女性」「女人」と入力\n"
      u"すると、女性宛の翠典が検索対象となります。");
  Add(tools, u"Check1",
      u"【対告者名の表示切り替え】\n"
      u"ある程度統一された表記と、翠典上の\n"
      u"表記とを切り替えます、\n"
      u"\n"
      u"※どちらに切り替えても検索には影響\n"
      u"　しません。");
}

void AddSourcesContents(Tools& tools) {
  Add(tools, u"Label1", u"クリック：ｼｽﾃﾑNo順と経年順の切り替え");
  Add(tools, u"Label5", u"表示中の件数／史料目次の総数");
  Add(tools, u"SelT(0)", u"クリック：検索対象を【書名】に設定");
  Add(tools, u"SelT(1)", u"クリック：検索対象を【著者】に設定");
}

void AddChronology(Tools& tools) {
  Add(tools, u"Picture3", u"クリック：遺文集の選択・設定");
  Add(tools, u"Label1", u"クリック：遺文集の選択・設定");
  Add(tools, u"Command7", u"表示する事項の設定");
  Add(tools, u"Label5", u"表示中の件数／年表データの総数");
  Add(tools, u"Command13",
      u"年表を折りたたみ、年号の選択が容易になります\n"
      u"[Space]キーでも可\n"
      u"\n"
      u"年号をダブルクリック、または年号を選択して\n"
      u"[Enter]キーで元の状態に戻ります");
}

void AddDocumentRecord(Tools& tools) {
  Add(tools, u"Text5", ClassLines());
  Add(tools, u"PageTitle(1)", u"【定本番号】");
  Add(tools, u"PageTitle(2)", u"【新定番号】");
  Add(tools, u"Text3", u"【対告者】");
  Add(tools, u"Text2", u"【聖寿】");
  Add(tools, u"PageTitle(0)",
      u"【選択中の遺文集の色】\n"
      u"水色：システムNoまたはページ順\n"
      u"ピンク：経年順");
  Add(tools, u"Label1(1)", kSearchTarget);
  AddEach(tools, u"Label1", {2, 3, 4, 5, 6, 7},
          std::u16string(kSearchTarget) +
              u"\n"
              u"\n"
              u"右枠ダブルクリック：内容を左枠に表示\n"
              u"右枠クリックで表示を戻す");
}

void AddSelectionDialog(Tools& tools) {
  Add(tools, u"Frame1", u"遺文集の選択");
  Add(tools, u"Frame2", ClassLines());
  Add(tools, u"Check2(10)",
      u"【真蹟検索】\n"
      u"　検索対象を真蹟の存在する行に限定します。\n"
      u"　また、真蹟の存在しない行は文字色がグレーになります。");
  Add(tools, u"Check1", u"遺文集を経年順で並び替えます。");
}

void AddSettingsDialog(Tools& tools) {
  Add(tools, u"Check1",
      u"通常検索で何も見つからなかった場合、自動的に\n"
      u"検索ワードを単字または単漢字に分割し再度検索\n"
      u"を実行します。\n"
      u"\n"
      u"検索の柔軟性が増しますが、ワードが短い場合は\n"
      u"誤検出をする可能性もあります。");
  // The examples are pairs the variant table bridges.
  Add(tools, u"Check2",
      u"検索の柔軟性を高めるのに有効です。\n"
      u"\n"
      u"　例）佛⇔仏、國⇔国、經⇔経\n"
      u"　　　いふ⇔いう、ゐる⇔いる、をしへ⇔おしえ\n"
      u"\n"
      u"このような表記の違いをある程度気に\n"
      u"することなく検索が可能になります。");
  Add(tools, u"Check3", u"このように操作説明等がバルーン表示されます");
  Add(tools, u"Text1", u"バルーン表示のフォントサイズを大きくする");
  Add(tools, u"Combo1", u"バルーン表示のフォントサイズを大きくする");
  Add(tools, u"Check4",
      u"長くなりすぎないように表示構成をコンパクトにする\n"
      u"モードです。");
  Add(tools, u"Frame1",
      u"通常モードの縦書き表示の縦方向の\n"
      u"文字数を設定できます。");
  Add(tools, u"Command1",
      u"PCに保存されている設定を削除し終了します。\n"
      u"\n"
      u"※しおりはDataフォルダに保存されているため\n"
      u"　削除されません。");
}

}  // namespace

std::span<const std::u16string_view> BalloonForms() {
  return kForms;
}

std::vector<BalloonTool> FormBalloons(std::u16string_view form) {
  Tools tools;
  if (form == u"Form2" || form == u"Form7" || form == u"Form16") {
    AddReaderStrip(tools, form);
    if (form == u"Form2") AddWritingsReader(tools);
    if (form == u"Form7") AddSutraReader(tools);
    if (form == u"Form16") AddSourcesReader(tools);
  } else if (form == u"Form9" || form == u"Form15" || form == u"Form6" || form == u"Form12" ||
             form == u"Form5") {
    AddSearchStrip(tools, form);
    if (form == u"Form9") AddWritingsContents(tools);
    if (form == u"Form15") AddSourcesContents(tools);
    if (form == u"Form6") Add(tools, u"Text3", u"【分類】");
    if (form == u"Form12") AddChronology(tools);
    if (form == u"Form5") AddDocumentRecord(tools);
  } else if (form == u"Form3") {
    AddSelectionDialog(tools);
  } else if (form == u"Form13") {
    AddSettingsDialog(tools);
  }
  return tools;
}

std::optional<std::u16string> BalloonText(std::u16string_view form, std::u16string_view control) {
  for (BalloonTool& tool : FormBalloons(form)) {
    if (tool.control == control) return std::move(tool.text);
  }
  return std::nullopt;
}

std::u16string DictionaryClassBalloon(std::u16string_view jirui) {
  if (jirui.empty()) return u"【分類】";
  return Headed(u"【分類】", jirui);
}

// ---- The tool-tip object ----

TipFont BalloonFont(const StatusFont& status, int BTFont, int dpi) {
  TipFont font;
  font.name = status.name;
  font.points = status.points + BTFont;
  // Rounded to the nearest pixel, as the system's own scaling does.
  font.pixels = (font.points * dpi + 36) / 72;
  return font;
}

bool Tooltip::Create(TipFont font) {
  if (!active_) {
    font_ = std::move(font);
    active_ = true;
  }
  return active_;
}

void Tooltip::SetTitle(std::u16string_view title) {
  title_ = title.empty() ? u" " : std::u16string(title);
}

void Tooltip::SetIcon(int icon) {
  icon_ = icon;
  if (title_.empty()) title_ = u" ";
}

std::uint32_t Tooltip::ForeColor() {
  foreColor_ = 0;
  return 0;
}

void Tooltip::SetDelayTime(int ms) {
  if (!active_) delayTime_ = ms;
}

Tooltip::Tool* Tooltip::Find(std::u16string_view control) {
  const auto it = std::find_if(tools_.begin(), tools_.end(),
                               [&](const Tool& tool) { return tool.control == control; });
  return it == tools_.end() ? nullptr : &*it;
}

const Tooltip::Tool* Tooltip::Find(std::u16string_view control) const {
  return const_cast<Tooltip*>(this)->Find(control);
}

void Tooltip::See(std::u16string_view text) {
  maxTextLen_ = std::max(maxTextLen_, static_cast<int>(text.size()) + 1);
}

bool Tooltip::AddTool(std::u16string_view control, std::u16string_view text) {
  if (!active_ || control.empty() || Find(control) != nullptr) return false;
  tools_.push_back({std::u16string(control), std::u16string(text)});
  See(text);
  return true;
}

void Tooltip::RemoveTool(std::u16string_view control) {
  std::erase_if(tools_, [&](const Tool& tool) { return tool.control == control; });
}

bool Tooltip::HasTool(std::u16string_view control) const {
  return Find(control) != nullptr;
}

std::u16string Tooltip::ToolText(std::u16string_view control) const {
  const Tool* tool = Find(control);
  if (tool == nullptr) return {};
  return tool->text.substr(0, tool->text.find(u'\0'));
}

void Tooltip::SetToolText(std::u16string_view control, std::u16string_view text) {
  if (Tool* tool = Find(control)) {
    tool->text = text;
    See(text);
  }
}

void ToolTipInit(std::optional<Tooltip>& tip, std::u16string_view form, const TipFont& font,
                 const ControlFilter& hasControl) {
  if (!tip) {
    tip.emplace();
    tip->Create(font);
  }
  tip->SetMaxTipWidth(kBalloonMaxTipWidth);
  for (const BalloonTool& tool : FormBalloons(form)) {
    if (hasControl && !hasControl(tool.control)) continue;
    tip->AddTool(tool.control, tool.text);
  }
}

// ---- When the balloons are there ----

BalloonHelp::BalloonHelp(const corpus::Settings& settings, std::u16string form, StatusFont status,
                         int dpi, ControlFilter hasControl)
    : settings_(settings),
      form_(std::move(form)),
      status_(std::move(status)),
      dpi_(dpi),
      hasControl_(std::move(hasControl)) {}

void BalloonHelp::Init() {
  ToolTipInit(tip_, form_, BalloonFont(status_, settings_.BTFont, dpi_), hasControl_);
}

void BalloonHelp::Load() {
  if (settings_.Helper == 1) Init();
}

void BalloonHelp::MouseMove() {
  if (settings_.Helper == 1) Init();
}

void BalloonHelp::LayoutChanged() {
  if (tip_) Init();
}

void BalloonHelp::SettingsChanged() {
  tip_.reset();
  if (settings_.Helper == 1) Init();
}

}  // namespace suizo::views
