#include "core/views/selection_dialog.h"

#include <gtest/gtest.h>

#include "core/corpus/orders.h"
#include "core/reader/writings_window.h"
#include "test_support.h"

namespace suizo::views {
namespace {

using reader::FormKind;

TEST(SelectionDialog, OpensOnTheSelectionAndAppliesOnlyOnConfirm) {
  corpus::Selection selection;
  selection.Gk = 24;
  selection.Kn = 1;
  selection.CSel[3] = 0;
  SelectionDialog dialog(selection);
  EXPECT_EQ(kCollectionOptions[static_cast<std::size_t>(dialog.Option1)].caption, u"縮刷遺文");
  EXPECT_EQ(dialog.Check1, 1);
  EXPECT_EQ(dialog.Check2, selection.CSel);

  // The same collection in another order keeps the placements.
  dialog.Check1 = 0;
  EXPECT_TRUE(dialog.Command1(selection));
  EXPECT_EQ(selection.Kn, 0);
  EXPECT_EQ(selection.MokRedo, 0);
  // Another collection asks for them anew.
  SelectionDialog other(selection);
  other.Option1 = 1;
  other.Command1(selection);
  EXPECT_EQ(selection.Gk, 22);
  EXPECT_EQ(selection.MokRedo, 1);
  // Confirming what was there changes nothing.
  selection.MokRedo = 0;
  EXPECT_FALSE(SelectionDialog(selection).Command1(selection));
  EXPECT_EQ(ClassCaption(0), u"C0");
  EXPECT_EQ(ClassCaption(10), u"S");
}

// A window that notes when it is asked to follow.
class Follower : public reader::OpenWindow {
 public:
  Follower(FormKind kind, std::vector<std::pair<FormKind, bool>>& log)
      : OpenWindow(kind), log_(log) {}
  void FollowSelection() override { log_.emplace_back(kind(), false); }
  void PlacementsRebuilt() override { log_.emplace_back(kind(), true); }

 private:
  void OnShow() override {}
  void OnRaise() override {}
  std::vector<std::pair<FormKind, bool>>& log_;
};

class Follow : public ::testing::Test {
 protected:
  Follow() : corpus(testing::SampleStore()) {
    for (const int group : {0, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
  }
  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
};

TEST_F(Follow, EveryWindowFollowsInItsTurn) {
  std::vector<std::pair<FormKind, bool>> log;
  reader::WindowRegistry windows([&](FormKind kind) -> std::unique_ptr<reader::OpenWindow> {
    return std::make_unique<Follower>(kind, log);
  });
  for (const FormKind kind : {FormKind::Form2, FormKind::Form6, FormKind::Form5, FormKind::Form9,
                              FormKind::Form12, FormKind::Form16}) {
    windows.Create(kind);
  }
  SelectionDialog dialog(selection);
  dialog.Option1 = 1;
  dialog.Command1(selection);
  ConvSui(corpus, selection, windows);
  using P = std::pair<FormKind, bool>;
  EXPECT_EQ(log, (std::vector<P>{{FormKind::Form9, true},
                                 {FormKind::Form12, false},
                                 {FormKind::Form9, false},
                                 {FormKind::Form5, false},
                                 {FormKind::Form2, false},
                                 {FormKind::Form6, false}}));
  EXPECT_EQ(selection.MokRedo, 0);
  // Only the order changes: no placements, no restored refinements.
  log.clear();
  SelectionDialog again(selection);
  again.Check1 = 1;
  again.Command1(selection);
  ConvSui(corpus, selection, windows);
  EXPECT_EQ(log.front(), P(FormKind::Form12, false));
}

TEST_F(Follow, ReadersKeepTheirLineOrLoseItWithItsDocument) {
  std::unique_ptr<reader::Navigator> navigator;
  reader::WindowRegistry windows([&](FormKind) -> std::unique_ptr<reader::OpenWindow> {
    return std::make_unique<reader::WritingsWindow>(corpus, selection, settings, *navigator);
  });
  navigator = std::make_unique<reader::Navigator>(corpus, windows);
  auto& window = dynamic_cast<reader::WritingsWindow&>(windows.Create(FormKind::Form2));
  reader::WritingsReader& r = window.reader();

  // A line printed in 定本 is found again there.
  corpus::Selection probe = selection;
  probe.Gk = 22;
  probe.MokRedo = 1;
  corpus::Corpus other(testing::SampleStore());
  other.ReadData(0);
  corpus::ApplySelection(other, probe);
  const std::u16string kept(other.Dat().Get(other.DatOrder[10], corpus::dat::kSysNo));
  r.GoToLine(corpus::FindReaderPlace(corpus, kept).Lpos);
  window.Deactivate();
  ASSERT_EQ(r.OldLsys, kept);
  SelectionDialog dialog(selection);
  dialog.Option1 = 1;
  dialog.Command1(selection);
  ConvSui(corpus, selection, windows);
  EXPECT_EQ(r.table().Text(r.Lpos(), corpus::dat::kSysNo), kept);
  EXPECT_EQ(r.Mpos(), corpus::LineToWork(corpus, r.Lpos()));

  // With every class off no document is left: the reader stands nowhere.
  SelectionDialog none(selection);
  none.Check2.fill(0);
  none.Command1(selection);
  ConvSui(corpus, selection, windows);
  EXPECT_EQ(corpus.MosMaxY, 0);
  EXPECT_EQ(r.Mpos(), 0);
  EXPECT_EQ(r.Lpos(), 0);
  EXPECT_TRUE(r.OldLsys.empty());
  EXPECT_FALSE(r.KeyDownAll(reader::key::kDown, 0).redraw);
}

}  // namespace
}  // namespace suizo::views
