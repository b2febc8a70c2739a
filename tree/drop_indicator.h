#pragma once

#include <QRect>
#include <QWidget>

class QFrame;

namespace TarnPlanView {

/// Shows where a dragged row would land: a line beside a row, or a frame around it. Its parts are children of the
/// view's viewport, so that they neither take the activation nor stand out of the tree. Thread: GUI.
class CDropIndicator {
 public:
  /// Each is made once; before that, showing and hiding it does nothing.
  void MakeLine(QWidget* viewport);
  void MakeFrame(QWidget* viewport);

  /// Above the upper edge of `row`, or else at its lower one (viewport coordinates).
  void ShowLine(const QRect& row, bool above);
  void ShowFrame(const QRect& row);
  void Hide();

 private:
  QWidget* line_ = nullptr;  // both belong to the viewport
  QFrame* frame_ = nullptr;
};

}  // namespace TarnPlanView
