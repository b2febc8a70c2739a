#pragma once

#include <QIcon>
#include <QPoint>
#include <QVector>
#include <QWidget>
#include <optional>

#include "plan_document.h"
#include "window_text.h"

namespace TarnPlanView {

/// The windows of the document's current page, as they will stand on the wall; one widget that paints them all.
///
/// Keys: arrows, Home and End move the current window, Ctrl and an arrow swaps it with its neighbour, Ctrl+X marks it
/// and Ctrl+V on another one swaps the two, Delete clears it, Page Up and Page Down turn the page, Menu opens the menu.
/// Cameras are dropped on windows; a window dragged onto another one swaps the two. Its accessible name tells the
/// current window. Thread: GUI.
class CWindowGrid : public QWidget {
  Q_OBJECT
 public:
  /// Both outlive the grid.
  CWindowGrid(CPlanDocument* document, const CWindowText* text, QWidget* parent);

  int CurrentWindow() const { return current_; }
  /// The user's choice of a window. Clamped to the windows there are.
  void SetCurrentWindow(int window_no);
  QRect WindowRect(int window_no) const;
  /// Puts one camera into a window, whatever it holds, or several into the empty windows from there on; when these are
  /// not all on this page it says where they went. False when nothing was put anywhere.
  bool PutCameras(int window_no, const QVector<DraftCamera>& cameras);
  /// The same in the current window, or from it on; the next empty one of the page, if there is any, is current then. A
  /// window that was filled last and not chosen since keeps its camera: that one goes to the next empty window, and
  /// SignalRefused() says when the page is full.
  void PutAndGoOn(const DraftCamera& camera);
  void FillAndGoOn(const QVector<DraftCamera>& cameras);
  /// The cameras' names and states are to be looked up again.
  void RenewCameras();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void SignalCurrentWindowChanged(int window_no);
  /// For the user: why something was not done, or only in part.
  void SignalRefused(const QString& reason);
  /// For the user: what was done beyond what he sees.
  void SignalDone(const QString& what);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool event(QEvent* event) override;

 private:
  int Split() const;
  int WindowCount() const;
  QRect Room() const;
  const view_plugin_protocol::PlanWindow* Window(int window_no) const;
  int Neighbour(int key) const;
  bool Turn(int key);
  bool MoveOrSwap(QKeyEvent* event);
  int NextEmpty(int window_no) const;
  /// To the next empty window after `filled`.
  void GoOn(int filled);
  void GoTo(int window_no);
  bool Fill(int window_no, const QVector<DraftCamera>& cameras);
  void ReportFilling(const PlanFilling& filling);
  void Mark(int window_no);
  bool MarkOrSwap(QKeyEvent* event);
  void SwapMarked();
  QString Tip(int window_no) const;
  void Swap(int window_no, int other_window_no);
  void Clear();
  void StartDrag();
  void ShowTarget(int window_no);
  void OnDocument(int change, int page);
  void RenewDescription();
  void PaintWindow(QPainter* painter, int window_no) const;
  /// Paler while the grid is disabled.
  QColor Ink(const char* name) const;
  void PaintInvitation(QPainter* painter, const QRect& inside) const;
  void PaintContent(QPainter* painter, const QRect& inside, const view_plugin_protocol::PlanWindow& window) const;
  void PaintOffline(QPainter* painter, const QRect& top_line) const;
  void PaintMarks(QPainter* painter, const QRect& place, int window_no) const;

  CPlanDocument* const document_;
  const CWindowText* const text_;
  int current_ = 1;
  int just_filled_ = 0;  // the window that got the last camera, until the user chooses one
  int target_ = 0;       // window under a drag; 0 for none
  int dragged_ = 0;
  int marked_ = 0;  // to be swapped; 0 for none
  int shown_page_ = 0;
  const QIcon offline_;
  std::optional<QVector<DraftCamera>> drop_;
  std::optional<QPoint> pressed_at_;
};

}  // namespace TarnPlanView
