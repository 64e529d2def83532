// One program per suite folder: each file registers its Qt Test classes and
// the shared main runs them all in one application.
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace suizo::apptest {

using Factory = std::function<std::unique_ptr<QObject>()>;
std::vector<Factory>& Suites();

struct Register {
  explicit Register(Factory factory) { Suites().push_back(std::move(factory)); }
};

}  // namespace suizo::apptest

#define SUIZO_APP_TEST(Class) \
  static const ::suizo::apptest::Register register##Class([] { return std::make_unique<Class>(); })
