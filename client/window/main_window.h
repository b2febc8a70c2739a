#pragma once

#include <QMainWindow>

class QStackedWidget;
class QTabWidget;

namespace TarnClient {

class CLiveWall;
class CPlanPlayer;
class CWaitPage;

/// The client's window: the plan trees on the left, the live wall on the right. Thread: GUI.
class CMainWindow : public QMainWindow {
  Q_OBJECT
 public:
  CMainWindow(const QString& user, const QString& store_url, QWidget* parent = nullptr);
  ~CMainWindow() override;

  void ShowWaiting(int seconds);
  /// Once, when the plan data is ready.
  void ShowPlans();

  CLiveWall& Wall() { return *wall_; }
  CPlanPlayer& Player() { return *player_; }

 private:
  void BuildStatusBar(const QString& user, const QString& store_url);
  QWidget* BuildSide();

  CLiveWall* wall_ = nullptr;
  CPlanPlayer* player_ = nullptr;
  QStackedWidget* side_ = nullptr;
  CWaitPage* wait_page_ = nullptr;
  QTabWidget* tabs_ = nullptr;
};

}  // namespace TarnClient
