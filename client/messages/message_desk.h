#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

class QWidget;

namespace TarnClient {

class CMessageLog;
class CMessagesWindow;
class CWindowActions;

/// Keeps the client's messages: every tip is noted, the command's button counts the errors that were not read, and a
/// click on a tip opens the page. Thread: GUI.
class CMessageDesk : public QObject {
  Q_OBJECT
 public:
  CMessageDesk(CWindowActions* actions, QWidget* window);
  ~CMessageDesk() override;

  /// The command of one more window.
  void Add(CWindowActions* actions);
  CMessageLog& Log() { return *log_; }
  /// Opens the page or brings it to the front; what it shows is read, so no tip says it any more.
  void Open();
  /// The messages are the last user's: they go, and page and tips with them.
  void ForgetUser();
  /// Null while it is closed.
  CMessagesWindow* Page() const;

 private:
  void ShowUnread(int unread);

  static void ShowUnreadIn(CWindowActions* actions, int unread);

  QVector<QPointer<CWindowActions>> actions_;
  QWidget* const window_;
  CMessageLog* const log_;
  QPointer<CMessagesWindow> page_;
};

}  // namespace TarnClient
