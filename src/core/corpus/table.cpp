#include "core/corpus/table.h"

#include <algorithm>
#include <limits>

#include "core/corpus/errors.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

constexpr std::size_t kMaxArenaUnits = std::numeric_limits<std::uint32_t>::max();

}  // namespace

Table::Table(const TableSchema& schema)
    : schema_(&schema), stride_(static_cast<std::size_t>(schema.FieldMax()) + 1) {}

void Table::OutOfRange(int row, int field) const {
  ErrorPlace place{std::string(schema_->stem), 0, row, field, {}};
  if (field >= 0 && field <= schema_->FieldMax()) {
    place.fieldName = text::ToUtf8(schema_->fields[static_cast<std::size_t>(field)]);
  }
  throw CorpusError(place, "outside the table " + std::string(schema_->name) + " (rows 0.." +
                               std::to_string(schema_->rowCapacity) + ", fields 0.." +
                               std::to_string(schema_->FieldMax()) + ")");
}

void Table::CheckPlace(int row, int field) const {
  if (row < 0 || row > schema_->rowCapacity || field < 0 || field > schema_->FieldMax()) {
    OutOfRange(row, field);
  }
}

std::u16string_view Table::Get(int row, int field) const {
  CheckPlace(row, field);
  const std::size_t index =
      static_cast<std::size_t>(row) * stride_ + static_cast<std::size_t>(field);
  if (index >= cells_.size()) return {};
  const Cell c = cells_[index];
  return {arena_.data() + c.offset, c.length};
}

Table::Cell& Table::CellAt(int row, int field) {
  CheckPlace(row, field);
  ReserveRows(row);
  return cells_[static_cast<std::size_t>(row) * stride_ + static_cast<std::size_t>(field)];
}

void Table::Set(int row, int field, std::u16string_view value) {
  held_.field = -1;
  Cell& cell = CellAt(row, field);
  const char16_t* base = arena_.data();
  if (!value.empty() && value.data() >= base &&
      value.data() + value.size() <= base + arena_.size()) {
    cell = {static_cast<std::uint32_t>(value.data() - base),
            static_cast<std::uint32_t>(value.size())};
    return;
  }
  if (arena_.size() + value.size() > kMaxArenaUnits) {
    throw CorpusError({std::string(schema_->stem), 0, row, field, {}},
                      "the table holds too much text");
  }
  const auto offset = static_cast<std::uint32_t>(arena_.size());
  arena_.insert(arena_.end(), value.begin(), value.end());
  cell = {offset, static_cast<std::uint32_t>(value.size())};
}

void Table::ClearRow(int row) {
  held_.field = -1;
  CheckPlace(row, 0);
  const std::size_t begin = static_cast<std::size_t>(row) * stride_;
  if (begin >= cells_.size()) return;
  std::fill_n(cells_.begin() + static_cast<std::ptrdiff_t>(begin), stride_, Cell{0, 0});
}

void Table::Clear() {
  held_.field = -1;
  arena_.clear();
  cells_.clear();
  cols_ = 0;
  rows_ = 0;
}

std::span<char16_t> Table::ResetWithArena(std::size_t units, std::size_t spare) {
  if (units + spare > kMaxArenaUnits) {
    throw CorpusError({std::string(schema_->stem)}, "the table holds too much text");
  }
  Clear();
  arena_.reserve(units + spare);
  arena_.resize(units);
  return {arena_.data(), arena_.size()};
}

Table::Cell* Table::LoadCells(int firstRow, int lastRow) {
  held_.field = -1;
  CheckPlace(lastRow, 0);
  cells_.clear();
  // Left uninitialised, the cells of a large table cost only what is written.
  cells_.resize((static_cast<std::size_t>(lastRow) + 1) * stride_);
  std::fill_n(cells_.begin(), static_cast<std::size_t>(firstRow) * stride_, Cell{});
  return cells_.data();
}

void Table::KeepRows(int lastRow) {
  held_.field = -1;
  const std::size_t keep = lastRow < 0 ? 0 : (static_cast<std::size_t>(lastRow) + 1) * stride_;
  cells_.resize(std::min(cells_.size(), keep));
}

void Table::ReserveRows(int lastRow) {
  const std::size_t needed = (static_cast<std::size_t>(lastRow) + 1) * stride_;
  if (needed > cells_.size()) cells_.resize(needed, Cell{});
}

bool Table::Holds(int row, int field, char16_t unit) const {
  if (held_.field != field || held_.unit != unit) {
    CheckPlace(0, field);
    held_.rows.assign(static_cast<std::size_t>(std::max(rows_, 0)) + 1, 0);
    for (int r = 0; r <= rows_; ++r) {
      held_.rows[static_cast<std::size_t>(r)] = text::ContainsUnit(Get(r, field), unit) ? 1 : 0;
    }
    held_.field = field;
    held_.unit = unit;
  }
  if (row >= 0 && row <= rows_) return held_.rows[static_cast<std::size_t>(row)] != 0;
  return text::ContainsUnit(Get(row, field), unit);
}

}  // namespace suizo::corpus
