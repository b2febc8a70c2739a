#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "host_calls/call_scope.h"
#include "log_in/log_in_calls.h"

class QWidget;

namespace TarnClient {

class CLogInDialog;

/// How a desk gets to another user, and a locked one back to its own: the password first, then what is being edited and
/// not saved, then the log-in. Cancelled or refused, nothing changes; a refusal without a dialog is a message. One at a
/// time. Thread: GUI.
class CUserSwitch : public QObject {
  Q_OBJECT
 public:
  struct Desk {
    std::function<QString()> user;                           // whose it is; empty: of one who was deleted
    std::function<bool(std::function<void()> again)> leave;  // as CLeaving::MayLeave()
    std::function<void(const QString& user)> take;  // the store has this user already, and its trees come after this
    std::function<QWidget*()> window;               // for dialogs
  };

  /// All calls are there.
  CUserSwitch(LogInCalls calls, Desk desk, QObject* parent);

  /// Asks for the password if there is one.
  void SwitchTo(const QString& user);
  /// Asks who it is: the desk's own user unlocks it, another one takes it over.
  void Unlock();

 Q_SIGNALS:
  /// By its own user.
  void SignalUnlocked();
  void SignalRefused(const QString& text);

 private:
  bool IsUnderWay() const;
  void AskForPassword(const QString& user);
  void OnMayUnlock(const TarnHost::LogInRequest& request);
  void LogInAs(const TarnHost::LogInRequest& request);
  using Next = void (CUserSwitch::*)(const TarnHost::LogInRequest&);
  void Open(CLogInDialog* dialog, Next next);

  const LogInCalls calls_;
  const Desk desk_;
  QPointer<CLogInDialog> dialog_;
  HostCalls::CCallScope checking_;
};

}  // namespace TarnClient
