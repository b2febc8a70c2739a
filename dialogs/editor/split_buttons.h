#pragma once

#include <QVector>
#include <QWidget>

class QToolButton;

namespace TarnPlanView {

class CPlanDocument;

/// The four splits of the current page, each as the grid that it makes, of which one is chosen: radio buttons to keys
/// and assistive technology. Thread: GUI.
class CSplitButtons : public QWidget {
  Q_OBJECT
 public:
  /// The document outlives the buttons.
  CSplitButtons(CPlanDocument* document, QWidget* parent);

  /// `place` from 0: the first button, and so on.
  void Choose(int place);

 private:
  QToolButton* MakeButton(int place);
  void RenewIcons();
  void RenewChecked();

  CPlanDocument* const document_;
  QVector<QToolButton*> buttons_;
};

}  // namespace TarnPlanView
