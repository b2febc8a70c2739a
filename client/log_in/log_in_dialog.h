#pragma once

#include <QTimer>
#include <atomic>
#include <memory>

#include "host_calls/call_scope.h"
#include "log_in/log_in_calls.h"
#include "site/form_dialog.h"

class QCheckBox;
class QLabel;
class QListWidget;
class QListWidgetItem;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

/// Asks for a user and a password and logs in, off the GUI thread, until it is done or cancelled. What is wrong is said
/// in the dialog. A store that does not answer is asked again. Thread: GUI.
class CLogInDialog : public CFormDialog {
  Q_OBJECT
 public:
  struct Setup {
    QString title, confirm_text;
    QString note;                  // above the fields; empty for none
    QString user;                  // filled in
    bool is_user_fixed = false;    // only that one
    QStringList without_password;  // whom a click logs in
    bool may_remember = false;     // offers to keep the name
    bool remembers = true;
    decltype(LogInCalls::log_in) log_in;
    std::function<void(const QString& user)> before_trees;  // as LogInSteps::before_trees
  };
  CLogInDialog(Setup setup, QWidget* parent);
  ~CLogInDialog() override;

  /// Logs in with what was asked for before, and is seen only where that takes a while or comes to nothing. Instead of
  /// show().
  void Begin(const TarnHost::LogInRequest& request);
  /// Why not, without saying which names there are.
  static QString TextOf(const TarnHost::LogInAnswer& answer);
  /// What to say where plans of so long ago are all that can be shown.
  static QString NoteOnCopy(const QDateTime& at);
  /// Whether the name is to be filled in the next time.
  bool Remembers() const;
  QString User() const;
  /// Stops waiting for an answer; without one to wait for the dialog closes.
  void reject() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// Just before the dialog closes.
  void SignalLoggedIn(const TarnHost::LogInRequest& request);

 private:
  /// Of one call: what happens first, its end or the cancelling.
  enum Course { kRunning, kCancelled, kTaken };
  using SharedCourse = std::shared_ptr<std::atomic<int>>;

  void BuildUsers();
  void BuildFields();
  void Try();
  void TryAs(const QListWidgetItem* item);
  void Send();
  void OnAnswer(const TarnHost::LogInAnswer& answer);
  void OnWrong(const QString& text);
  void OnLocked(int seconds);
  void OnSecond();
  void RenewLock();
  void ShowCapsLock(std::optional<bool> is_on);
  void SetWaiting(bool waiting, const QString& text = QString());

  const Setup setup_;
  QListWidget* users_ = nullptr;
  MarUIControl::CLineEdit *user_ = nullptr, *password_ = nullptr;
  QLabel *caps_lock_ = nullptr, *course_text_ = nullptr;
  QCheckBox* remember_ = nullptr;
  TarnHost::LogInRequest request_;  // while it is waited for
  SharedCourse course_;             // null: nothing is waited for
  HostCalls::CCallScope calls_;
  QTimer again_, show_;
  QTimer* const second_;
  QString locked_user_;
  int locked_seconds_ = 0;
  bool is_lock_shown_ = false;  // the fault is that the name is locked
};

}  // namespace TarnClient
