#pragma once

#include <QWidget>

class QLabel;

namespace MarUIControl {
class CPlaceholdLineEdit;
class CRangeTimeEdit;
class CSwitchControl;
}  // namespace MarUIControl

namespace TarnPlanView {

class CGroupChooser;
class CPlanDocument;

/// Title, name, group and, where the host runs plans by the clock, the daily run. Thread: GUI.
class CEditorHeader : public QWidget {
  Q_OBJECT
 public:
  /// The document outlives the header.
  CEditorHeader(CPlanDocument* document, QWidget* parent);

  CGroupChooser* Groups() const { return groups_; }
  void SetTitle(const QString& title);
  void FocusName();
  /// Why the plan cannot be saved so; empty when it can. Puts the focus where it must be mended.
  QString FindProblem();

 private:
  void MakeNameField();
  void MakeTimedRun();
  QWidget* MakeFields();
  QWidget* MakeTitle();
  QString NameProblem() const;
  void ShowDocument();
  void ShowBeginOfName();
  void ShowTimes();

  CPlanDocument* const document_;
  QLabel *title_ = nullptr, *dirty_ = nullptr, *note_ = nullptr;
  MarUIControl::CPlaceholdLineEdit* name_ = nullptr;
  CGroupChooser* groups_ = nullptr;
  QWidget* run_row_ = nullptr;
  MarUIControl::CSwitchControl* run_ = nullptr;
  MarUIControl::CRangeTimeEdit* times_ = nullptr;
  bool showing_ = false;
};

}  // namespace TarnPlanView
