#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <string>

namespace MarUIControl {
class CShadowWidget;
}

namespace Ui {
class CShareViewWgt;
}

namespace view_plugin_protocol {
struct ShareViewResponseInfo;
}

namespace TarnPlanView {

class CShareViewModel;

/// Pop-up in which the user picks other users and shares a plan with them. Closes after a share that went through or
/// that the host refused, on Esc, and when its window loses the activation with the cursor outside; made to be kept.
/// Thread: GUI; loading the users and sharing block.
class CShareViewWgt : public QWidget {
  Q_OBJECT
 public:
  explicit CShareViewWgt(QWidget* parent);
  ~CShareViewWgt() override;

  /// Code of the plan to share.
  void SetShareViewIndexCode(const std::string& indexCode);
  void ClearCheck();
  /// Asks the host for the users again.
  void RefreshUsers();

 public Q_SLOTS:
  void OnShareBtnClick();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  void BuildForm();
  void ShowFailure(const view_plugin_protocol::ShareViewResponseInfo& response);

  std::unique_ptr<Ui::CShareViewWgt> ui_;
  MarUIControl::CShadowWidget* shadow_ = nullptr;
  CShareViewModel* model_ = nullptr;
  QPointer<QWidget> parent_;
  std::string plan_index_code_;
};

}  // namespace TarnPlanView
