// One program at a time: the first run holds a lock file in the user's
// runtime folder for its whole life; a second run finds it held and ends
// without a word.
#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

namespace suizo::platform {

class SingleInstance {
 public:
  // The program's own lock, "翠蔵Viewer.lock" in the runtime folder (the
  // temporary folder when there is none).
  SingleInstance();
  // A lock at `lockPath`, for tests.
  explicit SingleInstance(const QString& lockPath);

  // False when another run holds the lock: this one should end silently.
  bool IsFirst() const { return first_; }
  QString LockPath() const { return path_; }

  static QString DefaultLockPath();

 private:
  QString path_;
  std::unique_ptr<QLockFile> lock_;
  bool first_ = false;
};

}  // namespace suizo::platform
