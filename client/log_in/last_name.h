#pragma once

#include <QString>

#include "settings/settings_file.h"

namespace TarnClient {

/// The name that was last typed to log in at a store, kept for this machine's next start. Reads and writes a file.
class LastName {
 public:
  /// Without a path nothing is kept.
  LastName(const QString& settings_path, const QString& store_url);

  bool CanBeKept() const { return file_.IsThere(); }
  const QString& Name() const { return name_; }
  /// Empty: none.
  void Keep(const QString& name);

 private:
  CSettingsFile file_;
  QString name_;
};

}  // namespace TarnClient
