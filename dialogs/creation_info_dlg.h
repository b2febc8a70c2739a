#pragma once

#include <memory>

#include "TarnUIDataController/qss_widget_box.h"

namespace Ui {
class CreationInfoDlgUi;
}

namespace TarnPlanView {

/// Tells who made a plan and when. Made to be kept: each answer overwrites both texts. Thread: GUI.
class CCreationInfoDlg : public tarn_ui_data_controller::CQssWidgetBox {
  Q_OBJECT
 public:
  explicit CCreationInfoDlg(QWidget* parent);
  ~CCreationInfoDlg() override;

  /// Both are shown as given.
  void SetCreationInfo(const QString& creator, const QString& creationTime);

 private:
  std::unique_ptr<Ui::CreationInfoDlgUi> ui_;
};

}  // namespace TarnPlanView
