#include "composer.h"

#include <array>

namespace suizo::gen {
namespace {

using Pool = std::span<const std::u16string_view>;

template <std::size_t N>
Pool P(const std::array<std::u16string_view, N>& a) {
  return Pool(a.data(), a.size());
}

// Letters: who or what, and what is said of it.
constexpr std::array<std::u16string_view, 52> kSubjects = {
    u"春の雨",   u"山の寺",     u"法の道",     u"旅の僧",    u"古き堂",     u"里の人々",
    u"仏の教へ", u"経の文字",   u"月の光",     u"夜の鐘",    u"老いたる尼", u"若き弟子",
    u"故郷の母", u"遠き国",     u"浦の舟",     u"冬の風",    u"庭の松",     u"この御文",
    u"御志",     u"一紙の状",   u"白米一俵",   u"銭一貫文",  u"御経",       u"題目の声",
    u"供養の品", u"末の世",     u"衆生の心",   u"信の一念",  u"菩提の種",   u"檀那の御身",
    u"御房",     u"去年の冬",   u"今年の春",   u"国の大事",  u"学問の道",   u"真の道理",
    u"実の心",   u"来世の事",   u"円かなる法", u"宝の塔",    u"会座の人",   u"応身の仏",
    u"弥陀の名", u"伝へたる文", u"万の事",     u"礼の心",    u"読誦の功徳", u"観念の窓",
    u"菩薩の行", u"如来の使ひ", u"浄土の荘厳", u"供養の功徳"};
constexpr std::array<std::u16string_view, 36> kPredicates = {u"をおもひやり候へ",
                                                             u"こそあはれなれ",
                                                             u"にまかせ候ふべし",
                                                             u"を申し候ひき",
                                                             u"ゆゑに候",
                                                             u"をよろこび候",
                                                             u"と聞こえ候",
                                                             u"にて候ふ",
                                                             u"をわすれたまふな",
                                                             u"をいかでかおろそかにすべき",
                                                             u"のごとし",
                                                             u"なるべし",
                                                             u"と云々",
                                                             u"をたづね候",
                                                             u"を送り給ひ候ひ畢んぬ",
                                                             u"をうけ取り候ひぬ",
                                                             u"にあらず",
                                                             u"をしめしたまへり",
                                                             u"こそたのもしけれ",
                                                             u"と存じ候",
                                                             u"をまゐらせ候",
                                                             u"はいふにたらず",
                                                             u"をこゑにいだし候へ",
                                                             u"をかなしみ候",
                                                             u"にすぎたるはなし",
                                                             u"をゐなかにて聞き候",
                                                             u"をまもりたまふべし",
                                                             u"をしへのままに候",
                                                             u"はかはる事なし",
                                                             u"をおもひいでて候",
                                                             u"をゆめゆめうたがふべからず",
                                                             u"はよろこばしき事なり",
                                                             u"を見まゐらせ候ひぬ",
                                                             u"のいはれなり",
                                                             u"をいかにせん",
                                                             u"のみちをたどるべし"};
constexpr std::array<std::u16string_view, 10> kOpenings = {
    u"されば",   u"しかるに", u"ただし",       u"それ",   u"また",
    u"そもそも", u"さても",   u"かかるうへは", u"ことに", u"なかんづく"};
constexpr std::array<std::u16string_view, 6> kClosings = {
    u"恐々謹言。",           u"謹言。",
    u"あなかしこ。",         u"穴賢穴賢。",
    u"委細は使ひに申し候。", u"事々見参の時を期し候。"};

// Renderings in modern Japanese.
constexpr std::array<std::u16string_view, 24> kModern = {
    u"春の雨が静かに降っている",
    u"山の寺を訪ねた",
    u"仏の教えを忘れてはならない",
    u"お手紙をいただきました",
    u"志の深さに感じ入ります",
    u"旅の僧が門の前に立っていた",
    u"この道は遠いけれども一歩ずつ歩むべきである",
    u"故郷の母を思っています",
    u"お送りくださった品を確かに受け取りました",
    u"信心を疑ってはなりません",
    u"末の世にこそこの法は力を持つ",
    u"題目を声に出して唱えなさい",
    u"冬の風が強く吹いている",
    u"詳しくは使いの者が申し上げます",
    u"学問の道をおろそかにしてはならない",
    u"夜の鐘が遠くから聞こえる",
    u"国の大事を案じております",
    u"真の道理はここにある",
    u"老いた尼の志はありがたい",
    u"月の光が庭の松を照らしている",
    u"人々の心を思いやってください",
    u"お経を読む功徳は大きい",
    u"来世のことを心配するには及ばない",
    u"宝の塔が空にそびえている"};
constexpr std::array<std::u16string_view, 12> kNotes = {
    u"＜原文の語順のまま訳す＞", u"＜「候」は丁寧の意＞",     u"＜この一句は異本に欠く＞",
    u"＜「畢んぬ」は完了の意＞", u"＜比喩として読む＞",       u"＜意を補って訳す＞",
    u"＜人名は不詳＞",           u"＜地名は旧国名＞",         u"＜直訳すれば「云々」＞",
    u"＜季節は旧暦による＞",     u"＜以下二字判読しがたい＞", u"＜写本により字句が異なる＞"};

// Classical Chinese words, and the kana endings of a reading.
constexpr std::array<std::u16string_view, 40> kKanbunWords = {
    u"衆生", u"菩薩",     u"説法", u"世尊", u"諸仏", u"国土", u"光明", u"大衆", u"比丘", u"法輪",
    u"方便", u"智慧",     u"功徳", u"歓喜", u"礼拝", u"供養", u"宝塔", u"虚空", u"如来", u"声聞",
    u"縁覚", u"寿命",     u"無量", u"浄土", u"因縁", u"譬喩", u"聴聞", u"受持", u"讃歎", u"微妙",
    u"清浄", u"不可思議", u"大地", u"震動", u"香華", u"伎楽", u"天人", u"龍神", u"山林", u"城邑"};
constexpr std::array<std::u16string_view, 16> kKanbunVerbs = {
    u"説", u"見", u"聞", u"往", u"至", u"入", u"出", u"念",
    u"得", u"為", u"住", u"行", u"坐", u"起", u"願", u"生"};
constexpr std::array<std::u16string_view, 12> kKundokuEnds = {
    u"を説きたまふ", u"を見る", u"を聞く", u"に至る", u"に入る", u"を念ず",
    u"を得",         u"となる", u"に住す", u"を行ず", u"を願ふ", u"より生ず"};

constexpr std::array<std::u16string_view, 10> kRemarks = {u"写本により字句に異同あり",
                                                          u"年次は推定による",
                                                          u"宛所は異説あり",
                                                          u"前半のみ伝はる",
                                                          u"末尾に追而書あり",
                                                          u"料紙は楮紙",
                                                          u"日付は後筆か",
                                                          u"同筆の断簡あり",
                                                          u"端裏書あり",
                                                          u"近世の写しのみ伝存"};

constexpr std::array<std::u16string_view, 24> kTitleHeads = {
    u"春雨", u"竹林", u"松風", u"月影", u"白雲", u"浦舟", u"夜鐘", u"山寺",
    u"古堂", u"柴戸", u"清水", u"花園", u"秋霧", u"雪間", u"雁信", u"苔庵",
    u"滝音", u"蓮池", u"梅香", u"杉原", u"岩室", u"萩露", u"鶴林", u"草庵"};
constexpr std::array<std::u16string_view, 8> kTitleTails = {u"御書", u"抄", u"御返事", u"書",
                                                            u"消息", u"事", u"記",     u"御消息"};
constexpr std::array<std::u16string_view, 24> kTitleKana = {
    u"はるさめ", u"ちくりん", u"まつかぜ", u"つきかげ",   u"はくうん", u"うらぶね",
    u"よがね",   u"やまでら", u"ふるどう", u"しばと",     u"しみず",   u"はなぞの",
    u"あきぎり", u"ゆきま",   u"がんしん", u"こけいおり", u"たきおと", u"はすいけ",
    u"うめか",   u"すぎはら", u"いわむろ", u"はぎつゆ",   u"かくりん", u"そうあん"};

constexpr std::array<std::u16string_view, 16> kRecipients = {
    u"妙心尼", u"光明女", u"某殿夫妻", u"日向兄弟", u"松野殿",   u"上原入道", u"浄蓮房", u"窪の尼",
    u"富木殿", u"阿仏女", u"妙法尼",   u"大田殿",   u"曽谷兄弟", u"南条殿",   u"新池殿", u"千日尼"};
constexpr std::array<std::u16string_view, 8> kPlaces = {u"鎌倉", u"佐渡", u"身延", u"伊豆",
                                                        u"安房", u"下総", u"駿河", u"甲斐"};
constexpr std::array<std::u16string_view, 12> kSourceTitles = {
    u"古記抄",   u"寺院縁起", u"山門日記", u"鎌倉覚書",   u"浦里記",   u"僧伝拾遺",
    u"国衙文書", u"荘園目録", u"諸寺記録", u"年中行事記", u"旧家伝書", u"御教書写"};

// New forms and their old forms, all grouped in the variant table.
constexpr std::array<std::pair<char16_t, char16_t>, 20> kOldForms = {
    {{u'学', u'學'}, {u'仏', u'佛'}, {u'経', u'經'}, {u'国', u'國'}, {u'声', u'聲'},
     {u'実', u'實'}, {u'気', u'氣'}, {u'来', u'來'}, {u'体', u'體'}, {u'円', u'圓'},
     {u'伝', u'傳'}, {u'万', u'萬'}, {u'真', u'眞'}, {u'宝', u'寶'}, {u'礼', u'禮'},
     {u'会', u'會'}, {u'応', u'應'}, {u'読', u'讀'}, {u'観', u'觀'}, {u'恵', u'惠'}}};

constexpr std::array<std::u16string_view, 6> kSharedTerms = {u"衆生", u"菩薩", u"功徳",
                                                             u"供養", u"如来", u"浄土"};

}  // namespace

std::span<const std::u16string_view> SharedTerms() {
  return kSharedTerms;
}

std::u16string Composer::Clause() {
  std::u16string c(rng_.Pick(P(kSubjects)));
  c += rng_.Pick(P(kPredicates));
  return c;
}

std::u16string Composer::LetterLine(int min, int max) {
  const int target = rng_.Between(min, max);
  std::u16string line;
  if (rng_.Percent(30)) line += std::u16string(rng_.Pick(P(kOpenings))) + u"、";
  line += Clause();
  while (static_cast<int>(line.size()) + 12 < target) line += u"、" + Clause();
  if (static_cast<int>(line.size()) + 8 < max && rng_.Percent(15)) {
    line += u"。" + std::u16string(rng_.Pick(P(kClosings)));
  } else {
    line += u"。";
  }
  return line;
}

std::u16string Composer::Rendering(int min, int max, int notePercent) {
  const int target = rng_.Between(min, max);
  std::u16string line(rng_.Pick(P(kModern)));
  while (static_cast<int>(line.size()) + 16 < target)
    line += u"。" + std::u16string(rng_.Pick(P(kModern)));
  line += u"。";
  if (rng_.Percent(notePercent)) line += rng_.Pick(P(kNotes));
  return line;
}

std::u16string Composer::Kanbun(int min, int max) {
  const int target = rng_.Between(min, max);
  std::u16string line;
  while (static_cast<int>(line.size()) < target) {
    line += rng_.Pick(P(kKanbunWords));
    line += rng_.Pick(P(kKanbunVerbs));
  }
  line.resize(static_cast<std::size_t>(target));
  return line;
}

std::u16string Composer::Kundoku(int min, int max) {
  const int target = rng_.Between(min, max);
  std::u16string line;
  while (static_cast<int>(line.size()) + 6 < target) {
    if (!line.empty()) line += u"、";
    line += rng_.Pick(P(kKanbunWords));
    line += rng_.Pick(P(kKundokuEnds));
  }
  return line + u"。";
}

std::u16string Composer::Remark() {
  return std::u16string(rng_.Pick(P(kRemarks)));
}

std::u16string Composer::Title() {
  std::u16string title(rng_.Pick(P(kTitleHeads)));
  return title + std::u16string(rng_.Pick(P(kTitleTails)));
}

std::u16string Composer::TitleKana() {
  return std::u16string(rng_.Pick(P(kTitleKana)));
}
std::u16string Composer::Recipient() {
  return std::u16string(rng_.Pick(P(kRecipients)));
}
std::u16string Composer::Place() {
  return std::u16string(rng_.Pick(P(kPlaces)));
}
std::u16string Composer::SourceTitle() {
  return std::u16string(rng_.Pick(P(kSourceTitles)));
}

std::u16string WithOldForms(std::u16string_view text, Rng& rng, int percent) {
  std::u16string out(text);
  for (char16_t& c : out) {
    for (const auto& [fresh, old] : kOldForms) {
      if (c == fresh && rng.Percent(percent)) c = old;
    }
  }
  return out;
}

std::u16string WithModernKana(std::u16string_view text, Rng& rng, int percent) {
  std::u16string out(text);
  for (std::size_t i = 0; i < out.size(); ++i) {
    const char16_t c = out[i];
    const bool afterKana = i > 0 && out[i - 1] >= u'ぁ' && out[i - 1] <= u'ん';
    if (!rng.Percent(percent)) continue;
    if (c == u'ゐ') out[i] = u'い';
    if (c == u'ゑ') out[i] = u'え';
    if (c == u'ひ' && afterKana) out[i] = u'い';
    if (c == u'ふ' && afterKana) out[i] = u'う';
  }
  return out;
}

}  // namespace suizo::gen
