#pragma once

#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <memory>

#include "host_calls/call_scope.h"
#include "settings/chosen_settings.h"
#include "settings/remembered_desk.h"
#include "settings/settings_file.h"

namespace TarnClient {

/// What the current user has chosen and what the client remembers of his desk, kept in one file for all users. What
/// cannot be read is that of a first start. Read and written on a thread of its own, what is remembered some time after
/// it has changed and at the end. Thread: GUI, which waits for the disk no longer than said.
class CUserSettings : public QObject {
  Q_OBJECT
 public:
  /// Without a path nothing is read or kept beyond the object's life.
  explicit CUserSettings(QString path, QObject* parent = nullptr);
  /// Writes what is left, see Flush().
  ~CUserSettings() override;

  /// Where the user's file stands.
  static QString UsualPath();

  /// Goes over to this user of the store with this identity, after writing what is left of the last one; 2 s at the
  /// most for both. What the disk gives later is chosen then, see SignalChosen(), and nothing is remembered until the
  /// next Load(): it would take the place of what could not be read.
  void Load(const QString& store, const QString& user);

  const ChosenSettings& Chosen() const { return chosen_; }
  /// Stores what the user has changed of what was shown to him, and waits for that, 2 s at the most. False with the
  /// reason for the user; nothing changes then, unless the disk is held up in the middle of it: it is chosen when that
  /// succeeds after all.
  bool Choose(const ChosenSettings& shown, const ChosenSettings& chosen, QString* error);
  const RememberedDesk& Remembered() const { return remembered_; }
  /// Writes it within a few seconds, and again some time after that has failed.
  void Remember(const RememberedDesk& desk);
  /// Writes what is left and waits, a second at the most. False when the disk holds the write up for longer.
  bool Flush();
  /// Milliseconds that the GUI thread waits at the most; for Flush() it is half of that.
  void SetPatience(int milliseconds) { patience_ms_ = milliseconds; }

  /// What is wrong, as a sentence for the user; empty when nothing is. What comes up later is signalled once.
  QString TroubleText() const;

 Q_SIGNALS:
  void SignalChosen();
  /// The user has touched the skin, if only to take what was stored already. Before SignalChosen().
  void SignalSkinChosen();
  void SignalTrouble(const QString& text);

 private:
  struct Choice;
  void TakeRead(const CSettingsFile::Answer& answer);
  void OnReadLate();
  void WriteChoice(const std::shared_ptr<Choice>& choice);
  void TakeOver(const Choice& choice);
  QString TextOf(SettingsTrouble trouble, const QString& detail) const;
  void WriteRemembered();
  void OnWritten(const CSettingsFile::Answer& answer);

  const QString path_;
  CSettingsFile file_;
  ChosenSettings chosen_;
  RememberedDesk remembered_;
  SettingsTrouble trouble_ = SettingsTrouble::None;
  QString detail_;
  bool is_choice_sound_ = true, is_desk_sound_ = true;  // all of the user's values could be read, or were written since
  QTimer later_;                                        // runs while something is left to write
  std::shared_ptr<CSettingsFile::Answer> reading_;      // what the disk had not given in time
  std::shared_ptr<Choice> late_;                        // was not stored in time, but may be yet
  HostCalls::CCallScope calls_;                         // of the current user
  bool keeps_desk_ = true;                              // it was read in time
  int patience_ms_ = 2000;
  std::unique_ptr<QThreadPool> disk_;
};

}  // namespace TarnClient
