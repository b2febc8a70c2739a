#pragma once

#include "window/desk_window.h"

namespace TarnClient {

class CLeaving;
class CUserSettings;

/// The window of one more wall, for another screen. Closed by the user it is gone; what plays there, or is edited and
/// not saved, asks before. Thread: GUI.
class CExtraWall : public CDeskWindow {
  Q_OBJECT
 public:
  /// None of it is owned; all outlive the window.
  struct Client {
    QString store_url;
    CMessageDesk* messages = nullptr;
    CUserSettings* settings = nullptr;
    CLeaving* leaving = nullptr;
  };
  CExtraWall(CWallDesk::Setup desk, const Client& client);
  ~CExtraWall() override;

 Q_SIGNALS:
  /// By the user, who does not want this wall any more.
  void SignalClosed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ShowTitle(const QString& plan);

  const Client client_;
  bool may_stop_playing_ = false;  // the user has confirmed it, and the close waited for an edited plan
};

}  // namespace TarnClient
