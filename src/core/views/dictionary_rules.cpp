#include "core/views/dictionary_rules.h"

#include <algorithm>
#include <unordered_map>

#include "core/search/regex.h"
#include "core/text/like.h"
#include "core/text/utf16.h"

namespace suizo::views::dic_rules {
namespace {

constexpr RuleKind kAlways = RuleKind::Always;
constexpr RuleKind kNeeds = RuleKind::Needs;
constexpr RuleKind kDrop = RuleKind::Drop;
constexpr RuleKind kKeep = RuleKind::Keep;
constexpr RuleOn kYomi = RuleOn::Yomi;

constexpr WTest Words(std::u16string_view a, std::u16string_view b = {}, std::u16string_view c = {},
                      std::u16string_view d = {}) {
  return {.words = {a, b, c, d}};
}
constexpr WTest Re(std::u16string_view pattern) {
  return {.pattern = pattern};
}

// The fruit of reading the corpus, row by row. A context with a bar is a
// regular expression, any other a list of plain words.
constexpr WordRule kRules[] = {
    // Rejected unless W is the key.
    {.kind = kAlways, .key = u"かひ"},
    {.kind = kAlways, .key = u"もや"},
    {.kind = kAlways, .key = u"ひけん", .on = kYomi},
    {.kind = kAlways, .key = u"いけん", .on = kYomi},
    {.kind = kAlways, .key = u"なんと", .on = kYomi},

    // Needs: rejected unless W holds the context.
    {.kind = kNeeds,
     .key = u"あら",
     .context =
         Re(u"あら(悦ばし|うれし|不思議|ふしぎ|をしの|をそろし|おそろし|こひし|面白|をもしろ|"
            u"貴し|うらやまし|たうと|たのもし|やすし|ふびん|をかし|うらめし|あさまし)")},
    {.kind = kNeeds,
     .key = u"ばし",
     .context = Re(u"(旬ばし|ばしあ|経ばし|にばし|うばし|我ばし|籠をばし|ばし出)")},
    {.kind = kNeeds, .key = u"ひら", .context = Re(u"(なさけ|ひら信|信心|但|平|ひらなる)")},
    {.kind = kNeeds, .key = u"をこ", .context = Re(u"(痴|烏滸|尾籠)")},
    {.kind = kNeeds,
     .key = u"がう",
     .equals = {u"ごう"},
     .context = Re(u"(がうなり|がうし|がうす|強)")},
    {.kind = kNeeds, .key = u"しゐ", .equals = {u"しい"}, .context = Re(u"めしい|耳|眼|目|盲")},
    {.kind = kNeeds, .key = u"をとど", .equals = {u"おとど"}, .context = Re(u"舎弟|大臣")},
    {.kind = kNeeds,
     .key = u"はわ",
     .equals = {u"はは"},
     .context = Re(u"母|ははに|ははの|のはは|ははいわ")},
    {.kind = kNeeds, .key = u"きう", .context = Re(u"きうに|急")},
    {.kind = kNeeds, .key = u"わせ", .context = Words(u"早稲")},
    {.kind = kNeeds, .key = u"はぬ", .context = Words(u"頸")},
    {.kind = kNeeds, .key = u"をと", .equals = {u"おと"}, .context = Words(u"弟")},
    {.kind = kNeeds, .key = u"ひつ", .context = Words(u"櫃")},
    {.kind = kNeeds, .key = u"おひて", .context = Words(u"追風")},
    {.kind = kNeeds, .key = u"はし", .context = Words(u"梯")},
    {.kind = kNeeds, .key = u"ふな", .context = Words(u"鮒")},
    {.kind = kNeeds, .key = u"はぢ", .equals = {u"はじ"}, .context = Words(u"恥")},
    {.kind = kNeeds, .key = u"うて", .context = Words(u"討手")},
    {.kind = kNeeds, .key = u"ほた", .context = Words(u"保田")},
    {.kind = kNeeds, .key = u"かい", .context = Words(u"粥")},
    {.kind = kNeeds, .key = u"ごとく", .on = kYomi, .context = Words(u"五徳")},
    {.kind = kNeeds, .key = u"しめん", .on = kYomi, .context = Words(u"四面")},
    {.kind = kNeeds, .key = u"むかん", .on = kYomi, .context = Words(u"無官", u"無鹹")},
    {.kind = kNeeds, .key = u"ひる", .context = Words(u"にらひる", u"蛭")},
    {.kind = kNeeds, .key = u"いと", .context = Words(u"いと")},
    {.kind = kNeeds, .key = u"いを", .equals = {u"うを"}, .context = Words(u"魚")},
    {.kind = kNeeds, .key = u"ゑい", .equals = {u"えい"}, .context = Words(u"ゑい")},
    {.kind = kNeeds, .key = u"さえ", .context = Words(u"障")},
    {.kind = kNeeds, .key = u"たて", .context = Words(u"館")},
    {.kind = kNeeds, .key = u"ゑん", .equals = {u"えん"}, .context = Words(u"縁")},
    {.kind = kNeeds, .key = u"いよ", .context = Words(u"伊予")},
    {.kind = kNeeds, .key = u"はと", .context = Words(u"はとわらひ")},
    {.kind = kNeeds, .key = u"むこ", .context = Words(u"蒙古")},
    {.kind = kNeeds, .key = u"ばく", .context = Words(u"獏")},
    {.kind = kNeeds, .key = u"すす", .context = Words(u"すすれ")},
    {.kind = kNeeds, .key = u"ほれ", .context = Words(u"とほれ")},
    {.kind = kNeeds, .key = u"げしき", .on = kYomi, .context = Words(u"外色")},
    {.kind = kNeeds, .key = u"たりき", .on = kYomi, .context = Words(u"他力")},
    {.kind = kNeeds, .key = u"とき", .context = Words(u"斎")},
    {.kind = kNeeds, .key = u"あか", .context = Words(u"あか入")},
    {.kind = kNeeds, .key = u"つと", .equals = {u"一つと"}, .context = Words(u"つとに")},
    // Two terms written with characters of the corpus's own font.
    {.kind = kNeeds, .key = u"となり", .on = kYomi, .context = Words(u"\uE256那梨")},
    {.kind = kNeeds, .key = u"あう", .context = Words(u"阿\uE298")},
    // さる: needs its context, and is dropped within まさる all the same.
    {.kind = kNeeds,
     .key = u"さる",
     .context =
         Re(u"さるに|さる文|さる前|さるな|さる事|さる人|さるほど|さる間|さるへん|さる程|さるかと|"
            u"さる時|よもさる|さるべき人|さるべき者|さるらむ|さるまじ|さる時"),
     .also = Words(u"まさる")},

    // Drop: rejected when W holds the context.
    {.kind = kDrop,
     .key = u"かう",
     .equals = {u"こう"},
     .context =
         Re(u"(向|つかふ|かうふ|かうづ|かうべ|かふる|つかう|かふり|かふら|かうむ|うかう|かうみ|"
            u"たたかふ|わかう|なかうど|一かう|さかう|とかう|さかふ|講|かうどの|かうくつ|ひかう|"
            u"ちかう|香|かうじん|かうほり|たかうな|をかう|をかふ|かうざ|蒙|かうばし|守|甲|"
            u"かうがい|かうの|かうしやう|むかう|かうじ|かうほる|かうれ|かうぬし|かんかう|たかう)")},
    {.kind = kDrop,
     .key = u"やしき",
     .on = kYomi,
     .context = Re(u"(いやしき|あやしき|くやしき|よしき)")},
    {.kind = kDrop, .key = u"しる", .on = kYomi, .context = Re(u"そしる|しるし|ののしる|しるす")},
    {.kind = kDrop, .key = u"とわり", .context = Words(u"ことわり", u"ことはり")},
    {.kind = kDrop, .key = u"しけん", .on = kYomi, .context = Words(u"しけん")},
    {.kind = kDrop, .key = u"かんが", .on = kYomi, .context = Words(u"かんが")},
    {.kind = kDrop,
     .key = u"いを",
     .equals = {u"うを"},
     .context = Words(u"いをの"),
     .unless = Words(u"魚")},
    {.kind = kDrop, .key = u"しめ", .context = Words(u"のしめ", u"しめを")},
    {.kind = kDrop, .key = u"しゐ", .equals = {u"しい"}, .context = Words(u"しゐぢ", u"たましゐ")},
    // しう has two clauses, the second with a condition of its own.
    {.kind = kDrop, .key = u"しう", .context = Words(u"にがし", u"しうとめ")},
    {.kind = kDrop,
     .key = u"しう",
     .context = Words(u"にしう"),
     .unless = Words(u"のしう", u"しうし")},
    {.kind = kDrop, .key = u"すべ", .context = {.words = {u"にすべ"}, .like = u"*すべ[かきし]*"}},
    {.kind = kDrop, .key = u"のうえ", .on = kYomi, .context = Words(u"のうへ")},

    // Keep rows that run among the rejecting ones.
    {.kind = kKeep,
     .key = u"をや",
     .equals = {u"をや", u"おや"},
     .context = Re(u"親父|親|をやは|をやの|をやに|をやを|をおやと")},
    {.kind = kKeep,
     .key = u"とが",
     .context = Re(u"とがに|とがむ|とがめ|にとが|とがは|のとが|とがあ|とがな|とがと|とがを|はとが|"
                   u"尤|とがも")},

    // Keep: the rejection is undone when W holds the context.
    {.kind = kKeep, .key = u"藍", .context = Words(u"あいの", u"あいは")},
    {.kind = kKeep, .key = u"桶", .context = Words(u"一をけ", u"ひと", u"おけ")},
    {.kind = kKeep,
     .key = u"雁",
     .context = Words(u"かりの", u"かりと"),
     .unless = Words(u"しかり", u"ばかり")},
    {.kind = kKeep, .key = u"雉", .context = Words(u"きじ", u"雉")},
    {.kind = kKeep, .key = u"君", .context = Re(u"きみの|きみを|きみに")},
    {.kind = kKeep, .key = u"ぐし", .context = Words(u"ぐし")},
    {.kind = kKeep, .key = u"袈裟", .context = Words(u"御けさ")},
    {.kind = kKeep,
     .key = u"現",
     .context = Re(u"げんじ|げんに|げんは"),
     .unless = Words(u"ざんげん")},
    {.kind = kKeep, .key = u"功", .context = Words(u"こうを")},
    {.kind = kKeep, .key = u"佐渡", .context = Words(u"さどの")},
    {.kind = kKeep, .key = u"さば", .context = Words(u"さばの")},
    {.kind = kKeep, .key = u"しほ", .context = Re(u"しほを|しほの|のしほ|しほな|しほ一|しほみ")},
    {.kind = kKeep,
     .key = u"すえ",
     .context = Re(u"のすえ|のすへ|ゆくすへ|すへに|すへと|すへの|すゑの|のすゑ")},
    {.kind = kKeep, .key = u"酸", .context = Re(u"すき味|すき菓|すき物|すき声")},
    {.kind = kKeep, .key = u"すず", .context = Words(u"すずの")},
    {.kind = kKeep,
     .key = u"すみ",
     .unless =
         Re(u"ぬすみ|やすみ|すみか|すみ、|すみとも|すみ給|すみ候|すみやか|すみざけ|すみそめ|すすみ|"
            u"かすみ|すみし|すみながら")},
    {.kind = kKeep, .key = u"せき", .context = Re(u"にせき|とせき|せきあへ")},
    {.kind = kKeep, .key = u"そつ", .context = Re(u"･そつ|そつ等")},
    {.kind = kKeep, .key = u"側", .context = Re(u"あそば|そばだ|そばく")},
    {.kind = kKeep, .key = u"鷹", .context = Re(u"･たか|たかに|たかと")},
    {.kind = kKeep, .key = u"筒", .context = Words(u"一つつ")},
    {.kind = kKeep, .key = u"露", .context = Words(u"つゆ"), .unless = Words(u"つゆへ")},
    {.kind = kKeep, .key = u"でう", .context = Words(u"るでう", u"でふ", u"でう、")},
    {.kind = kKeep,
     .key = u"との",
     .context = Words(u"とのを", u"とのと", u"とのの", u"とのは"),
     .unless = Re(u"ことのは|ののし|ととのへ|とのをり|とのをら")},
    {.kind = kKeep, .key = u"鴟", .context = Words(u"とびの")},
    {.kind = kKeep, .key = u"どの", .unless = Re(u"なんど|ほどの|さどの")},
    {.kind = kKeep, .key = u"針", .context = Words(u"はりの")},
    {.kind = kKeep, .key = u"稗", .context = Words(u"ひゑの", u"ひへの", u"ひえの")},
    {.kind = kKeep, .key = u"富士", .context = Words(u"ふじの")},
    {.kind = kKeep,
     .key = u"ふみ",
     .unless = Re(u"をふみ|にふみ|ふみころ|ふみわく"),
     .despite = Words(u"ふみを")},
    {.kind = kKeep, .key = u"へい", .context = Words(u"一へい")},
    {.kind = kKeep, .key = u"べち", .context = Words(u"べちの")},
    {.kind = kKeep, .key = u"まろ", .context = Re(u"まろに|まろき")},
    {.kind = kKeep, .key = u"むぎ", .context = Words(u"むぎ")},
    {.kind = kKeep,
     .key = u"むま",
     .context = Words(u"むま"),
     .unless = Re(u"むまじ|むまれ|むまで|てむま|むまる")},
    {.kind = kKeep, .key = u"めこ", .context = Re(u"るめこ|、めこ|めこ･")},
    {.kind = kKeep, .key = u"もの", .context = Words(u"もの")},
    {.kind = kKeep, .key = u"やみ", .context = Re(u"のやみ|やみには|やみにみ")},
    {.kind = kKeep, .key = u"ゆめ", .context = Words(u"ゆめ")},
    {.kind = kKeep, .key = u"よし", .context = Words(u"よし")},
    {.kind = kKeep, .key = u"りう", .context = Re(u"りうの|りうを")},
    {.kind = kKeep, .key = u"障へ", .context = Words(u"にさへら")},
};

bool IsEmpty(const WTest& t) {
  return t.pattern.empty() && t.like.empty() &&
         std::all_of(t.words.begin(), t.words.end(), [](auto w) { return w.empty(); });
}

}  // namespace

std::span<const WordRule> WordRules() {
  return kRules;
}

struct RuleSet::CompiledTest {
  const WTest* test = nullptr;
  bool empty = true;
  std::unique_ptr<search::Regex> regex;
  std::unique_ptr<text::LikePattern> like;

  explicit CompiledTest(const WTest& t) : test(&t), empty(IsEmpty(t)) {
    // The table's own expressions: a fault in one is a fault of the program.
    if (!t.pattern.empty()) regex = std::make_unique<search::Regex>(t.pattern, false);
    if (!t.like.empty()) like = std::make_unique<text::LikePattern>(t.like);
  }
};

struct RuleSet::CompiledRule {
  const WordRule* rule;
  CompiledTest context, unless, despite, also;

  explicit CompiledRule(const WordRule& r)
      : rule(&r), context(r.context), unless(r.unless), despite(r.despite), also(r.also) {}
};

RuleSet::RuleSet() : RuleSet(kRules) {}

RuleSet::RuleSet(std::span<const WordRule> rows) {
  rules_.reserve(rows.size());
  for (const WordRule& r : rows) {
    (r.on == RuleOn::Head ? byHead_ : byYomi_)[r.key].push_back(rules_.size());
    rules_.emplace_back(r);
  }
}
RuleSet::~RuleSet() = default;
RuleSet::RuleSet(RuleSet&&) noexcept = default;
RuleSet& RuleSet::operator=(RuleSet&&) noexcept = default;

bool RuleSet::Passes(const CompiledTest& t, std::u16string_view w) const {
  if (t.empty) return false;
  for (const std::u16string_view word : t.test->words) {
    if (!word.empty() && text::Contains(w, word)) return true;
  }
  if (t.regex && t.regex->Test(w)) return true;
  return t.like && t.like->Matches(w);
}

int RuleSet::Apply(std::u16string_view c, std::u16string_view y, std::u16string_view w, int reject,
                   std::u16string_view* fired) const {
  // The rows that name this hit, in table order: rows of different keys
  // commute, but a key's rows keep their order.
  static const std::vector<std::size_t> kNone;
  const auto rowsOf = [](const auto& index, std::u16string_view name) -> const auto& {
    const auto found = index.find(name);
    return found == index.end() ? kNone : found->second;
  };
  const std::vector<std::size_t>& head = rowsOf(byHead_, c);
  const std::vector<std::size_t>& yomi = rowsOf(byYomi_, y);
  for (std::size_t i = 0, j = 0; i < head.size() || j < yomi.size();) {
    const bool fromHead = j == yomi.size() || (i < head.size() && head[i] < yomi[j]);
    const CompiledRule& cr = rules_[fromHead ? head[i++] : yomi[j++]];
    const WordRule& r = *cr.rule;
    const bool silent = (r.kind != RuleKind::Keep && w == r.key) ||
                        std::any_of(r.equals.begin(), r.equals.end(),
                                    [w](std::u16string_view e) { return !e.empty() && w == e; });
    if (silent) continue;
    if (Passes(cr.unless, w) && !Passes(cr.despite, w)) continue;
    int now = reject;
    switch (r.kind) {
      case RuleKind::Always:
        now = 1;
        break;
      case RuleKind::Needs:
        if (!Passes(cr.context, w) || Passes(cr.also, w)) now = 1;
        break;
      case RuleKind::Drop:
        if (Passes(cr.context, w)) now = 1;
        break;
      case RuleKind::Keep:
        if (cr.context.empty || Passes(cr.context, w)) now = 0;
        break;
    }
    if (now != reject && fired != nullptr) *fired = r.key;
    reject = now;
  }
  return reject;
}

}  // namespace suizo::views::dic_rules
