#pragma once

#include <QWidget>

class QSpinBox;

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

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeDwell();
  void ShowDocument();

  CPlanDocument* const document_;
  CSplitButtons* splits_ = nullptr;
  QSpinBox* dwell_ = nullptr;
};

}  // namespace TarnPlanView
