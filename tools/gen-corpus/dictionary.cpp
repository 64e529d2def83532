// 辞書事典.dat and add.csv: the dictionary as the database exports it, with
// the class of each entry in the separate table the import falls back on.
//
// The sample holds an entry for every word the ranked lookup treats by name,
// the terms the letters, the sutra and the sources share, the titles of some
// documents and sources, and a few entries that carry each kind of reference
// and markup the view converts. The full scale adds composed entries up to
// the table's size.
#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "composer.h"
#include "core/corpus/file_io.h"
#include "core/corpus/schema.h"
#include "core/text/normal_forms.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "dat_writer.h"
#include "history.h"
#include "modules.h"

namespace suizo::gen {
namespace {

using text::IntText;
using Words = std::span<const std::u16string_view>;

// Classes of add.csv: 0 none, 1 翠典, 2 解題, 3 ｼｽﾃﾑ, 4 法華, 5 史料, 6 大論, 7 止観, 8 眼蔵.
enum Class { kNone, kWritings, kRecord, kSystem, kLotus, kSource, kDairon, kShikan, kGenzo };

struct Term {
  std::u16string_view head;
  std::u16string_view reading;
  int klass;
  std::u16string_view gloss;
  std::u16string_view note = {};  // 備考: a pattern the lookup tries on the selection
};

// The words the ranked lookup rejects or keeps by name. A kana head word is
// its own reading; a kanji head word stands for a key that the lookup
// compares with the reading.
constexpr Term kRuleWords[] = {
    // Rejected unless the selection is the word itself.
    {u"かひ", u"かひ", kWritings,
     u"貝、また峡の意。仮名書きの語にて、文脈によっては甲斐とも解す。"},
    {u"もや", u"もや", kWritings, u"靄。また母屋を仮名で記した例もあり、いづれとも定めがたい。"},
    {u"比肩", u"ひけん", kWritings, u"肩を並べること。互ひに優劣のないさまをいふ。"},
    {u"意見", u"いけん", kWritings, u"思ふところを述べること。諫めの意にも用ゐる。"},
    {u"南都", u"なんと", kWritings, u"奈良の都。また奈良の諸大寺を総べていふ。"},
    // Kept only with a word of their context.
    {u"あら", u"あら", kWritings, u"感動の語。事に触れて驚き、喜び、嘆くときに発する声。",
     u"あ[らラ]"},
    {u"ばし", u"ばし", kWritings,
     u"強めの助詞。「をばし」「にばし」の形で禁止や仮定の文に添へる。"},
    {u"ひら", u"ひら", kWritings, u"平。ひたすら、もっぱらの意。「ひら信」などと用ゐる。",
     u"ひ[らラ]"},
    {u"をこ", u"をこ", kWritings, u"痴。愚かなること。烏滸、尾籠とも書く。", u"を[こコ]"},
    {u"がう", u"がう", kWritings, u"強、剛の字音を仮名で記したもの。"},
    {u"しゐ", u"しゐ", kWritings, u"盲。目の見えぬこと。多く「めしゐ」の形で見える。"},
    {u"をとど", u"をとど", kWritings, u"大臣を敬っていふ語。また弟をいふ例もあり、文脈による。"},
    {u"はわ", u"はわ", kWritings, u"母の仮名書き。「はは」の転。"},
    {u"きう", u"きう", kWritings, u"急の字音。にはかなること。"},
    {u"わせ", u"わせ", kWritings, u"早稲。早く実る稲。"},
    {u"はぬ", u"はぬ", kWritings, u"刎ぬ。頸を切り落とす意。"},
    {u"をと", u"をと", kWritings, u"弟の古き仮名遣ひ。をととに同じ。"},
    {u"ひつ", u"ひつ", kWritings, u"櫃。蓋のある大形の箱。"},
    {u"おひて", u"おひて", kWritings, u"追風。船を進める順風。"},
    {u"はし", u"はし", kWritings, u"梯。高き所へ登るための具。", u"は[しシ]"},
    {u"ふな", u"ふな", kWritings, u"鮒。川や池に棲む魚。"},
    {u"はぢ", u"はぢ", kWritings, u"恥。面目を失ふこと。"},
    {u"うて", u"うて", kWritings, u"討手。敵を討つために差し向ける人々。"},
    {u"ほた", u"ほた", kWritings, u"保田。安房国の地名。"},
    {u"かい", u"かい", kWritings, u"粥をいふ仮名書き。かゆの転とされる。"},
    {u"五徳", u"ごとく", kWritings, u"炭火の上に据ゑて鍋などを載せる具。また五つの徳目。"},
    {u"四面", u"しめん", kWritings, u"四方の面。まはりのすべて。"},
    {u"無官", u"むかん", kWritings, u"官職に就いてゐないこと。"},
    {u"無鹹", u"むかん", kWritings, u"塩気のないこと。淡き味。"},
    {u"ひる", u"ひる", kWritings, u"蛭、また韮や蒜の類をいふ。「にらひる」と続ける例がある。"},
    {u"いと", u"いと", kWritings, u"甚だ、まことにの意の副詞。また糸。"},
    {u"いを", u"いを", kWritings, u"魚の古き言ひ方。うをに同じ。", u"い[をヲ]"},
    {u"ゑい", u"ゑい", kWritings, u"力を入れるときの掛け声。"},
    {u"さえ", u"さえ", kWritings, u"障。さはり、妨げとなるもの。"},
    {u"たて", u"たて", kWritings, u"館。武士の居所。また楯の意もあり。"},
    {u"ゑん", u"ゑん", kWritings, u"縁の字音を仮名で記したもの。"},
    {u"いよ", u"いよ", kWritings, u"伊予国。また「いよいよ」の略。"},
    {u"はと", u"はと", kWritings, u"はたと、にはかにの意。「はとわらひ」と続けて用ゐる。"},
    {u"むこ", u"むこ", kWritings, u"蒙古の仮名書き。"},
    {u"ばく", u"ばく", kWritings, u"獏。夢を食ふと伝へる獣。"},
    {u"すす", u"すす", kWritings, u"啜る意の語。「すすれ」の形で見える。"},
    {u"ほれ", u"ほれ", kWritings, u"掘るの命令形。「とほれ」の一部として見える例が多い。"},
    {u"外色", u"げしき", kWritings, u"外にあらはれた色かたち。"},
    {u"他力", u"たりき", kWritings, u"仏の力によって救はれること。自力に対していふ。"},
    {u"とき", u"とき", kWritings, u"斎。僧の午前の食事。また時。"},
    {u"あか", u"あか", kWritings, u"閼伽。「あか入」は閼伽を入れる器。"},
    {u"つと", u"つと", kWritings, u"苞。土産の包み。また「つとに」は早くよりの意。"},
    {u"\uE256那梨", u"となり", kLotus, u"梵語の音写。本文の字形を翠蔵の外字で示す。"},
    {u"阿\uE298", u"あう", kLotus, u"梵語の音写。一字目は常の字、二字目は外字で示す。"},
    {u"あう", u"あう", kWritings, u"梵語の音写「阿\uE298」を仮名で記したもの。"},
    // Dropped when a word of their context stands around them.
    {u"かう", u"かう", kWritings, u"斯う。このやうに。また香、講などの字音の仮名書き。"},
    {u"屋敷", u"やしき", kWritings, u"家の建つ敷地。また構へた住まひ。"},
    {u"汁", u"しる", kWritings, u"汁物、また液。"},
    {u"とわり", u"とわり", kWritings, u"ことわりの脱字かとされる。独立の語としての用例はまれ。"},
    {u"私見", u"しけん", kWritings, u"自分ひとりの考へ。"},
    {u"官衙", u"かんが", kWritings, u"役所。官庁の古称。"},
    {u"野上", u"のうえ", kWritings, u"地名。のがみとも読む。"},
    {u"しめ", u"しめ", kWritings, u"標。占めたことを示すしるし。また注連。"},
    {u"しう", u"しう", kWritings, u"主。主君をいふ。"},
    {u"すべ", u"すべ", kWritings, u"術。手だて、しかた。"},
    {u"さる", u"さる", kWritings, u"猿。また「然る」として、さやうなの意。", u"さ[るル]"},
    // Kept again when a word of their context stands around them.
    {u"をや", u"をや", kWritings, u"親の古き仮名遣ひ。"},
    {u"とが", u"とが", kWritings, u"咎。あやまち、罪。"},
    {u"藍", u"あい", kWritings, u"藍草。青き染料をとる。"},
    {u"桶", u"をけ", kWritings, u"水などを入れる木の器。"},
    {u"雁", u"かり", kWritings, u"渡り鳥。秋に来て春に帰る。"},
    {u"雉", u"きじ", kWritings, u"野の鳥。雄は羽の色うるはし。"},
    {u"君", u"きみ", kWritings, u"主君、また人を敬っていふ語。"},
    {u"ぐし", u"ぐし", kWritings, u"具し。伴ふ、連れ立つ意。"},
    {u"袈裟", u"けさ", kWritings, u"僧が衣の上に掛ける布。"},
    {u"現", u"げん", kWritings, u"あらはれること。また現世の略。"},
    {u"功", u"こう", kWritings, u"いさを。積み重ねた善き行ひ。"},
    {u"佐渡", u"さど", kWritings, u"北陸道の一国。日本海に浮かぶ島。"},
    {u"さば", u"さば", kWritings, u"生飯。食事の前に鬼神に施す少しの飯。"},
    {u"しほ", u"しほ", kWritings, u"潮、また塩。"},
    {u"すえ", u"すえ", kWritings, u"末。終はり、また子孫。"},
    {u"酸", u"すき", kWritings, u"すっぱき味。"},
    {u"側", u"そば", kWritings, u"かたはら。"},
    {u"鷹", u"たか", kWritings, u"猛き鳥。鷹狩に用ゐる。"},
    {u"筒", u"つつ", kWritings, u"中の空いた細長き器。"},
    {u"露", u"つゆ", kWritings, u"草葉に結ぶ水の玉。はかなきもののたとへ。"},
    {u"でう", u"でう", kWritings, u"定、条などの字音を仮名で記したもの。"},
    {u"との", u"との", kWritings, u"殿。貴人、また夫をいふ。"},
    {u"鴟", u"とび", kWritings, u"鳶。"},
    {u"どの", u"どの", kWritings, u"殿。人名や官名の下に添へる敬称。"},
    {u"針", u"はり", kWritings, u"縫ひ針。"},
    {u"稗", u"ひえ", kWritings, u"穀物の一。"},
    {u"富士", u"ふじ", kWritings, u"駿河と甲斐の境に聳える山。"},
    {u"ふみ", u"ふみ", kWritings, u"文。書状、また書物。"},
    {u"へい", u"へい", kWritings, u"瓶。酒などを入れる器。"},
    {u"べち", u"べち", kWritings, u"別の字音を仮名で記したもの。"},
    {u"まろ", u"まろ", kWritings, u"丸。まるきこと。"},
    {u"むぎ", u"むぎ", kWritings, u"麦。"},
    {u"むま", u"むま", kWritings, u"馬の古き仮名書き。"},
    {u"めこ", u"めこ", kWritings, u"妻子。"},
    {u"もの", u"もの", kWritings, u"物、また者。"},
    {u"やみ", u"やみ", kWritings, u"闇。"},
    {u"ゆめ", u"ゆめ", kWritings, u"夢。また「ゆめゆめ」は決しての意。"},
    {u"よし", u"よし", kWritings, u"由。わけ、事のいはれ。"},
    {u"りう", u"りう", kWritings, u"竜の字音を仮名で記したもの。"},
    {u"障へ", u"さへ", kWritings, u"さへぎること、妨げ。"},
    {u"すみ", u"すみ", kWritings, u"墨、また炭。"},
    {u"せき", u"せき", kWritings, u"関。また咳。"},
    {u"そつ", u"そつ", kWritings, u"帥の字音。大宰帥をいふ。"},
};

// Words that the rules name as their context, so that the lookup has the
// right entry to choose where it throws out the kana one.
constexpr Term kContextWords[] = {
    {u"親", u"おや", kWritings, u"父母。また祖先をいふ。"},
    {u"母", u"はは", kWritings, u"子を産み育てる女親。"},
    {u"急", u"きゅう", kWritings, u"にはかなること。また差し迫ること。"},
    {u"恥", u"はじ", kWritings, u"面目を失ふこと。"},
    {u"耳", u"みみ", kWritings, u"音を聞く器官。"},
    {u"眼", u"まなこ", kWritings, u"目。また物を見分ける力。"},
    {u"盲", u"もう", kWritings, u"目の見えぬこと。"},
    {u"大臣", u"だいじん", kWritings, u"太政官の上官。"},
    {u"舎弟", u"しゃてい", kWritings, u"弟。"},
    {u"痴", u"ち", kShikan, u"愚かなること。三毒の一。"},
    {u"強", u"ごう", kWritings, u"つよきこと。"},
    {u"早稲", u"わせ", kWritings, u"早く実る稲。"},
    {u"頸", u"くび", kWritings, u"くび。"},
    {u"弟", u"おとうと", kWritings, u"年下の男のきやうだい。"},
    {u"櫃", u"ひつ", kWritings, u"蓋のある大きな箱。"},
    {u"追風", u"おいて", kWritings, u"後ろから吹く順風。"},
    {u"梯", u"はし", kWritings, u"はしご。"},
    {u"橋", u"はし", kWritings, u"川に架け渡すもの。"},
    {u"箸", u"はし", kWritings, u"食事に用ゐる二本の細き棒。"},
    {u"鮒", u"ふな", kWritings, u"淡水の魚の一。"},
    {u"討手", u"うって", kWritings, u"追討のために遣はされる人々。"},
    {u"保田", u"ほた", kWritings, u"安房国の地名。"},
    {u"粥", u"かゆ", kWritings, u"米を多くの水で炊いたもの。"},
    {u"蛭", u"ひる", kWritings, u"水辺に棲み、血を吸ふ虫。"},
    {u"魚", u"うお", kWritings, u"うを。水に棲む生き物。"},
    {u"館", u"たち", kWritings, u"武士の住まひ。やかた。"},
    {u"縁", u"えん", kShikan, u"物事の起こる助けとなる条件。"},
    {u"伊予", u"いよ", kWritings, u"南海道の一国。"},
    {u"蒙古", u"もうこ", kSource, u"北方の大国。文永、弘安の両度に来襲した。"},
    {u"獏", u"ばく", kWritings, u"夢を食ふと伝へる想像上の獣。"},
    {u"斎", u"とき", kWritings, u"僧の食事。"},
    {u"閼伽", u"あか", kLotus, u"仏に供へる水。"},
    {u"関", u"せき", kSource, u"関所。"},
    {u"甲斐", u"かい", kWritings, u"東山道の一国。"},
};

// Terms the letters, the sutra and the sources share, the places and people
// the letters name, and the words of the program itself.
constexpr Term kTerms[] = {
    {u"衆生", u"しゅじょう", kLotus, u"生を受けたものすべて。迷ひの世に生まれかはる者の総称。"},
    {u"菩薩", u"ぼさつ", kLotus, u"悟りを求め、あはせて他を導かんと誓ふ修行者。"},
    {u"功徳", u"くどく", kWritings, u"善き行ひによって身に備はる徳。また、その報い。"},
    {u"供養", u"くよう", kWritings, u"仏、法、僧に物をささげ、敬ひをあらはすこと。"},
    {u"如来", u"にょらい", kLotus, u"仏の十号の一。真如より来たれる者の意。"},
    {u"浄土", u"じょうど", kWritings, u"仏の住する清らかな国土。穢土に対していふ。"},
    {u"説法", u"せっぽう", kLotus, u"教へを説き聞かせること。"},
    {u"世尊", u"せそん", kLotus, u"世に尊ばれる者の意。仏の尊称。"},
    {u"諸仏", u"しょぶつ", kLotus, u"十方三世のもろもろの仏。"},
    {u"国土", u"こくど", kWritings, u"国の土地。衆生の住むところとしての国。"},
    {u"光明", u"こうみょう", kLotus, u"仏や菩薩の身より放つ光。智慧のたとへにもいふ。"},
    {u"大衆", u"だいしゅ", kLotus, u"説法の座に連なる多くの聴き手。また寺の衆徒。"},
    {u"比丘", u"びく", kDairon, u"出家して具足戒を受けた男の僧。"},
    {u"法輪", u"ほうりん", kDairon, u"仏の教へを輪宝にたとへていふ。"},
    {u"方便", u"ほうべん", kLotus, u"衆生を導くために設ける巧みな手だて。"},
    {u"智慧", u"ちえ", kDairon, u"物事の理を見きはめる力。六波羅蜜の一。"},
    {u"歓喜", u"かんぎ", kLotus, u"教へを聞いて心に喜びを生ずること。"},
    {u"礼拝", u"らいはい", kWritings, u"仏に向かひ、身を低くして敬ふこと。"},
    {u"宝塔", u"ほうとう", kLotus, u"宝で飾られた塔。経中には地より涌き出づる塔をいふ。"},
    {u"虚空", u"こくう", kDairon, u"何物もなく、さへぎるもののないところ。"},
    {u"声聞", u"しょうもん", kLotus, u"仏の声を聞いて悟る者。二乗の一。"},
    {u"縁覚", u"えんがく", kLotus, u"縁に触れてひとり悟る者。二乗の一。"},
    {u"寿命", u"じゅみょう", kLotus, u"いのちの長さ。経中には仏の寿命の久遠を説く。"},
    {u"因縁", u"いんねん", kShikan, u"物事の生ずる直接の因と、それを助ける縁。"},
    {u"譬喩", u"ひゆ", kLotus, u"たとへ。教へをわかりやすく示すための話。"},
    {u"聴聞", u"ちょうもん", kWritings, u"法話を聞くこと。"},
    {u"受持", u"じゅじ", kLotus, u"経を受けてたもち続けること。"},
    {u"不可思議", u"ふかしぎ", kDairon, u"心に思ひはかることも言葉にあらはすこともできないこと。"},
    {u"題目", u"だいもく", kWritings, u"経の名。また、その名を唱へる行。"},
    {u"菩提", u"ぼだい", kWritings, u"悟り。また死者の冥福。"},
    {u"檀那", u"だんな", kWritings, u"寺に施しをする在家の信者。施主。"},
    {u"末世", u"まっせ", kWritings, u"仏法の衰へた世。末法の世。"},
    {u"御房", u"ごぼう", kWritings, u"僧を敬っていふ語。"},
    {u"読誦", u"どくじゅ", kWritings, u"経を声に出して読むこと。"},
    {u"観念", u"かんねん", kShikan, u"心を一つに定め、仏や理を観じ念ずること。"},
    {u"荘厳", u"しょうごん", kLotus, u"仏国土や堂内を美しく飾ること。"},
    {u"法華", u"ほっけ", kLotus, u"法華経の略。また、その教へを奉ずる一門。"},
    {u"法華経", u"ほけきょう", kLotus, u"大乗経典の一。一乗の教へを説く。"},
    {u"妙法", u"みょうほう", kLotus, u"すぐれた法。"},
    {u"妙法蓮華経", u"みょうほうれんげきょう", kLotus, u"法華経の具名。"},
    {u"止観", u"しかん", kShikan, u"心を止めて一つの境に注ぎ、正しく観ずること。"},
    {u"一念三千", u"いちねんさんぜん", kShikan, u"一瞬の心に三千の諸法が具はるとする天台の法門。"},
    {u"般若", u"はんにゃ", kDairon, u"悟りに至る智慧。"},
    {u"六波羅蜜", u"ろくはらみつ", kDairon, u"菩薩の修める六つの行。"},
    {u"坐禅", u"ざぜん", kGenzo, u"姿を正して坐し、心を静める行。"},
    {u"仏性", u"ぶっしょう", kGenzo, u"衆生に本来そなはる、仏となるべき性。"},
    {u"只管打坐", u"しかんたざ", kGenzo, u"ただひたすらに坐ること。"},
    {u"定本", u"ていほん", kSystem, u"本ｼｽﾃﾑで頁行を示す底本の一。諸本を校合して定めた本文。"},
    {u"系年", u"けいねん", kSystem, u"書状の書かれた年を定めたもの。推定を含む。"},
    {u"真蹟", u"しんせき", kSystem, u"本人の書いた原本。"},
    {u"写本", u"しゃほん", kSystem, u"原本を書き写した本。"},
    {u"解題", u"かいだい", kRecord,
     u"書物や文書について、その成立、内容、伝来を解き明かしたもの。"},
    {u"史料", u"しりょう", kSource, u"歴史を知る手がかりとなる文書や記録の類。"},
    {u"鎌倉", u"かまくら", kWritings, u"相模国の地。幕府の置かれたところ。"},
    {u"身延", u"みのぶ", kWritings, u"甲斐国の山。"},
    {u"伊豆", u"いず", kWritings, u"東海道の一国。"},
    {u"安房", u"あわ", kWritings, u"東海道の一国。房総の南端。"},
    {u"下総", u"しもうさ", kWritings, u"東海道の一国。"},
    {u"駿河", u"するが", kWritings, u"東海道の一国。"},
    {u"富木殿", u"ときどの", kWritings, u"翠典の宛所に見える人。下総の人とされる。"},
    {u"南条殿", u"なんじょうどの", kWritings, u"翠典の宛所に見える人。駿河の人とされる。"},
    {u"千日尼", u"せんにちあま", kWritings, u"翠典の宛所に見える尼。佐渡の人とされる。"},
    {u"立正安国", u"りっしょうあんこくろん", kWritings,
     u"正法を立てて国を安んずべき旨を説いた書。"},
    {u"教義", u"けうぎ", kWritings, u"教への内容。また一宗の立てる義。"},
    {u"一向・", u"いっこう", kWritings, u"ひたすら、もっぱら。「一向に」の形で多く用ゐる。"},
    {u"ひたすら･", u"ひたすら", kWritings, u"ただそれ一つに心を向けるさま。"},
    {u"庵", u"あん", kWritings, u"草で葺いた小さな住まひ。僧の籠もるところ。"},
    {u"経", u"きょう", kLotus, u"仏の教へを記した書。"},
    {u"仏", u"ぶつ", kLotus, u"悟りを開いた者。"},
    {u"法", u"ほう", kLotus, u"仏の教へ。また物事のあり方。"},
    {u"寺", u"てら", kWritings, u"僧が住して仏を祀るところ。"},
    {u"ゐ", u"ゐ", kNone, u"井。水を汲むところ。"},
    {u"けさ", u"けさ", kWritings, u"⇒袈裟。<BR>袈裟を仮名で記したもの。"},
    {u"くやう", u"くやう", kWritings, u"⇒供養。<BR>供養の字音を仮名で記したもの。"},
};

// The text of continuation rows, kept apart by the entry they continue.
struct Continued {
  std::u16string_view head;
  std::array<std::u16string_view, 3> parts;
};
constexpr Continued kContinued[] = {
    {u"法華",
     {u"翠蔵にいふ「法華」は、経の本文、注経、科文を収める部分の名。上部の「法華」より開き、品の"
      u"目次から読み進める。"}},
    {u"題目",
     {u"唱題の行は、経の名に一経の功徳がことごとくこもるとする見方に基づく。",
      u"翠典の消息には、題目を唱へることを勧める文が繰り返し見える。",
      u"この項の末尾の段。前の段を受けて、唱題と読誦との関はりを述べる。"}},
};

// Readings of the titles the writings and the sources are given, by their
// parts, so that a dictionary entry can name a document.
struct Reading {
  std::u16string_view kanji, kana;
};
constexpr Reading kTitleHeads[] = {
    {u"春雨", u"はるさめ"}, {u"竹林", u"ちくりん"}, {u"松風", u"まつかぜ"}, {u"月影", u"つきかげ"},
    {u"白雲", u"はくうん"}, {u"浦舟", u"うらぶね"}, {u"夜鐘", u"やしょう"}, {u"山寺", u"やまでら"},
    {u"古堂", u"こどう"},   {u"柴戸", u"しばのと"}, {u"清水", u"しみず"},   {u"花園", u"はなぞの"},
    {u"秋霧", u"あきぎり"}, {u"雪間", u"ゆきま"},   {u"雁信", u"がんしん"}, {u"苔庵", u"たいあん"},
    {u"滝音", u"たきおと"}, {u"蓮池", u"はすいけ"}, {u"梅香", u"ばいこう"}, {u"杉原", u"すぎはら"},
    {u"岩室", u"いわむろ"}, {u"萩露", u"はぎつゆ"}, {u"鶴林", u"かくりん"}, {u"草庵", u"そうあん"},
};
// Longer tails first, so that 御消息 is not read as 消息.
constexpr Reading kTitleTails[] = {
    {u"御消息", u"ごしょうそく"}, {u"御返事", u"ごへんじ"}, {u"御書", u"ごしょ"},
    {u"消息", u"しょうそく"},     {u"抄", u"しょう"},       {u"書", u"しょ"},
    {u"事", u"のこと"},           {u"記", u"き"},
};
constexpr Reading kWholeTitles[] = {
    {u"聖愚問答抄", u"しょうぐもんどうしょう"},
    {u"御義口伝", u"おんぎくでん"},
    {u"古記抄", u"こきしょう"},
    {u"寺院縁起", u"じいんえんぎ"},
    {u"山門日記", u"さんもんにっき"},
    {u"鎌倉覚書", u"かまくらおぼえがき"},
    {u"浦里記", u"うらさとき"},
    {u"僧伝拾遺", u"そうでんしゅうい"},
    {u"国衙文書", u"こくがもんじょ"},
    {u"荘園目録", u"しょうえんもくろく"},
    {u"諸寺記録", u"しょじきろく"},
    {u"年中行事記", u"ねんじゅうぎょうじき"},
    {u"旧家伝書", u"きゅうかでんしょ"},
    {u"御教書写", u"みぎょうしょうつし"},
};

// Parts of composed head words: one kanji and its reading in compounds.
constexpr Reading kMorphemes[] = {
    {u"法", u"ほう"},   {u"華", u"け"},     {u"経", u"きょう"}, {u"仏", u"ぶつ"},
    {u"心", u"しん"},   {u"道", u"どう"},   {u"天", u"てん"},   {u"地", u"ち"},
    {u"山", u"さん"},   {u"寺", u"じ"},     {u"僧", u"そう"},   {u"大", u"だい"},
    {u"小", u"しょう"}, {u"上", u"じょう"}, {u"中", u"ちゅう"}, {u"無", u"む"},
    {u"本", u"ほん"},   {u"門", u"もん"},   {u"正", u"しょう"}, {u"像", u"ぞう"},
    {u"末", u"まつ"},   {u"因", u"いん"},   {u"果", u"か"},     {u"空", u"くう"},
    {u"仮", u"け"},     {u"円", u"えん"},   {u"教", u"きょう"}, {u"行", u"ぎょう"},
    {u"証", u"しょう"}, {u"信", u"しん"},   {u"戒", u"かい"},   {u"定", u"じょう"},
    {u"慧", u"え"},     {u"念", u"ねん"},   {u"観", u"かん"},   {u"理", u"り"},
    {u"事", u"じ"},     {u"性", u"しょう"}, {u"相", u"そう"},   {u"体", u"たい"},
    {u"名", u"みょう"}, {u"字", u"じ"},     {u"妙", u"みょう"}, {u"蓮", u"れん"},
    {u"月", u"がつ"},   {u"日", u"にち"},   {u"光", u"こう"},   {u"明", u"みょう"},
    {u"音", u"おん"},   {u"声", u"しょう"}, {u"香", u"こう"},   {u"宝", u"ほう"},
    {u"塔", u"とう"},   {u"国", u"こく"},   {u"土", u"ど"},     {u"世", u"せ"},
    {u"界", u"かい"},   {u"衆", u"しゅ"},   {u"生", u"じょう"}, {u"縁", u"えん"},
    {u"起", u"き"},     {u"滅", u"めつ"},   {u"度", u"ど"},     {u"化", u"け"},
    {u"他", u"た"},     {u"自", u"じ"},     {u"利", u"り"},     {u"益", u"やく"},
    {u"一", u"いち"},   {u"三", u"さん"},   {u"五", u"ご"},     {u"十", u"じゅう"},
    {u"千", u"せん"},   {u"万", u"まん"},   {u"実", u"じつ"},   {u"来", u"らい"},
    {u"伝", u"でん"},   {u"真", u"しん"},   {u"礼", u"らい"},   {u"会", u"え"},
    {u"応", u"おう"},   {u"恵", u"え"},     {u"浄", u"じょう"}, {u"善", u"ぜん"},
    {u"悪", u"あく"},   {u"業", u"ごう"},   {u"苦", u"く"},     {u"楽", u"らく"},
    {u"智", u"ち"},     {u"徳", u"とく"},   {u"願", u"がん"},   {u"力", u"りき"},
    {u"身", u"しん"},   {u"口", u"く"},     {u"意", u"い"},     {u"師", u"し"},
    {u"子", u"し"},     {u"文", u"もん"},   {u"義", u"ぎ"},     {u"句", u"く"},
    {u"品", u"ほん"},   {u"巻", u"かん"},   {u"座", u"ざ"},     {u"堂", u"どう"},
    {u"院", u"いん"},   {u"坊", u"ぼう"},   {u"講", u"こう"},   {u"供", u"く"},
    {u"施", u"せ"},     {u"宗", u"しゅう"}, {u"祖", u"そ"},     {u"聖", u"しょう"},
    {u"賢", u"けん"},   {u"凡", u"ぼん"},   {u"夫", u"ぶ"},     {u"学", u"がく"},
};

// Parts of composed kana words.
constexpr std::array<std::u16string_view, 24> kKanaParts = {
    u"あま", u"いそ", u"うら", u"かぜ", u"くも", u"しほ", u"つゆ", u"なみ",
    u"はな", u"みね", u"もり", u"ゆき", u"やま", u"かは", u"たに", u"のべ",
    u"はる", u"あき", u"ふゆ", u"なつ", u"よる", u"あさ", u"ゆふ", u"そら"};

// Explanations: what a composed word means, how it is used, how it is read.
constexpr std::array<std::u16string_view, 24> kSenses = {u"仏の教へを受けたもつこと",
                                                         u"迷ひを離れて悟りに至る道筋",
                                                         u"心のはたらきの一つ",
                                                         u"仏の徳をほめたたへること",
                                                         u"修行の階位の一つ",
                                                         u"寺に置かれた役の一つ",
                                                         u"衆生を導くための手だて",
                                                         u"世の移り変はるさま",
                                                         u"経に説かれるたとへの一つ",
                                                         u"供物をささげる作法",
                                                         u"名号を唱へる行",
                                                         u"国の安穏を祈る法会",
                                                         u"師から弟子へ口づから伝へる教へ",
                                                         u"戒の条目の一つ",
                                                         u"仏の身にそなはる相",
                                                         u"浄土に生まれるための行",
                                                         u"教へを浅深によって分けた区分",
                                                         u"罪を悔いてあらはす作法",
                                                         u"堂塔を飾るための具",
                                                         u"僧が身に帯びる法具",
                                                         u"荘園に関はる名目",
                                                         u"寺社に納められた文書の類",
                                                         u"在家の信者の集まり",
                                                         u"経を書き写す功徳"};
constexpr std::array<std::u16string_view, 10> kKanaSenses = {
    u"景物を詠む歌の言葉",     u"季節の移ろひをいふ語", u"旅の途上の景をいふ語",
    u"山里の暮らしに関はる語", u"浦の暮らしに関はる語", u"空のけしきをいふ語",
    u"夜明けのさまをいふ語",   u"草木のさまをいふ語",   u"消息の結びに添へる語",
    u"雨や雪のさまをいふ語"};
constexpr std::array<std::u16string_view, 6> kSchools = {u"天台", u"真言", u"浄土家",
                                                         u"禅家", u"律家", u"倶舎"};
constexpr std::array<std::u16string_view, 16> kUsages = {
    u"翠典の消息に散見される。",
    u"古写本には旧字で記すものがある。",
    u"諸宗によって解釈に異同がある。",
    u"語源については諸説あって定めがたい。",
    u"中世の文書では仮名で書かれることが多い。",
    u"後の世には意味が広がり、俗にも用ゐられた。",
    u"経釈の引用に伴って見えることが多い。",
    u"天台と真言とで用法を異にする。",
    u"用例は多くないが、晩年の書状に見える。",
    u"注釈書には異なる読みを示すものもある。",
    u"字義よりも音を借りた表記とみられる。",
    u"同じ語を漢字と仮名とで書き分けた例がある。",
    u"談義の聞書に多く見える語である。",
    u"対告の身分によって言ひ換へる例がある。",
    u"写本によっては脱字となってゐる。",
    u"古辞書には載せないものが多い。"};

// Head words of the related terms a composed entry points to.
constexpr std::array<std::u16string_view, 16> kRelated = {
    u"衆生", u"菩薩", u"功徳", u"供養", u"如来", u"浄土", u"題目", u"法華",
    u"方便", u"智慧", u"止観", u"宝塔", u"因縁", u"菩提", u"末世", u"観念"};

// The groups of the variant table that the head words touch, in table order
// and separated by blanks: the first group holding a character gives its
// class, as in the lookup.
constexpr std::u16string_view kVariantGroups =
    u"(（ )） ・･ 2２ 3３ わは いひゐ うふ えへゑ おほを ぢじ づず "
    u"むん やよ 裟娑 首頚頸 儿人兒児士厶私肱志痣誌 利梨離哩 末季枳 強疆彊境竟 "
    u"浄淨城成 舎捨舍堵闍 紀木 園薗\uE293 観觀勧勸 "
    u"歌哥謌伽茄迦邂柯舸\uE227加賀呵訶 陀檀豆荳佗駄 文問 甥生匠 徳悳德得 "
    u"岩嵓巖嵒巌石鉐 河川巛 違遺 果菓樹 泥尼眤昵 授受 婆波 大太 華譁樺崋嘩花 "
    u"虚空 教敎経坙經 \uE257\uE256 世丗貰 著箸着 慧恵 悪惡 安侒 "
    u"一壹弌壱 稲稻 益鎰溢洫 奄菴淹掩庵广厂廠厰廣広 応應 仮假 芽衙牙 会會 "
    u"解懈觧 戒誡 界堺畍 覚覺 楽樂 粥鬻 巻惓倦捲卷 歓驩讙歡懽 関關 館舘 "
    u"贋鴈鳫雁偐 願愿 喜憘嬉憙 義誼 丘邱 旧舊 橋毳橇 句鉤鈎勾 系係繋 賢贒 "
    u"厳嚴 五伍 御馭圉圄禦 口扣叩釦 向嚮 甲鉀胛呷 国囗圀國\uE001 坐座 "
    u"斎齋 仔子 四肆 師獅 止阯趾址 事亊 写冩寫 寿壽 秋鞦龝穐 什十 "
    u"俊駿蹲蕣舜儁 諸\uFA22 庄莊荘 抄鈔 松枩鬆 消銷逍 証證 鍾鐘 障嶂 "
    u"条條 真眞 針箴鍼 錘槌椎鎚追 杉杦 清淸 声磬聲 隻咫只 跡蹟迹 千阡仟韆 "
    u"善譱 禅禪 倉艙 総摠總惣 草屮艸 側仄 続續 尊奠 他它 体笨軆體躰 苔薹 "
    u"滝瀧 知智 恥耻 池沱 痴癡 聴聽听 鶴鵠靏靍 定掟 弟悌 伝傳 田畋甸佃 "
    u"都\uFA26 働仂動力 読讀 念廿唸 拝拜 梅栂楳 比匕 不桴柎枹 夫趺 "
    u"富冨土 風瘋凬 仏髴彿佛 返\uFA24 保葆堡呆 母毋姆 宝寳寶 豊禮豐礼 "
    u"本夲 万萬 面麪麺 蒙濛矇 夜掖 野墅埜 余豫餘予 羅邏 来徠來 裏裡里 苓蓮 "
    u"匱櫃 咸鹹 圓元円 埃雉 學斈学 實寔実 獏貘 鴟鵄 閒間閑";

using GroupIndex = std::unordered_map<char16_t, std::u16string_view>;

const GroupIndex& Groups() {
  static const GroupIndex index = [] {
    GroupIndex g;
    for (std::u16string_view group : text::Split(kVariantGroups, u" ")) {
      for (char16_t c : group) g.emplace(c, group);  // the first group wins
    }
    return g;
  }();
  return index;
}

std::u16string Pattern(std::u16string_view word) {
  std::u16string out;
  for (char16_t c : word) {
    const auto it = Groups().find(c);
    if (it == Groups().end()) {
      out += c;
    } else {
      out += u'[';
      out += it->second;
      out += u']';
    }
  }
  return out;
}

bool IsHiragana(char16_t c) {
  const int code = static_cast<std::uint16_t>(text::SjisCode(c));
  return code >= 0x829F && code <= 0x82F1;
}

bool AllHiragana(std::u16string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), IsHiragana);
}

// 印 as the import computes it from the normalised head word: the whole word
// in kana, or the first character followed by the rest. The source gives a
// one-character head word that is not kana its whole pattern, which the
// import keeps.
std::u16string LookupKey(std::u16string_view head) {
  const std::u16string w = text::NormA(head);
  if (AllHiragana(w) || w.size() == 1) return Pattern(w);
  return w.substr(0, 1) + Pattern(std::u16string_view(w).substr(1));
}

// ---------------------------------------------------------------------------

struct Entry {
  std::u16string head;
  std::u16string reading;
  std::u16string explanation;
  std::u16string note;  // 備考
  int source = 0;       // 史料番号, 0 for none
  int klass = kNone;
  std::vector<std::u16string> continued;  // the explanations of its continuation rows
  int key = 0;                            // 辞基本No; its continuation rows follow on
  int homonym = 0;                        // 見出No
};

// The numbers the other parts registered, in the forms the explanations cite.
struct References {
  std::vector<std::u16string> rows;     // five-digit 翠典 rows
  std::vector<std::u16string> subRows;  // "#####.#" rows
  std::vector<std::u16string> sourceRows;
  std::vector<int> sources;
  int hokRows = 0;
  std::u16string missing;   // a five-digit number no table holds
  std::u16string misprint;  // another, that a correction mends

  explicit References(const Registry& registry) {
    std::set<long> taken;
    const auto digits = [](std::u16string_view s) {
      return !s.empty() &&
             std::all_of(s.begin(), s.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
    };
    for (const std::u16string& s : registry.rowSysNos) {
      if (s.size() == 5 && digits(s)) {
        rows.push_back(s);
      } else if (s.size() == 7 && s[5] == u'.' && digits(s.substr(0, 5)) && digits(s.substr(6))) {
        subRows.push_back(s);
      }
      if (s.size() >= 5 && digits(s.substr(0, 5))) {
        taken.insert(std::stol(text::ToUtf8(s.substr(0, 5))));
      }
    }
    for (const DocumentRef& d : registry.documents) {
      if (d.sysNo.size() >= 5 && digits(d.sysNo.substr(0, 5))) {
        taken.insert(std::stol(text::ToUtf8(d.sysNo.substr(0, 5))));
      }
    }
    for (const std::u16string& s : registry.sourceRowSysNos) {
      if (s.size() == 5 && digits(s) && s >= u"50000") sourceRows.push_back(s);
    }
    for (const SourceRef& s : registry.sources) {
      if (s.number > 0 && s.number < 2000) sources.push_back(s.number);
    }
    hokRows = registry.hokRows;
    long v = 49999;
    while (taken.count(v) != 0) --v;
    missing = IntText(v--);
    while (taken.count(v) != 0) --v;
    misprint = IntText(v);
  }

  // "史料番号0003": the form that names a source by its four digits.
  static std::u16string SourceNumber(int n) {
    std::u16string digits = IntText(n);
    return u"史料番号" + std::u16string(4 - std::min<std::size_t>(4, digits.size()), u'0') + digits;
  }
};

template <typename T>
const T& PickOf(Rng& rng, const std::vector<T>& items) {
  return items[static_cast<std::size_t>(rng.Next() % items.size())];
}

// Composes explanations within a length, sentence by sentence.
class Explainer {
 public:
  Explainer(Composer& composer, const References& refs) : c_(composer), refs_(refs) {}

  // A reference of some kind the view turns into a link, or nothing.
  std::u16string Reference() {
    Rng& rng = c_.rng();
    const int kind = rng.Between(0, 99);
    if (kind < 30 && !refs_.rows.empty()) {
      const std::u16string& n = PickOf(rng, refs_.rows);
      switch (rng.Between(0, 2)) {
        case 0:
          return u"用例は〔" + n + u"〕に見える。";
        case 1:
          return n + u"参照。";
        default:
          return u"翠典[" + n + u"]に引く。";
      }
    }
    if (kind < 38 && !refs_.subRows.empty()) return PickOf(rng, refs_.subRows) + u"の注に見える。";
    if (kind < 52 && !refs_.sources.empty()) {
      return References::SourceNumber(PickOf(rng, refs_.sources)) + u"にも関はる記事がある。";
    }
    if (kind < 60 && !refs_.sourceRows.empty()) {
      return u"史料本文" + PickOf(rng, refs_.sourceRows) + u"参照。";
    }
    if (kind < 80 && refs_.hokRows > 0) {
      const std::u16string n = IntText(rng.Between(1, refs_.hokRows));
      return rng.Percent(50) ? u"経文は[h" + n + u"]に出づ。" : u"開結〔h" + n + u"〕を見よ。";
    }
    if (kind < 88) return u"目録番号" + IntText(rng.Between(100000, 999999)) + u"。";
    return {};
  }

  std::u16string Related() {
    Rng& rng = c_.rng();
    std::u16string out = u"⇒";
    const int parts = rng.Between(1, 4);
    for (int i = 0; i < parts; ++i) {
      out +=
          kRelated[static_cast<std::size_t>(rng.Between(0, static_cast<int>(kRelated.size()) - 1))];
      out += u"。";
    }
    return out;
  }

  std::u16string Usage() { return std::u16string(c_.rng().Pick(Words(kUsages))); }

  std::u16string Quote() { return u"例に「" + c_.LetterLine(10, 22) + u"」とある。"; }

  // Adds sentences after `start` until the text is near `target` characters,
  // never beyond `max`, and ends now and then with related terms.
  std::u16string Extend(std::u16string start, int target, bool related = true, int max = 300) {
    Rng& rng = c_.rng();
    std::u16string text = std::move(start);
    const auto add = [&](const std::u16string& piece) {
      if (piece.empty() || text::Contains(text, piece)) return;
      if (static_cast<int>(text.size() + piece.size()) + 4 > max) return;
      const int glue = rng.Between(0, 19);
      if (glue == 0) text += u"<BR>";
      if (glue == 1) text += u"／";
      text += piece;
    };
    bool quoted = false;
    for (int tries = 0; static_cast<int>(text.size()) < target && tries < 12; ++tries) {
      const int kind = rng.Between(0, 9);
      if (kind < 5) {
        add(Usage());
      } else if (kind < 8) {
        add(Reference());
      } else if (!quoted) {
        add(Quote());
        quoted = true;
      }
    }
    while (text.size() < 30) add(Usage());
    if (related && rng.Percent(8)) add(Related());
    return text;
  }

  int Length(int min, int max) { return c_.rng().Between(min, max); }

  std::u16string Sense() { return std::u16string(c_.rng().Pick(Words(kSenses))); }

  // The opening of a composed kanji entry.
  std::u16string Opening(const std::vector<const Reading*>& parts) {
    Rng& rng = c_.rng();
    switch (rng.Between(0, 4)) {
      case 0:
        return Sense() + u"をいふ。";
      case 1:
        return u"「" + std::u16string(parts[0]->kanji) + u"」と「" +
               std::u16string(parts[1]->kanji) + u"」とを合はせた語。" + Sense() + u"を指す。";
      case 2:
        return u"仏典に見える語で、" + Sense() + u"の意。";
      case 3: {
        const std::u16string first = Sense();
        return first + u"。転じて、" + Sense() + u"の意にも用ゐる。";
      }
      default: {
        const std::u16string sense = Sense();
        return sense + u"。" + std::u16string(rng.Pick(Words(kSchools))) + u"の用語。";
      }
    }
  }

  std::u16string KanaOpening() {
    return u"和語。" + std::u16string(c_.rng().Pick(Words(kKanaSenses))) + u"。";
  }

 private:
  Composer& c_;
  const References& refs_;
};

// ---------------------------------------------------------------------------
// The fixed entries.

Entry FromTerm(const Term& t) {
  Entry e;
  e.head = t.head;
  e.reading = t.reading;
  e.explanation = t.gloss;
  e.note = t.note;
  e.klass = t.klass;
  return e;
}

Entry* Find(std::vector<Entry>& entries, std::u16string_view head) {
  for (Entry& e : entries) {
    if (e.head == head) return &e;
  }
  throw std::logic_error("dictionary: no entry " + text::ToUtf8(head));
}

// The reading of a title made of a known head and tail, or of a known whole
// title; empty for any other.
std::pair<std::u16string, std::u16string> TitleReading(std::u16string_view title) {
  for (const Reading& r : kWholeTitles) {
    if (title.starts_with(r.kanji)) return {std::u16string(r.kanji), std::u16string(r.kana)};
  }
  for (const Reading& h : kTitleHeads) {
    if (!title.starts_with(h.kanji)) continue;
    for (const Reading& t : kTitleTails) {
      if (title.substr(h.kanji.size()).starts_with(t.kanji)) {
        return {std::u16string(h.kanji) + std::u16string(t.kanji),
                std::u16string(h.kana) + std::u16string(t.kana)};
      }
    }
  }
  return {};
}

// Entries on some documents: they send the reader to the document's record,
// and their numbers are the documents' keys.
void AddRecordEntries(const Registry& registry, int count, std::set<std::u16string>& heads,
                      std::vector<Entry>& entries) {
  for (const DocumentRef& d : registry.documents) {
    if (count == 0) break;
    auto [head, reading] = TitleReading(d.title);
    if (head.empty() || !heads.insert(head).second) continue;
    Entry e;
    e.head = head;
    e.reading = reading;
    e.klass = kRecord;
    e.explanation = d.year > 0 ? EraLabel(d.year) + u"の成立とされる。" : u"成立の年次は未詳。";
    e.explanation +=
        u"真蹟の有無、宛所、系年の諸説については資料の解題をご覧ください"
        u"(上部ﾎﾞﾀﾝ列の「資料」をｸﾘｯｸする)。〔" +
        d.sysNo + u"〕";
    entries.push_back(std::move(e));
    --count;
  }
}

// Entries on some sources, linked by their number.
void AddSourceEntries(const Registry& registry, int count, std::set<std::u16string>& heads,
                      std::vector<Entry>& entries) {
  std::map<std::u16string, std::size_t> byTitle;
  for (const SourceRef& s : registry.sources) {
    auto [head, reading] = TitleReading(s.title);
    if (head.empty()) continue;
    const auto known = byTitle.find(head);
    if (known != byTitle.end()) {
      Entry& e = entries[known->second];
      if (e.explanation.size() < 200) {
        e.explanation += References::SourceNumber(s.number) + u"も同名。";
      }
      continue;
    }
    if (count == 0 || !heads.insert(head).second) continue;
    Entry e;
    e.head = head;
    e.reading = reading;
    e.klass = kSource;
    e.source = s.number;
    e.explanation = u"史料の名。" + References::SourceNumber(s.number) + u"に収める。";
    byTitle.emplace(head, entries.size());
    entries.push_back(std::move(e));
    --count;
  }
}

// The entries that carry the markup and each kind of reference the view
// converts, so that each of them is seen to work.
void AddFeatures(std::vector<Entry>& entries, const References& refs) {
  const auto append = [&](std::u16string_view head, std::u16string_view text) {
    Find(entries, head)->explanation += text;
  };
  const auto row = [&](std::size_t i) {
    return refs.rows.empty() ? refs.missing : refs.rows[i % refs.rows.size()];
  };
  // Related terms: at the end, past a break, cut by a break or a slash.
  append(u"衆生", u"<BR>⇒菩薩。如来。浄土。功徳。供養。題目。法華。妙法。");
  append(u"菩薩", u"⇒衆生。如来。");
  append(u"如来", u"⇒仏。世尊。<BR>十号の数へ方には異説がある。");
  append(u"浄土", u"⇒荘厳。観念／経によって説く浄土は一様でない。");
  append(u"妙法", u"⇒《次参考》");
  // References to the writings, the sources and the sutra.
  append(u"功徳", u"用例は〔" + row(1) + u"〕、" + row(7) + u"に見える。");
  if (!refs.subRows.empty()) append(u"功徳", u"また" + refs.subRows.front() + u"の注を見よ。");
  append(u"末世", u"旧版は〔" + refs.missing + u"〕を引くが、該当の箇所がない。");
  append(u"法華経", u"経文は[h1]より[h" + IntText(refs.hokRows) + u"]まで。旧目録に[h" +
                        IntText(refs.hokRows + 137) + u"]とあるのは誤り。目録番号130827。");
  append(u"方便", u"<br>方便品に詳しい。");
  append(u"智慧", u"<br>般若と同じく用ゐる。");
  if (!refs.sources.empty()) {
    append(u"史料", References::SourceNumber(refs.sources.front()) + u"の記事はその一例。");
    append(u"供養", u"その功得は量りがたし、と" + References::SourceNumber(refs.sources.back()) +
                        u"にいふ。");
  }
  if (!refs.sourceRows.empty()) {
    append(u"蒙古",
           u"来襲の記事は史料本文" + refs.sourceRows[refs.sourceRows.size() / 2] + u"に見える。");
  }
  // The numbers the corrections mend.
  append(u"題目", u"唱題の初見は〔" + refs.misprint + u"〕。");
  append(u"宝塔", u"涌出の段は〔" + row(3) + u"〕に引く。経は〔h" +
                      IntText(std::min(refs.hokRows, 1200)) + u"〕。");
  append(u"譬喩", u"七つの譬へは〈h" + IntText(std::min(refs.hokRows, 210)) + u"〉以下に説く。");
  Find(entries, u"法華")->explanation += u"≪翠蔵用語≫としての解説は、次頁をご覧ください。";
}

std::vector<Entry> FixedEntries(const Sizes& sizes, const Registry& registry,
                                const References& refs, Explainer& ex,
                                std::set<std::u16string>& heads) {
  std::vector<Entry> entries;
  for (std::span<const Term> list :
       {std::span<const Term>(kRuleWords), std::span<const Term>(kContextWords),
        std::span<const Term>(kTerms)}) {
    for (const Term& t : list) {
      if (!heads.insert(std::u16string(t.head)).second) {
        throw std::logic_error("dictionary: head word twice: " + text::ToUtf8(t.head));
      }
      entries.push_back(FromTerm(t));
    }
  }
  const bool sample = sizes.dictionaryEntries < 1000;
  AddRecordEntries(registry, sample ? 6 : 200, heads, entries);
  AddSourceEntries(registry, sample ? 8 : 120, heads, entries);
  // A sentence or two more, so that no entry is bare; the features come after,
  // since related terms must stand last. An entry on a document cites only
  // the document's key, which the view links to its record.
  for (Entry& e : entries) {
    if (e.klass != kRecord) e.explanation = ex.Extend(e.explanation, ex.Length(40, 120), false);
  }
  AddFeatures(entries, refs);
  for (const Continued& c : kContinued) {
    for (std::u16string_view part : c.parts) {
      if (!part.empty()) Find(entries, c.head)->continued.emplace_back(part);
    }
  }
  return entries;
}

// ---------------------------------------------------------------------------
// Composed entries.

// Adjacent head words whose order the entries rely on ("⇒《次参考》" names the
// next entry): no composed word may come between them.
constexpr std::array<std::pair<std::u16string_view, std::u16string_view>, 1> kAdjacent = {
    {{u"妙法", u"妙法蓮華経"}}};

class Vocabulary {
 public:
  Vocabulary(std::set<std::u16string>& heads, const std::vector<Entry>& fixed) : heads_(heads) {
    for (const Entry& e : fixed) ++readings_[e.reading];
  }

  // Takes a head word that is new and falls between no adjacent pair, so long
  // as its reading has fewer than nine entries: 見出No stays one digit.
  bool Take(const std::u16string& head, const std::u16string& reading) {
    for (const auto& [a, b] : kAdjacent) {
      if (head > a && head < b) return false;
    }
    if (heads_.count(head) != 0 || readings_[reading] >= 9) return false;
    heads_.insert(head);
    ++readings_[reading];
    return true;
  }

 private:
  std::set<std::u16string>& heads_;
  std::map<std::u16string, int> readings_;
};

constexpr int kClassWeights[] = {8, 40, 0, 4, 20, 6, 8, 8, 6};

int ComposedClass(Rng& rng) {
  int roll = rng.Between(0, 99);
  for (int k = 0; k < 9; ++k) {
    roll -= kClassWeights[k];
    if (roll < 0) return k;
  }
  return kWritings;
}

Entry ComposeKanji(Explainer& ex, Rng& rng, Vocabulary& vocabulary) {
  for (;;) {
    const int roll = rng.Between(0, 99);
    const int count = roll < 25 ? 2 : roll < 90 ? 3 : 4;
    std::vector<const Reading*> parts;
    Entry e;
    for (int i = 0; i < count; ++i) {
      parts.push_back(&kMorphemes[static_cast<std::size_t>(
          rng.Between(0, static_cast<int>(std::size(kMorphemes)) - 1))]);
      e.head += parts.back()->kanji;
      e.reading += parts.back()->kana;
    }
    if (!vocabulary.Take(e.head, e.reading)) continue;
    e.klass = ComposedClass(rng);
    std::u16string opening = ex.Opening(parts);
    e.explanation = ex.Extend(std::move(opening), rng.Between(30, 300));
    return e;
  }
}

Entry ComposeKana(Explainer& ex, Rng& rng, Vocabulary& vocabulary) {
  for (;;) {
    Entry e;
    const int count = rng.Between(2, 3);
    int last = -1;
    for (int i = 0; i < count; ++i) {
      int part = rng.Between(0, static_cast<int>(kKanaParts.size()) - 1);
      if (part == last) part = (part + 1) % static_cast<int>(kKanaParts.size());  // no "なつなつ"
      e.head += kKanaParts[static_cast<std::size_t>(part)];
      last = part;
    }
    e.reading = e.head;
    if (!vocabulary.Take(e.head, e.reading)) continue;
    e.klass = ComposedClass(rng);
    std::u16string opening = ex.KanaOpening();
    e.explanation = ex.Extend(std::move(opening), rng.Between(30, 200));
    return e;
  }
}

// One-kanji head words from the parts, for the full scale.
void AddSingles(Explainer& ex, Rng& rng, Vocabulary& vocabulary, std::vector<Entry>& entries) {
  for (const Reading& m : kMorphemes) {
    Entry e;
    e.head = m.kanji;
    e.reading = m.kana;
    if (!vocabulary.Take(e.head, e.reading)) continue;
    e.klass = ComposedClass(rng);
    std::u16string opening = ex.Sense() + u"。字音は" + e.reading + u"。";
    e.explanation = ex.Extend(std::move(opening), rng.Between(30, 120));
    entries.push_back(std::move(e));
  }
}

void AddComposed(const Sizes& sizes, Explainer& ex, Rng& rng, Vocabulary& vocabulary,
                 std::vector<Entry>& entries) {
  const bool full = sizes.dictionaryEntries >= 1000;
  if (full) AddSingles(ex, rng, vocabulary, entries);
  while (static_cast<int>(entries.size()) < sizes.dictionaryEntries) {
    Entry e = rng.Percent(full ? 7 : 20) ? ComposeKana(ex, rng, vocabulary)
                                         : ComposeKanji(ex, rng, vocabulary);
    // Long entries run over into continuation rows now and then.
    if (full && rng.Percent(1)) {
      const int more = rng.Percent(20) ? 2 : 1;
      for (int i = 0; i < more; ++i) {
        std::u16string usage = ex.Usage();
        e.continued.push_back(ex.Extend(std::move(usage), rng.Between(30, 200)));
      }
    }
    entries.push_back(std::move(e));
  }
}

// A row the import drops without merging: "続き" without brackets.
Entry DroppedRow(const std::vector<Entry>& entries) {
  for (const Entry& e : entries) {
    if (e.head == u"法華経") {
      Entry d = e;
      d.head += u"続き";
      d.explanation =
          u"旧版で次頁に送った部分。本文は前項の記述に合はせて改めたので、ここには残さない。";
      d.continued.clear();
      return d;
    }
  }
  throw std::logic_error("dictionary: no entry to continue");
}

// ---------------------------------------------------------------------------
// Keys, order and output.

// 辞基本No in the order the entries were made, with gaps, below the size of
// the import's class table.
void AssignKeys(std::vector<Entry>& entries, Rng& rng) {
  std::size_t rows = 0;
  for (const Entry& e : entries) rows += 1 + e.continued.size();
  const int limit = 40000;
  const int gapPercent = std::min<int>(
      60, static_cast<int>((limit - 1 - static_cast<int>(rows)) * 90 / static_cast<int>(rows)));
  int key = 0;
  for (Entry& e : entries) {
    key += 1 + (rng.Percent(gapPercent) ? 1 : 0);
    e.key = key;
    key += static_cast<int>(e.continued.size());
  }
  if (key > limit) throw std::logic_error("dictionary: keys beyond the class table");
}

// The export's order: by head word, each entry's continuation rows after it.
// 見出No counts the entries of one reading in that order.
std::vector<const Entry*> Ordered(std::vector<Entry>& entries) {
  std::vector<Entry*> order;
  for (Entry& e : entries) order.push_back(&e);
  std::stable_sort(order.begin(), order.end(), [](const Entry* a, const Entry* b) {
    return a->head != b->head ? a->head < b->head : a->reading < b->reading;
  });
  std::map<std::u16string, int> seen;
  for (Entry* e : order) e->homonym = ++seen[e->reading];
  return {order.begin(), order.end()};
}

std::u16string ContinuationHead(std::u16string_view head, std::size_t i) {
  static constexpr std::u16string_view kDigits = u"１２３４５６７８９";
  std::u16string h(head);
  h += u"（つづき";
  if (i > 0) h += kDigits[i];
  return h + u"）";
}

struct Row {
  const Entry* entry;
  std::u16string head;
  const std::u16string* explanation;
  int key;
};

std::vector<Row> Rows(const std::vector<const Entry*>& order) {
  std::vector<Row> rows;
  for (const Entry* e : order) {
    rows.push_back({e, e->head, &e->explanation, e->key});
    for (std::size_t i = 0; i < e->continued.size(); ++i) {
      rows.push_back(
          {e, ContinuationHead(e->head, i), &e->continued[i], e->key + 1 + static_cast<int>(i)});
    }
  }
  return rows;
}

void WriteTable(const std::vector<Row>& rows, const std::filesystem::path& path) {
  DatWriter out({u"辞基本No", u"見出No", u"見出項目", u"見出項目元", u"見出項目旧字分", u"見出よみ",
                 u"語義解説", u"印", u"備考", u"史料番号", u"分類", u"事類"});
  for (const Row& r : rows) {
    const Entry& e = *r.entry;
    std::vector<Value> v = out.Blank();
    out.Set(v, u"辞基本No", Value::Number(r.key));
    out.Set(v, u"見出No", Value::Number(e.homonym));
    out.Set(v, u"見出項目", Value::Text(r.head));
    out.Set(v, u"見出項目元", Value::Text(r.head));
    // The old-form spelling, where the head word has a character that has
    // one; every such character is replaced, so the generator draws nothing.
    Rng none(0);
    const std::u16string old = WithOldForms(r.head, none, 100);
    if (old != r.head) out.Set(v, u"見出項目旧字分", Value::Text(old));
    out.Set(v, u"見出よみ", Value::Text(e.reading));
    out.Set(v, u"語義解説", Value::Text(*r.explanation));
    out.Set(v, u"印", Value::Text(LookupKey(r.head)));
    if (!e.note.empty()) out.Set(v, u"備考", Value::Text(e.note));
    if (e.source > 0) out.Set(v, u"史料番号", Value::Number(e.source));
    out.Add(std::move(v));
  }
  out.Write(path);
}

// add.csv: the class of every row by its key, for an export without classes.
void WriteClasses(const std::vector<Row>& rows, const std::filesystem::path& path) {
  std::vector<std::pair<int, int>> classes;
  for (const Row& r : rows) classes.emplace_back(r.key, r.entry->klass);
  std::sort(classes.begin(), classes.end());
  std::u16string out = u"辞基本No,分類\r\n";
  for (const auto& [key, klass] : classes) out += IntText(key) + u"," + IntText(klass) + u"\r\n";
  corpus::WriteFileWhole(path, text::EncodeSjis(out));
}

// The repairs the import makes after the merge. The import finds a key only
// among the first rows, as many as it keeps, so each target must lie there.
void RegisterCorrections(const std::vector<Row>& rows, const References& refs, Registry& registry) {
  std::size_t kept = 0;
  for (const Row& r : rows) {
    kept += r.head == r.entry->head && !text::Contains(r.head, u"続き") ? 1 : 0;
  }
  const auto keyOf = [&](std::u16string_view head) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].head != head) continue;
      if (i >= kept) {
        throw std::logic_error("dictionary: a correction beyond the rows the import finds");
      }
      return IntText(rows[i].key);
    }
    throw std::logic_error("dictionary: no row to correct: " + text::ToUtf8(head));
  };
  const std::u16string hok = IntText(std::min(refs.hokRows, 210));
  std::u16string linked = refs.rows.empty() ? refs.missing : refs.rows[3 % refs.rows.size()];
  auto& c = registry.corrections;
  c.push_back({u"Dic", keyOf(u"譬喩"), 7, u"replace", u"〈h" + hok + u"〉", u"〔h" + hok + u"〕"});
  c.push_back({u"Dic", keyOf(u"供養"), 7, u"replace", u"功得", u"功徳"});
  // A bare number is bracketed by the routine before it is replaced.
  c.push_back({u"Dic", keyOf(u"題目"), 7, u"link", refs.misprint,
               refs.rows.empty() ? refs.missing : refs.rows.front()});
  c.push_back({u"Dic", keyOf(u"宝塔"), 7, u"link", u"〔" + linked + u"〕", u"[" + linked + u"]"});
  c.push_back({u"Dic", u"", 6, u"pass", u"けうぎ", u"きょうぎ"});
  c.push_back({u"Dic", u"", 7, u"pass", u"<br>", u"<BR>"});
  c.push_back({u"Dic", keyOf(u"立正安国"), 3, u"set", u"", u"立正安国論"});
}

}  // namespace

void WriteDictionary(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder) {
  Composer composer(sizes.seed ^ 0xD1C7);
  Rng& rng = composer.rng();
  const References refs(registry);
  Explainer ex(composer, refs);

  std::set<std::u16string> heads;
  std::vector<Entry> entries = FixedEntries(sizes, registry, refs, ex, heads);
  Vocabulary vocabulary(heads, entries);
  AddComposed(sizes, ex, rng, vocabulary, entries);
  entries.push_back(DroppedRow(entries));

  AssignKeys(entries, rng);
  const std::vector<Row> rows = Rows(Ordered(entries));
  if (rows.size() > static_cast<std::size_t>(corpus::SchemaOf(corpus::TableId::Dic).rowCapacity)) {
    throw std::logic_error("dictionary: more rows than the table holds");
  }
  WriteTable(rows, folder / "辞書事典.dat");
  WriteClasses(rows, folder / "add.csv");
  RegisterCorrections(rows, refs, registry);
}

}  // namespace suizo::gen
