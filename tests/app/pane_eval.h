// A script's value from a pane, waited for: the browser answers in its own
// time, after everything sent to the pane before.
#pragma once

#include <QElapsedTimer>
#include <QTest>
#include <QVariant>
#include <memory>
#include <optional>

#include "app/platform/html_pane.h"

namespace suizo::apptest {

// Nothing when the page never answered within `timeoutMs`.
inline std::optional<QVariant> Eval(platform::HtmlPane& pane, const QString& js,
                                    int timeoutMs = 30000) {
  struct Answer {
    bool done = false;
    QVariant value;
  };
  const auto answer = std::make_shared<Answer>();
  pane.RunScript(js, [answer](const QVariant& value) {
    answer->value = value;
    answer->done = true;
  });
  // Short waits: a long wait for a condition holds back the browser's own
  // events, and the answer then takes seconds to come.
  QElapsedTimer waited;
  waited.start();
  while (!answer->done && waited.elapsed() < timeoutMs) QTest::qWait(10);
  if (!answer->done) return std::nullopt;
  return answer->value;
}

}  // namespace suizo::apptest
