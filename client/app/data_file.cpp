#include "app/data_file.h"

#include <QDir>
#include <QStandardPaths>

namespace TarnClient {

QString DataFile(const char* name) {
  const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
  folder.mkpath(QStringLiteral("."));
  return folder.filePath(QString::fromLatin1(name));
}

QString NamedCopiesFolder(const ClientOptions& options) {
  return options.copies_folder.isEmpty() ? DataFile("copies") : options.copies_folder;
}

QString CopiesFolderOf(const ClientOptions& options) {
  const bool is_kept = options.IsUsualStart() || !options.copies_folder.isEmpty();
  return is_kept && !options.keeps_no_copy ? NamedCopiesFolder(options) : QString();
}

QString StoreUrlOf(const ClientOptions& options) {
  if (!options.store_url.isEmpty()) {
    return options.store_url;
  }
  return QStringLiteral("sqlite:") + DataFile("plans.sqlite");
}

}  // namespace TarnClient
