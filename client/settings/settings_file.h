#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace TarnClient {

/// What is wrong with the file of settings. From ReadOnly on it can be read, but not written.
enum class SettingsTrouble { None, Damaged, Newer, NotAFile, Unreadable, Unanswered, ReadOnly, Locked, NotWritten };

/// One user's part of the file that holds the settings of all users, by the identity of their store. Only its owner
/// may read the file. A value; any thread.
///
/// Several processes may write at once: each puts its own values into what the file holds by then, and the last one
/// to write a value has it. Values that this version does not know stay. A damaged file is put aside under KeptAs()
/// by the first write; a file of a newer version is neither read nor written.
class CSettingsFile {
 public:
  static constexpr int kVersion = 1;
  static constexpr int kMostBytes = 4 * 1024 * 1024;

  struct Answer {
    SettingsTrouble trouble = SettingsTrouble::None;
    QString detail;      // the place that the trouble is about
    QJsonObject values;  // after a read
  };

  CSettingsFile() = default;
  CSettingsFile(QString path, QString store, QString user);

  /// Without a path there is no file: reads find nothing and writes succeed.
  bool IsThere() const { return !path_.isEmpty(); }
  /// The user's values, none at a first start. A file that could not be written is reported at once.
  Answer Read() const;
  /// Puts these values, objects by key, into the user's.
  Answer Write(const QJsonObject& changed) const;
  /// Where a damaged file is put.
  QString KeptAs() const { return path_ + QStringLiteral(".damaged"); }

 private:
  struct Whole;
  Whole ReadWhole() const;
  Answer WriteWhole(const QJsonObject& content) const;
  /// The file or folder that keeps it from being written, as far as that can be seen without trying; else empty.
  QString ReadOnlyPlace() const;
  int PlaceAmong(const QJsonArray& users) const;

  QString path_, store_, user_;
};

}  // namespace TarnClient
