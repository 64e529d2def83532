#include "core/corpus/errors.h"

#include <vector>

namespace suizo::corpus {
namespace {

std::string Describe(const ErrorPlace& p, const std::string& detail) {
  std::vector<std::string> parts;
  if (p.line > 0) parts.push_back("line " + std::to_string(p.line));
  if (p.row >= 0) parts.push_back("row " + std::to_string(p.row));
  if (p.field >= 0 && !p.fieldName.empty()) {
    parts.push_back("field " + std::to_string(p.field) + " (" + p.fieldName + ")");
  } else if (p.field >= 0) {
    parts.push_back("field " + std::to_string(p.field));
  } else if (!p.fieldName.empty()) {
    parts.push_back("field " + p.fieldName);
  }
  std::string where;
  for (const std::string& part : parts) where.append(where.empty() ? "" : ", ").append(part);
  if (!p.file.empty()) where = where.empty() ? p.file : p.file + ": " + where;
  return where.empty() ? detail : where + ": " + detail;
}

}  // namespace

CorpusError::CorpusError(ErrorPlace place, const std::string& detail)
    : std::runtime_error(Describe(place, detail)), place_(std::move(place)) {}

}  // namespace suizo::corpus
