#include "app/platform/qt_settings.h"
#include "app/platform/qt_text.h"

#include <QStringList>
#include <QVariant>

namespace suizo::platform {

namespace {

// QSettings reads a key as a group path; an empty section is the top level.
QString PathOf(std::u16string_view section, std::u16string_view key) {
  return section.empty() ? Q(key) : Q(section) + QLatin1Char('/') + Q(key);
}

const QString kName = Q(corpus::kApplicationName);

}  // namespace

QtSettingsStore::QtSettingsStore()
    : settings_(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, kName,
                                            kName)) {}

QtSettingsStore::QtSettingsStore(const QString& iniPath)
    : settings_(std::make_unique<QSettings>(iniPath, QSettings::IniFormat)) {}

std::optional<std::u16string> QtSettingsStore::Read(std::u16string_view section,
                                                    std::u16string_view key) const {
  if (key.empty()) return std::nullopt;
  const QVariant value = settings_->value(PathOf(section, key));
  if (!value.isValid()) return std::nullopt;
  // A hand-edited value with commas comes back as a list.
  const QString text = value.typeId() == QMetaType::QStringList
                           ? value.toStringList().join(QLatin1Char(','))
                           : value.toString();
  return text.toStdU16String();
}

void QtSettingsStore::Write(std::u16string_view section, std::u16string_view key,
                            std::u16string_view value) {
  if (key.empty()) return;
  settings_->setValue(PathOf(section, key), Q(value));
  settings_->sync();
}

void QtSettingsStore::DeleteAll() {
  settings_->clear();
  settings_->sync();
}

}  // namespace suizo::platform
