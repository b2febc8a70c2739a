#pragma once

#include <QImage>
#include <QTimer>
#include <QVector>
#include <QWidget>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "wall/picture_source.h"
#include "wall/plan_drop.h"
#include "wall/wall_clock.h"

class QGridLayout;
class QStackedWidget;

namespace MarUIControl {
class COfferStrip;
}

namespace TarnClient {

class CDropHint;
class CFetchSign;
class CWallBar;
class CWallHint;
class CWallWindow;

/// Plays one plan: the windows of its current page, pages turned by their dwell times; in a group cycle for the time of
/// one turn. Keys while the wall has the focus: Left and Right turn, Space holds, Esc wants it stopped. Plans and
/// groups may be dropped on it. Thread: GUI.
class CLiveWall : public QWidget {
  Q_OBJECT
 public:
  struct WindowState {
    QString camera, state;
    qint64 frames = 0;
  };

  /// `turn_clock` measures the turns of a group cycle; null: real time.
  explicit CLiveWall(PictureSourceFactory factory, QWidget* parent = nullptr,
                     std::unique_ptr<CPageClock> turn_clock = nullptr);
  ~CLiveWall() override;

  /// Plays this plan from its first page; the one before it ends.
  void Play(const view_plugin_protocol::GetPlanDetailResponse& plan);
  /// The plan that plays was changed: what is on stays as far as it is still there, page, hold and time. Nothing for
  /// another plan.
  void Renew(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void Stop();
  /// Turns by `pages`, around the ends; in a cycle the plans before and after come there.
  void Turn(int pages);
  /// Shows this page, counted from 1, for its whole time; nothing for one that the plan has not.
  void GoTo(int page);
  /// Holds the page, in a cycle the plan, or lets it go on.
  void ToggleHold();
  /// The plan is one turn of a group cycle: it stays until its pages had their times, `least_seconds` at least.
  void BeginTurn(int least_seconds);
  /// The next plan of the cycle could not be had: this one stays for so long, whatever its pages take.
  void Stay(int seconds);
  /// No cycle runs any more: the plan stays.
  void EndTurns();
  /// Says what is on its way to the wall, once that takes a second; an empty text when nothing is.
  void Await(const QString& text);
  /// Something about what plays or has ended, in the bar or on the empty wall; an empty text for nothing.
  void ShowNote(const QString& text);
  /// On the empty wall: what could not be played, and why; an empty text when nothing has failed.
  void ShowFailure(const QString& text, const QString& reason, bool may_try_again);
  /// Below the windows, for what can be taken back.
  MarUIControl::COfferStrip* Strip() const { return strip_; }

  bool IsInTurn() const { return clock_.IsInTurn(); }
  bool IsHeld() const { return clock_.IsHeld(); }

  bool IsPlaying() const { return playing_; }
  /// The plan as it was fetched to be played; a blank record when nothing plays.
  const view_plugin_protocol::GetPlanDetailResponse& Plan() const { return plan_; }
  /// The windows as they are now, as large as they are.
  QImage Picture() const;
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
  /// The turn of the cycle is over: time for the next plan.
  void SignalTurnOver();
  /// The user wants the next plan of the cycle (1) or the one before (-1).
  void SignalStepWanted(int step);
  /// The user holds what is on the wall.
  void SignalHeld();
  /// The user wants the wall empty.
  void SignalStopWanted();
  /// The user wants once more what could not be played.
  void SignalTryAgain();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void BuildGrid();
  void ConnectParts();
  void TakePages();
  void ShowPage(int number);
  void ShowWindows();
  void RenewBar();
  void ShowTimes();
  void ArrangeGrid(int side);
  void FillWindows(const view_plugin_protocol::PlanPage& page, int count);
  void FillWindow(CWallWindow* window, const view_plugin_protocol::PlanWindow* content);
  void Tick();
  void RunTicker();
  bool HasSeveralPages() const { return pages_.size() > 1; }
  bool HasTimes() const { return HasSeveralPages() || clock_.IsInTurn(); }

  PictureSourceFactory factory_;
  view_plugin_protocol::GetPlanDetailResponse plan_;
  QVector<view_plugin_protocol::PlanPage> pages_;
  bool playing_ = false;
  int page_ = 0;
  CWallClock clock_;
  QTimer ticker_;
  CWallBar* bar_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  CWallHint* hint_ = nullptr;
  MarUIControl::COfferStrip* strip_ = nullptr;
  CDropHint* drop_hint_ = nullptr;
  CFetchSign* fetch_sign_ = nullptr;
  QString station_id_;
  QWidget* grid_page_ = nullptr;
  QGridLayout* grid_ = nullptr;
  QVector<CWallWindow*> windows_;
};

}  // namespace TarnClient
