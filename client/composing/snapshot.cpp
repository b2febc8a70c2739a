#include "composing/snapshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>

namespace TarnClient {

namespace {

constexpr int kMostNameBytes = 200;  // with the time and a number still within the 255 that file systems take

struct Words {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::Snapshot)
};

QString Allowed(char32_t letter) {
  static const QString kNotAllowed = QStringLiteral("/\\:*?\"<>|");
  const QString text = QString::fromUcs4(&letter, 1);
  if (!QChar::isPrint(letter) || kNotAllowed.contains(text)) {
    return QStringLiteral("_");
  }
  return text;
}

QString Numbered(const QString& name, int number) {
  if (number == 1) {
    return name;
  }
  const QFileInfo file(name);
  return QStringLiteral("%1 (%2).%3").arg(file.completeBaseName(), QString::number(number), file.suffix());
}

// The file is made at once: another picture of the same second may be on its way to the same name.
QString ReservePath(const QDir& folder, const QString& name, QString* error) {
  for (int number = 1;; ++number) {
    QFile file(folder.filePath(Numbered(name, number)));
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
      return file.fileName();
    }
    if (!file.exists()) {
      *error = file.errorString();
      return QString();
    }
  }
}

QString ErrorOfWriting(const QImage& picture, const QString& path) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    return file.errorString();
  }
  QImageWriter writer(&file, "png");
  if (writer.write(picture) && file.commit()) {
    return QString();
  }
  return file.error() == QFileDevice::NoError ? writer.errorString() : file.errorString();
}

QString Failed(const QString& folder, const QString& reason) {
  return Words::tr("The snapshot could not be kept in \"%1\": %2").arg(QDir::toNativeSeparators(folder), reason);
}

}  // namespace

QString SnapshotName(const QString& camera, const QDateTime& taken) {
  QString name;
  for (const uint letter : camera.toUcs4()) {
    const QString longer = name + Allowed(letter);
    if (longer.toUtf8().size() > kMostNameBytes) {
      break;
    }
    name = longer;
  }
  if (name.startsWith(QLatin1Char('.'))) {
    name.prepend(QLatin1Char('_'));  // else it would be hidden
  }
  return QStringLiteral("%1 %2.png").arg(name, taken.toString(QStringLiteral("yyyy-MM-dd HH-mm-ss"))).trimmed();
}

QString DefaultSnapshotFolder() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)).filePath(Words::tr("Snapshots"));
}

SnapshotResult WriteSnapshot(const QImage& picture, const QString& folder, const QString& name) {
  if (!QDir().mkpath(folder)) {
    return {QString(), Failed(folder, Words::tr("the folder cannot be made"))};
  }
  QString error;
  const QString path = ReservePath(QDir(folder), name, &error);
  if (path.isEmpty()) {
    return {QString(), Failed(folder, error)};
  }
  error = ErrorOfWriting(picture, path);
  if (!error.isEmpty()) {
    QFile::remove(path);
    return {QString(), Failed(folder, error)};
  }
  return {path, QString()};
}

}  // namespace TarnClient
