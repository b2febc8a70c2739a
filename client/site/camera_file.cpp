#include "site/camera_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace TarnClient {

namespace {

constexpr qint64 kLargestTable = 64 * 1024 * 1024;

}  // namespace

CCameraFile::Read CCameraFile::PlanOf(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
    return {std::nullopt, {}, tr("The file %1 cannot be read: %2").arg(path, file.errorString())};
  }
  if (file.size() > kLargestTable) {
    return {std::nullopt, {}, tr("The file %1 is too large for a list of cameras.").arg(path)};
  }
  CCsvText table;
  Read read;
  const char* older = CCsvText::OlderEncodingOf(QLocale().language(), QLocale::system().language());
  if (!table.Read(file.readAll(), older, &read.error)) {
    return read;
  }
  std::string refusal;
  const auto site = SiteTable::Read(&refusal);
  if (!site) {
    read.error = QString::fromStdString(refusal);
    return read;
  }
  read.encoding = table.Encoding();
  read.plan = CCameraCsv::Plan(table, *site, &read.error);
  return read;
}

QString CCameraFile::Write(const QString& path, bool with_passwords, bool* failed) {
  *failed = true;
  std::string refusal;
  const auto site = SiteTable::Read(&refusal);
  if (!site) {
    return QString::fromStdString(refusal);
  }
  int withheld = 0;
  const QByteArray bytes = CCsvText::Write(CCameraCsv::Rows(*site, with_passwords, &withheld));
  QSaveFile file(path);
  const bool is_open = file.open(QIODevice::WriteOnly);
  if (is_open && with_passwords) {
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  }
  if (!is_open || file.write(bytes) != bytes.size() || !file.commit()) {
    return tr("The file %1 cannot be written: %2").arg(path, file.errorString());
  }
  *failed = false;
  QString text = tr("%n camera(s) written to %1", nullptr, static_cast<int>(site->cameras.size())).arg(path);
  if (withheld > 0) {
    text += QStringLiteral(". ") + tr("%n address(es) left out, since a password may stand in them", nullptr, withheld);
  }
  return text;
}

}  // namespace TarnClient
