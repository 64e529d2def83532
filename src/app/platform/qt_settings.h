// The settings store of the desktop program: the user's own settings under
// the application's name, one group a section, every value text.
#pragma once

#include <QSettings>
#include <QString>
#include <memory>

#include "core/corpus/settings.h"

namespace suizo::platform {

class QtSettingsStore : public corpus::SettingsStore {
 public:
  // The user's settings of "翠蔵Viewer".
  QtSettingsStore();
  // An INI file of its own, for tests and tools.
  explicit QtSettingsStore(const QString& iniPath);

  std::optional<std::u16string> Read(std::u16string_view section,
                                     std::u16string_view key) const override;
  void Write(std::u16string_view section, std::u16string_view key,
             std::u16string_view value) override;
  // Every section and key of the application.
  void DeleteAll() override;

  QString FileName() const { return settings_->fileName(); }

 private:
  std::unique_ptr<QSettings> settings_;
};

}  // namespace suizo::platform
