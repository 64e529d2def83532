// A part of the full-scale corpus, which the benchmarks use to see how costs
// grow: the writings, dictionary and sources shrink, the rest stays whole,
// and the part converts like the whole.
#include <gtest/gtest.h>

#include <cstdlib>

#include "core/corpus/corpus.h"
#include "core/corpus/import.h"
#include "core/test_support.h"

namespace suizo::testing {
namespace {

int Generate(const std::string& part, const std::filesystem::path& out) {
  const std::string command = std::string("\"") + GEN_CORPUS + "\" --scale full --part " + part +
                              " --out \"" + out.string() + "\" 2>/dev/null";
  return std::system(command.c_str());
}

TEST(PartCorpus, ATenthConvertsWithATenthOfTheWritingsAndTheWholeSutra) {
  TempDir out;
  ASSERT_EQ(Generate("10", out.path()), 0);
  corpus::Corpus c(out.path());
  corpus::ReadDataFirst(c, corpus::ImportOptionsFor(out.path()));
  EXPECT_GE(c.Mok().rows(), 100);  // the full scale has 1,000 documents
  EXPECT_LE(c.Mok().rows(), 110);
  EXPECT_EQ(c.DisMaxY, 3600);
  EXPECT_EQ(c.Hok().rows(), 3000);
}

TEST(PartCorpus, APercentageOutsideOneToAHundredIsRefused) {
  TempDir out;
  for (const char* bad : {"0", "101", "half", "-5"}) {
    EXPECT_NE(Generate(bad, out.path() / bad), 0) << bad;
    EXPECT_FALSE(std::filesystem::exists(out.path() / bad)) << bad;
  }
}

}  // namespace
}  // namespace suizo::testing
