#include "app/platform/single_instance.h"

#include <QDir>
#include <QStandardPaths>

#include "core/corpus/settings.h"

namespace suizo::platform {

QString SingleInstance::DefaultLockPath() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (folder.isEmpty()) folder = QDir::tempPath();
  const std::u16string_view name = corpus::kApplicationName;
  return QDir(folder).filePath(
      QString::fromUtf16(name.data(), static_cast<qsizetype>(name.size())) +
      QStringLiteral(".lock"));
}

SingleInstance::SingleInstance() : SingleInstance(DefaultLockPath()) {}

SingleInstance::SingleInstance(const QString& lockPath)
    : path_(lockPath), lock_(std::make_unique<QLockFile>(lockPath)) {
  // Never stale by age: a lock is given up only when its holder is gone.
  lock_->setStaleLockTime(0);
  first_ = lock_->tryLock(0);
}

}  // namespace suizo::platform
