#pragma once

#include <QDialog>
#include <QTimer>

class QPushButton;

namespace TarnPlanView {
class CDefaultLoadViewDisplay;
class CStandardViewController;
}  // namespace TarnPlanView

namespace TarnClient {

/// What a user can set for the client: the default view. Shows at once what is stored, or, when that cannot be read,
/// as soon as plans come in; saving closes it, a failed save does not. Reading and saving block until the service has
/// answered. Thread: GUI.
class CSettingsDialog : public QDialog {
  Q_OBJECT
 public:
  /// Messages go by way of the controller, which is not owned and may go before.
  CSettingsDialog(TarnPlanView::CStandardViewController* controller, QWidget* parent);

  TarnPlanView::CDefaultLoadViewDisplay* DefaultView() const { return default_view_; }

 private:
  QWidget* BuildButtons();
  void Read();
  void Save();
  void Renew();

  TarnPlanView::CDefaultLoadViewDisplay* const default_view_;
  QPushButton* save_ = nullptr;
  QTimer read_again_;
  bool is_read_ = false;
};

}  // namespace TarnClient
