#include "settings/settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>
#include <utility>

#include "marlog/marlog.h"

namespace TarnClient {

namespace {

constexpr int kLockMs = 1500;
constexpr QFileDevice::Permissions kOwnersFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

QString Shown(const QString& path) {
  return QDir::toNativeSeparators(path);
}

// The system's text is not in the user's language.
QString LoggedPlace(const QFileDevice& file) {
  marlog::Write("LyraClientError", marlog::Error, "Settings, %s: %s", qUtf8Printable(file.fileName()),
                qUtf8Printable(file.errorString()));
  return Shown(file.fileName());
}

QString Key(const char* key) {
  return QString::fromLatin1(key);
}

// Object into object; anything else is replaced.
void PutInto(QJsonObject& values, const QJsonObject& changed) {
  for (auto value = changed.begin(); value != changed.end(); ++value) {
    if (value->isObject() && values.value(value.key()).isObject()) {
      QJsonObject inner = values.value(value.key()).toObject();
      PutInto(inner, value->toObject());
      values.insert(value.key(), inner);
    } else {
      values.insert(value.key(), *value);
    }
  }
}

// Who has not been here for longest goes first.
QByteArray WithinBounds(QJsonObject content) {
  QByteArray bytes = QJsonDocument(content).toJson();
  while (bytes.size() > CSettingsFile::kMostBytes) {
    QJsonArray users = content.value(Key("users")).toArray();
    if (users.size() < 2) {
      break;
    }
    users.removeLast();
    content.insert(Key("users"), users);
    bytes = QJsonDocument(content).toJson();
  }
  return bytes;
}

}  // namespace

struct CSettingsFile::Whole {
  SettingsTrouble trouble = SettingsTrouble::None;
  QString detail;
  QJsonObject content;
};

CSettingsFile::CSettingsFile(QString path, QString store, QString user)
    : path_(std::move(path)), store_(std::move(store)), user_(std::move(user)) {}

CSettingsFile::Whole CSettingsFile::ReadWhole() const {
  const QFileInfo info(path_);
  if (!info.exists() && !info.isSymLink()) {
    return {SettingsTrouble::None, {}, {}};
  }
  if (!info.isFile()) {  // a pipe would hold the client up
    return {SettingsTrouble::NotAFile, Shown(path_), {}};
  }
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) {
    return {SettingsTrouble::Unreadable, LoggedPlace(file), {}};
  }
  const QByteArray bytes = file.read(kMostBytes + 1);
  const QJsonDocument document = QJsonDocument::fromJson(bytes);
  const QJsonValue version = document.object().value(Key("version"));
  if (bytes.size() > kMostBytes || version.toInt() < 1) {
    return {SettingsTrouble::Damaged, {}, {}};
  }
  if (version.toInt() > kVersion) {
    return {SettingsTrouble::Newer, {}, {}};
  }
  if (!document.object().value(Key("users")).isArray()) {
    return {SettingsTrouble::Damaged, {}, {}};
  }
  return {SettingsTrouble::None, {}, document.object()};
}

int CSettingsFile::PlaceAmong(const QJsonArray& users) const {
  for (int place = 0; place < users.size(); ++place) {
    const QJsonValue user = users.at(place);
    if (user[Key("store")].toString() == store_ && user[Key("user")].toString() == user_) {
      return place;
    }
  }
  return -1;
}

CSettingsFile::Answer CSettingsFile::Read() const {
  if (!IsThere()) {
    return {};
  }
  const Whole whole = ReadWhole();
  Answer answer{whole.trouble, whole.detail, {}};
  const QJsonArray users = whole.content.value(Key("users")).toArray();
  answer.values = users.at(PlaceAmong(users)).toObject();
  const QString read_only = ReadOnlyPlace();
  if (answer.trouble == SettingsTrouble::None && !read_only.isEmpty()) {
    answer.trouble = SettingsTrouble::ReadOnly;
    answer.detail = read_only;
  }
  return answer;
}

// Permissions are looked at themselves: an administrator could write all the same, but somebody did not mean that.
QString CSettingsFile::ReadOnlyPlace() const {
  const QFileInfo info(path_);
  constexpr auto kAnyonesWrite = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
  if (info.exists()) {
    if (!info.isWritable() || !(info.permissions() & kAnyonesWrite)) {
      return Shown(path_);
    }
  }
  const QFileInfo folder(info.absolutePath());
  if (folder.exists() && !(folder.isDir() && folder.isWritable() && (folder.permissions() & kAnyonesWrite))) {
    return Shown(folder.filePath());
  }
  return QString();
}

CSettingsFile::Answer CSettingsFile::Write(const QJsonObject& changed) const {
  if (!IsThere()) {
    return {};
  }
  const QFileInfo folder(QFileInfo(path_).absolutePath());
  if (!folder.exists() && QDir().mkpath(folder.filePath())) {
    QFile::setPermissions(folder.filePath(), kOwnersFile | QFileDevice::ExeOwner);
  }
  const QString read_only = ReadOnlyPlace();
  if (!read_only.isEmpty()) {
    return {SettingsTrouble::ReadOnly, read_only, {}};
  }
  QLockFile lock(path_ + QStringLiteral(".lock"));
  if (!lock.tryLock(kLockMs)) {
    return {SettingsTrouble::Locked, Shown(path_), {}};
  }
  Whole whole = ReadWhole();
  if (whole.trouble == SettingsTrouble::Damaged) {
    QFile::remove(KeptAs());
    if (!QFile::rename(path_, KeptAs())) {
      return {SettingsTrouble::NotWritten, Shown(KeptAs()), {}};
    }
  } else if (whole.trouble != SettingsTrouble::None) {
    return {whole.trouble, whole.detail, {}};
  }
  QJsonArray users = whole.content.value(Key("users")).toArray();
  const int place = PlaceAmong(users);
  QJsonObject own{{Key("store"), store_}, {Key("user"), user_}};
  if (place >= 0) {
    own = users.takeAt(place).toObject();
  }
  PutInto(own, changed);
  users.prepend(own);
  whole.content.insert(Key("version"), kVersion);
  whole.content.insert(Key("users"), users);
  return WriteWhole(whole.content);
}

CSettingsFile::Answer CSettingsFile::WriteWhole(const QJsonObject& content) const {
  QSaveFile file(path_);
  if (!file.open(QIODevice::WriteOnly)) {
    return {SettingsTrouble::NotWritten, LoggedPlace(file), {}};
  }
  file.setPermissions(kOwnersFile);
  file.write(WithinBounds(content));
  if (!file.commit()) {
    return {SettingsTrouble::NotWritten, LoggedPlace(file), {}};
  }
  return {};
}

}  // namespace TarnClient
