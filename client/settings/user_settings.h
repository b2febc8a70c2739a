#pragma once

#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <memory>

#include "settings/chosen_settings.h"
#include "settings/remembered_desk.h"
#include "settings/settings_file.h"

namespace TarnClient {

/// What the current user has chosen and what the client remembers of his desk, kept in one file for all users. What
/// cannot be read is that of a first start. Read at once; written on a thread of its own, what is remembered some time
/// after it has changed and at the end. Thread: GUI.
class CUserSettings : public QObject {
  Q_OBJECT
 public:
  /// Without a path nothing is read or kept beyond the object's life.
  explicit CUserSettings(QString path, QObject* parent = nullptr);
  /// Writes what is left, see Flush().
  ~CUserSettings() override;

  /// Where the user's file stands.
  static QString UsualPath();

  /// Goes over to this user of the store with this identity, after writing what is left of the last one.
  void Load(const QString& store, const QString& user);

  const ChosenSettings& Chosen() const { return chosen_; }
  /// Stores what differs from the last choice and waits for that, 2 s at the most. False with the reason for the user;
  /// nothing changes then, unless the disk is held up in the middle of it: it is chosen when that succeeds after all.
  bool Choose(const ChosenSettings& chosen, QString* error);
  const RememberedDesk& Remembered() const { return remembered_; }
  /// Writes it within a few seconds, and again some time after that has failed.
  void Remember(const RememberedDesk& desk);
  /// Writes what is left and waits, a second at the most. False when the disk holds the write up for longer.
  bool Flush();

  /// What is wrong, as a sentence for the user; empty when nothing is. What comes up later is signalled once.
  QString TroubleText() const;

 Q_SIGNALS:
  void SignalChosen();
  void SignalTrouble(const QString& text);

 private:
  struct Choice;
  void WriteChoice(const std::shared_ptr<Choice>& choice, const ChosenSettings& chosen);
  void TakeOver(const ChosenSettings& chosen);
  QString TextOf(SettingsTrouble trouble, const QString& detail) const;
  void WriteRemembered();
  void OnWritten(const CSettingsFile::Answer& answer);

  const QString path_;
  CSettingsFile file_;
  ChosenSettings chosen_;
  RememberedDesk remembered_;
  SettingsTrouble trouble_ = SettingsTrouble::None;
  QString detail_;
  bool is_sound_ = true;          // all of the user's values could be read
  QTimer later_;                  // runs while something is left to write
  std::shared_ptr<Choice> late_;  // was not stored in time, but may be yet
  std::unique_ptr<QThreadPool> writer_;
};

}  // namespace TarnClient
