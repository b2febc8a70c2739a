#pragma once

#include <QTimer>
#include <QVector>
#include <QWidget>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "wall/page_clock.h"
#include "wall/picture_source.h"

class QGridLayout;
class QLabel;
class QStackedWidget;

namespace TarnClient {

class CWallBar;
class CWallWindow;

/// Plays one plan: the windows of its current page, pages turned by their dwell times. Keys while the wall has the
/// focus: Left and Right turn, Space holds the page, Esc stops. Thread: GUI.
class CLiveWall : public QWidget {
  Q_OBJECT
 public:
  struct WindowState {
    QString camera, state;
    qint64 frames = 0;
  };

  explicit CLiveWall(PictureSourceFactory factory, QWidget* parent = nullptr);
  ~CLiveWall() override;

  /// Plays this plan from its first page; the one before it ends.
  void Play(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void Stop();
  /// Turns by `pages`, around the ends.
  void Turn(int pages);
  void TogglePause();

  bool IsPlaying() const { return playing_; }
  QString PlanName() const;
  QString PlanCode() const;
  /// Counts from 1; 0 when nothing plays.
  int PageNumber() const { return playing_ ? page_ + 1 : 0; }
  /// The windows of the page that show a camera, in the page's order.
  QVector<WindowState> Windows() const;

 Q_SIGNALS:
  /// Another plan plays, or none.
  void SignalPlanChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void ShowPage();
  void ArrangeGrid(int side);
  void FillWindows(const view_plugin_protocol::PlanPage& page, int count);
  void Tick();
  void RunTicker();
  bool HasSeveralPages() const { return pages_.size() > 1; }

  PictureSourceFactory factory_;
  view_plugin_protocol::GetPlanDetailResponse plan_;
  QVector<view_plugin_protocol::PlanPage> pages_;
  bool playing_ = false;
  int page_ = 0;
  CPageClock clock_;
  QTimer ticker_;
  CWallBar* bar_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QLabel* hint_ = nullptr;
  QWidget* grid_page_ = nullptr;
  QGridLayout* grid_ = nullptr;
  QVector<CWallWindow*> windows_;
};

}  // namespace TarnClient
