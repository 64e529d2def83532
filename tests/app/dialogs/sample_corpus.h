// The sample corpus converted in a folder of its own, as a first start
// leaves it: the tables in memory and the orders of the default selection.
#pragma once

#include <QTemporaryDir>
#include <filesystem>
#include <memory>

#include "core/corpus/corpus.h"
#include "core/corpus/import.h"
#include "core/corpus/orders.h"
#include "core/corpus/selection.h"

namespace suizo::apptest {

struct SampleCorpus {
  SampleCorpus() {
    const std::filesystem::path path = dir.path().toStdString();
    std::filesystem::copy(SUIZO_SAMPLE_DIR, path, std::filesystem::copy_options::recursive);
    corpus = std::make_unique<corpus::Corpus>(path);
    corpus::ReadDataFirst(*corpus, corpus::ImportOptionsFor(path));
    corpus::InitialOrders(*corpus, selection);
  }

  QTemporaryDir dir;
  std::unique_ptr<corpus::Corpus> corpus;
  corpus::Selection selection;
};

}  // namespace suizo::apptest
