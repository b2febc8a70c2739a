#pragma once

#include <QWidget>

namespace MarUIControl {
class CSpinBox;
}

namespace TarnPlanView {

class CPlanDocument;
class CSplitButtons;

/// Split and dwell time of the current page. Thread: GUI.
class CPageSettings : public QWidget {
  Q_OBJECT
 public:
  /// The document outlives the settings.
  CPageSettings(CPlanDocument* document, QWidget* parent);

  CSplitButtons* Splits() const { return splits_; }

 private:
  void MakeDwell();
  void ShowDocument();

  CPlanDocument* const document_;
  CSplitButtons* splits_ = nullptr;
  MarUIControl::CSpinBox* dwell_ = nullptr;
};

}  // namespace TarnPlanView
