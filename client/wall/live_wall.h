#pragma once

#include <QImage>
#include <QSet>
#include <QTimer>
#include <QVector>
#include <QWidget>
#include <functional>
#include <list>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "pictures/picture_status.h"
#include "pictures/picture_supply.h"
#include "wall/arrangement.h"
#include "wall/plan_drop.h"
#include "wall/wall_clock.h"
#include "wall/wall_place.h"

class QStackedWidget;

namespace MarUIControl {
class COfferStrip;
}

namespace TarnClient {

class CDropHint;
class CFetchSign;
class CWallBar;
class CWallDrops;
class CWallHint;
class CWindowGrid;

/// Plays one plan: the windows of its current page, pages turned by their dwell times; in a group cycle for the time of
/// one turn. Its windows may be arranged otherwise, or cameras be arranged without a plan. Keys while the wall has the
/// focus: Left, Right and the page keys turn, Space holds, Esc wants it stopped; in a window, those of CWindowGrid come
/// first. Plans, groups and cameras may be dropped on it. Thread: GUI.
class CLiveWall : public QWidget {
  Q_OBJECT
 public:
  struct WindowState {
    QString camera, state;
    PictureStatus status;
    qint64 frames = 0;
  };

  /// `turn_clock` measures the turns of a group cycle; null: real time.
  explicit CLiveWall(std::shared_ptr<IPictureSupply> pictures, QWidget* parent = nullptr,
                     std::unique_ptr<CPageClock> turn_clock = nullptr);
  ~CLiveWall() override;

  /// Plays this plan from there, or from its first page where it has no such page; the one before it ends.
  void Play(const view_plugin_protocol::GetPlanDetailResponse& plan, const WallPlace& place = {});
  /// The plan that plays was changed: what is on stays as far as it is still there, page, hold and time. Nothing for
  /// another plan.
  void Renew(const view_plugin_protocol::GetPlanDetailResponse& plan);
  /// The service has taken these pages of what is on the wall.
  void Saved(const std::list<view_plugin_protocol::PlanPage>& pages);
  /// The site's cameras have these names now.
  void RenewNames(const CArrangement::NameOf& name_of);
  void Stop();
  /// Shows these windows, from that page on.
  void Show(const CArrangement& arrangement, const WallPlace& place);
  /// Arranges the windows otherwise: `edit` says whether it has changed anything. Who does so wants the page to stay,
  /// so it is held. Arranges cameras without a plan where nothing is on the wall.
  bool Change(const std::function<bool(CArrangement*)>& edit);
  /// Turns by `pages`, around the ends; in a cycle the plans before and after come there.
  void Turn(int pages);
  /// Shows this page, counted from 1, for its whole time; nothing for one that the plan has not.
  void GoTo(int page);
  /// Holds the page, in a cycle the plan, or lets it go on.
  void ToggleHold();
  /// The page stays as long as the user works at a window of it, and goes on afterwards, unless he has said otherwise
  /// himself meanwhile. `work` is whatever says so; it is only compared.
  void StayFor(const void* work, bool on);
  /// The plan is one turn of a group cycle: it stays until its pages had their times, `least_seconds` at least.
  void BeginTurn(int least_seconds);
  /// This plan is likely to come next: its cameras are connected meanwhile.
  void Prepare(const view_plugin_protocol::GetPlanDetailResponse& plan);
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

  /// Whether the windows are those of a plan.
  bool IsPlaying() const { return arrangement_.HasPlan(); }
  /// Whether anything is on the wall, with a plan or without.
  bool IsShowing() const { return !arrangement_.IsNothing(); }
  /// The plan as it was fetched to be played; a blank record when nothing plays.
  const view_plugin_protocol::GetPlanDetailResponse& Plan() const { return arrangement_.PlanAsFetched(); }
  /// What is on the wall, as it is arranged now.
  const CArrangement& Arrangement() const { return arrangement_; }
  /// The windows as they are now, as large as they are.
  QImage Picture() const;
  /// Takes plans and groups of this site from now on.
  void AcceptDropsOf(const QString& station_id);
  CWallBar* Bar() const { return bar_; }
  QString PlanName() const;
  QString PlanCode() const;
  /// Counts from 1; 0 when nothing plays.
  int PageNumber() const { return IsShowing() ? page_ + 1 : 0; }
  /// As the user wants it: a page that only stays while he works at it is not held.
  WallPlace Place() const { return {PageNumber(), clock_.IsHeld() && works_.isEmpty()}; }
  CWindowGrid* Grid() const { return grid_; }
  /// The windows of the page that show a camera, in the page's order.
  QVector<WindowState> Windows() const;

 Q_SIGNALS:
  /// Another plan plays, or none.
  void SignalPlanChanged();
  /// The plan plays on as it is now.
  void SignalPlanRenewed();
  void SignalDropped(const TarnClient::PlanDrop& drop);
  /// For this window; 0 where there is none.
  void SignalCamerasDropped(int window_no, const QVector<TarnClient::WallCamera>& cameras);
  void SignalSwapWanted(int window_no, int other_window_no);
  /// This page is in sight now.
  void SignalPageShown();
  /// The windows are arranged otherwise now.
  void SignalArrangementChanged();
  /// A changed arrangement has left the wall, where it stood there.
  void SignalLeft(const TarnClient::CArrangement& arrangement, const TarnClient::WallPlace& place);
  /// The turn of the cycle is over in a moment.
  void SignalTurnEnds();
  /// The turn of the cycle is over: time for the next plan.
  void SignalTurnOver();
  /// The user wants the next plan of the cycle (1) or the one before (-1).
  void SignalStepWanted(int step);
  /// What is on the wall is to stay: the user holds it, or works at it.
  void SignalHeld();
  /// The user wants the wall empty.
  void SignalStopWanted();
  /// The user wants once more what could not be played.
  void SignalTryAgain();
  /// A camera has come into sight, and the plan wants it to look there.
  void SignalPresetWanted(const QString& camera_code, int preset_no);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void ConnectParts();
  void ConnectGrid();
  void ShowPage(int number);
  const QVector<view_plugin_protocol::PlanPage>& Pages() const { return arrangement_.Pages(); }
  QString Title() const;
  void SetHeld(bool held);
  void ShowWindows();
  void RenewBar();
  void ShowTimes();
  void ReportLostWindows(const view_plugin_protocol::PlanPage& page) const;
  void PrepareNext();
  void PrepareNothing();
  void Tick();
  void RunTicker();
  bool HasSeveralPages() const { return Pages().size() > 1; }
  bool HasTimes() const { return HasSeveralPages() || clock_.IsInTurn(); }

  CArrangement arrangement_;
  int page_ = 0;
  QSet<const void*> works_;  // for which the page stays; none while the user's own word holds it or lets it go on
  CWallClock clock_;
  QTimer ticker_;
  CWallBar* bar_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  CWallHint* hint_ = nullptr;
  MarUIControl::COfferStrip* strip_ = nullptr;
  CDropHint* drop_hint_ = nullptr;
  CWallDrops* drops_ = nullptr;
  CFetchSign* fetch_sign_ = nullptr;
  CWindowGrid* grid_ = nullptr;
  enum class Prepared { Nothing, Page, Plan };  // of what comes next
  Prepared prepared_ = Prepared::Nothing;
};

}  // namespace TarnClient
