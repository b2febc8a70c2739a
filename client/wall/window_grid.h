#pragma once

#include <QVector>
#include <QWidget>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "pictures/picture_supply.h"
#include "wall/picture_memory.h"

class QGridLayout;

namespace TarnClient {

class CWallWindow;

/// The windows of one page of the wall. One of them may be current, which is where cameras go, and one enlarged over
/// the room of all. Keys while a window has the focus: arrows go to the one beside it (in a zoomed picture they move
/// that), Ctrl and an arrow swaps the two, Escape takes back a zoom and then the enlarging. On a page of one window the
/// arrows are left to the wall. Thread: GUI.
class CWindowGrid : public QWidget {
  Q_OBJECT
 public:
  CWindowGrid(std::shared_ptr<IPictureSupply> pictures, QWidget* parent);
  ~CWindowGrid() override;

  /// A camera that stays in its window keeps its source, whatever the split.
  void ShowPage(const view_plugin_protocol::PlanPage& page);
  /// How long before their time the cameras of this page are to be connected, so that each has a picture by then.
  int LeadSeconds(const view_plugin_protocol::PlanPage& page) const;
  /// What comes next: its cameras are connected meanwhile.
  void Prepare(const view_plugin_protocol::PlanPage& page);
  void PrepareNothing();
  /// No camera in any window, none current or enlarged, and no picture is remembered.
  void Clear();
  void Tick();

  /// All that there can be, in their order.
  const QVector<CWallWindow*>& Windows() const { return windows_; }
  /// Of this number, counted from 1; null for one that is not in the split.
  CWallWindow* WindowAt(int window_no) const;
  /// The number of the window there; 0 for none.
  int NumberAt(const QPoint& at) const;
  /// How many the split has.
  int Count() const { return side_ * side_; }

  /// All windows as they show their cameras now, without marks; also while one is enlarged.
  QImage Picture() const;
  /// 0 while none is current.
  int CurrentWindow() const { return current_; }
  /// Where the next camera goes; the focus stays where it is. 0 for none.
  void SetCurrent(int window_no);
  /// The current window gets the focus too.
  void Choose(int window_no);
  /// Shown over the room of all windows; 0 for none.
  int EnlargedWindow() const { return enlarged_; }
  void Enlarge(int window_no);
  void ToggleEnlarged(int window_no);
  /// Under a drag; 0 for none.
  void SetTarget(int window_no);
  /// Whether a window is enlarged, or any picture zoomed.
  bool IsCloserLook() const;

 Q_SIGNALS:
  /// A camera has come into sight, or is to look elsewhere.
  void SignalCameraCame(const view_plugin_protocol::PlanWindow& window);
  /// The user has gone to this window.
  void SignalChosen(int window_no);
  /// The user looks closer at something, or no longer.
  void SignalCloserLook(bool closer);
  void SignalSwapWanted(int window_no, int other_window_no);
  void SignalMenuWanted(int window_no, const QPoint& place);
  void SignalDragged(int window_no);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void MakeWindow(int window_no);
  void Arrange(int side);
  void Place();
  void Fill(CWallWindow* window, const view_plugin_protocol::PlanWindow* content);
  std::set<std::pair<std::string, int>> Views() const;
  void Empty(CWallWindow* window);
  int Neighbour(int key) const;
  bool MoveBy(QKeyEvent* event);
  bool TakeBack();
  void RenewWindows();

  const std::shared_ptr<IPictureSupply> pictures_;
  QGridLayout* grid_ = nullptr;
  QVector<CWallWindow*> windows_;
  CPictureMemory memory_;
  int side_ = 0, current_ = 0, enlarged_ = 0, target_ = 0;
};

}  // namespace TarnClient
