// The committed sample is the generator's output, byte for byte, so that it
// can never drift from the code that describes it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "core/test_support.h"

namespace suizo::testing {
namespace {

std::set<std::string> FileNames(const std::filesystem::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

TEST(SampleCorpus, TheGeneratorReproducesTheCommittedFilesByteForByte) {
  TempDir out;
  const std::filesystem::path committed =
      std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample";
  const std::string command =
      std::string("\"") + GEN_CORPUS + "\" --scale sample --out \"" + out.path().string() + "\"";
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
  const auto names = FileNames(committed);
  EXPECT_EQ(FileNames(out.path()), names);
  for (const auto& name : names) {
    EXPECT_TRUE(ReadBytes(out / name) == ReadBytes(committed / name))
        << name
        << " differs from what the generator writes; regenerate with: gen-corpus --scale "
           "sample --out data/sample";
  }
}

}  // namespace
}  // namespace suizo::testing
