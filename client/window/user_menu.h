#pragma once

#include <QToolButton>

#include "host_calls/call_scope.h"

class QMenu;

namespace TarnClient {

class CWindowActions;

/// Button with the current user's name; opens the list of the service's users to switch to. Thread: GUI; the service is
/// asked on the thread pool.
class CUserMenu : public QToolButton {
  Q_OBJECT
 public:
  CUserMenu(const QString& user, CWindowActions* actions, QWidget* parent);

  void SetUser(const QString& user);
  QString User() const { return user_; }
  /// Fetches the users, then opens. A second call meanwhile does nothing.
  void Open();

 Q_SIGNALS:
  /// Another user than the current one was chosen.
  void SignalUserChosen(const QString& user);
  /// The users cannot be listed.
  void SignalFailed(const QString& text);

 private:
  void Show(const QStringList& users);

  CWindowActions* const actions_;
  QString user_;
  QMenu* menu_ = nullptr;
  HostCalls::CCallScope calls_;
};

}  // namespace TarnClient
