// Faults in the corpus files. The message names the file and, where they are
// known, the line, the table row and the field, so that a scholar can find
// the place; the program ends on such a fault without writing anything.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace suizo::corpus {

struct ErrorPlace {
  ErrorPlace(std::string file, long line = 0, int row = -1, int field = -1,
             std::string fieldName = {})
      : file(std::move(file)),
        line(line),
        row(row),
        field(field),
        fieldName(std::move(fieldName)) {}

  std::string file;
  long line = 0;   // 1-based line of the file; 0 when it does not apply
  int row = -1;    // table row; -1 when it does not apply
  int field = -1;  // field number; -1 when it does not apply
  std::string fieldName;
};

class CorpusError : public std::runtime_error {
 public:
  CorpusError(ErrorPlace place, const std::string& detail);
  const ErrorPlace& place() const { return place_; }

 private:
  ErrorPlace place_;
};

}  // namespace suizo::corpus
