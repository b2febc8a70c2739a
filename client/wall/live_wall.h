#pragma once

#include <QImage>
#include <QTimer>
#include <QVector>
#include <QWidget>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "wall/page_clock.h"
#include "wall/picture_source.h"
#include "wall/plan_drop.h"

class QGridLayout;
class QLabel;
class QStackedWidget;

namespace TarnClient {

class CDropHint;
class CWallBar;
class CWallWindow;

/// Plays one plan: the windows of its current page, pages turned by their dwell times. Keys while the wall has the
/// focus: Left and Right turn, Space holds the page, Esc stops. Plans and groups may be dropped on it. Thread: GUI.
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
  /// The plan that plays was changed: what is on stays as far as it is still there, page, hold and time. Nothing for
  /// another plan.
  void Renew(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void Stop();
  /// Turns by `pages`, around the ends.
  void Turn(int pages);
  void TogglePause();

  bool IsPlaying() const { return playing_; }
  /// The plan as it was fetched to be played; a blank record when nothing plays.
  const view_plugin_protocol::GetPlanDetailResponse& Plan() const { return plan_; }
  /// The windows as they are now, scaled to fit `size`, with the wall's colour around them.
  QImage Picture(const QSize& size) const;
  /// Takes plans and groups of this site from now on.
  void AcceptDropsOf(const QString& station_id);
  CWallBar* Bar() const { return bar_; }
  QString PlanName() const;
  QString PlanCode() const;
  /// Counts from 1; 0 when nothing plays.
  int PageNumber() const { return playing_ ? page_ + 1 : 0; }
  /// The windows of the page that show a camera, in the page's order.
  QVector<WindowState> Windows() const;

 Q_SIGNALS:
  /// Another plan plays, or none.
  void SignalPlanChanged();
  /// The plan plays on as it is now.
  void SignalPlanRenewed();
  void SignalDropped(const TarnClient::PlanDrop& drop);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void TakePages();
  void ShowPage();
  void ShowWindows();
  void ShowInBar();
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
  CDropHint* drop_hint_ = nullptr;
  QString station_id_;
  QWidget* grid_page_ = nullptr;
  QGridLayout* grid_ = nullptr;
  QVector<CWallWindow*> windows_;
};

}  // namespace TarnClient
