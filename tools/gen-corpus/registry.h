// What one part of the generated corpus offers the others to link to: the
// writings' documents and rows, the sources, the sutra's chapters, the
// mandala keys; and the corrections the parts ask the import to make.
#pragma once

#include <string>
#include <vector>

namespace suizo::gen {

struct DocumentRef {
  std::u16string sysNo;   // ｼｽﾃﾑNo. of the head row (`Mok` 3, `Dat` 2), as written
  std::u16string bangou;  // 番号 (`Mok` 4), "1-203"
  std::u16string title;   // 書名 (`Mok` 10)
  int klass = 0;          // C, 0..9
  int year = 0;           // Western year of the document's date
  std::u16string date;    // 年月日, "1260.07.16"
};

struct SourceRef {
  int number = 0;            // 史料番号 (`SMok` 2, `SDat` 4), below 2000
  std::u16string headSysNo;  // ｼｽﾃﾑNo. of its head row, 50000 and above
  std::u16string title;
  int year = 0;
};

// One entry of the corrections list the import applies in order.
struct Correction {
  std::u16string table;  // "Dat", "Mok", "Dic", "Nen"
  std::u16string key;  // ｼｽﾃﾑNo., 辞基本No or 年基礎No; empty for a pass over the table
  int field = 0;
  std::u16string kind;  // set, replace, head, link, pass, append, exempt, couple
  std::u16string oldText;
  std::u16string newText;
};

struct Registry {
  std::vector<DocumentRef> documents;     // in ｼｽﾃﾑNo. order
  std::vector<std::u16string> rowSysNos;  // every `Dat` row with text
  std::vector<SourceRef> sources;
  std::vector<std::u16string> sourceRowSysNos;
  int hokRows = 0;
  std::vector<int> honKeys;  // 尊基礎No of the `Hon` rows
  std::vector<Correction> corrections;
};

}  // namespace suizo::gen
