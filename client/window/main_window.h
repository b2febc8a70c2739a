#pragma once

#include <QMainWindow>
#include <QVector>
#include <string>

class QStackedWidget;
class QTabWidget;

namespace TarnClient {

class CLiveWall;
class CPlanPane;
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
  /// Plays a plan that the user did not pick in a tree, and brings its row into view where it is loaded.
  void PlayPlan(const std::string& code);

 private:
  void BuildStatusBar(const QString& user, const QString& store_url);
  QWidget* BuildSide();

  CLiveWall* wall_ = nullptr;
  CPlanPlayer* player_ = nullptr;
  QStackedWidget* side_ = nullptr;
  CWaitPage* wait_page_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QVector<CPlanPane*> panes_;
};

}  // namespace TarnClient
