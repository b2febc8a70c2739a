#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace MarUIControl {
class CPrimaryButton;
class CPushButton;
}  // namespace MarUIControl

namespace TarnPlanView {

class CPlanDocument;

/// Undo and redo, how full the plan is, what is going on, and the way out. Thread: GUI.
class CEditorFooter : public QWidget {
  Q_OBJECT
 public:
  /// The document outlives the footer.
  CEditorFooter(CPlanDocument* document, QWidget* parent);

  /// `work` names what is going on; empty for nothing. Meanwhile only the way out works.
  void ShowWork(const QString& work);
  /// Without a plan there is nothing to save.
  void SetSavePossible(bool possible);

 Q_SIGNALS:
  void SignalSave();
  void SignalCancel();

 private:
  QToolButton* MakeStep(const char* name, const QString& text, const QString& tip);
  void MakeSteps();
  void LayOut();
  void RenewCount();
  void RenewButtons();

  CPlanDocument* const document_;
  QToolButton *undo_ = nullptr, *redo_ = nullptr;
  QLabel *count_ = nullptr, *work_ = nullptr;
  MarUIControl::CPrimaryButton* save_ = nullptr;
  MarUIControl::CPushButton* cancel_ = nullptr;
  bool save_possible_ = true;
};

}  // namespace TarnPlanView
