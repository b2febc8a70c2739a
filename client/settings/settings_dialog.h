#pragma once

#include <QDialog>
#include <QTimer>

#include "settings/chosen_settings.h"

class QPushButton;

namespace TarnPlanView {
class CDefaultLoadViewDisplay;
class CStandardViewController;
}  // namespace TarnPlanView

namespace TarnClient {

class CSettingsForm;
class CUserSettings;

/// What a user can set for the client. The default view is shown at once as it is stored, or, when that cannot be read,
/// as soon as plans come in. Saving stores all that was changed and closes; what cannot be stored keeps the dialog,
/// with a message, and nothing of it counts. Cancel changes nothing. Reading and saving block until service and disk
/// have answered. Thread: GUI.
class CSettingsDialog : public QDialog {
  Q_OBJECT
 public:
  /// Messages about the default view go by way of the controller, which may go before. Neither it nor the settings are
  /// owned.
  CSettingsDialog(TarnPlanView::CStandardViewController* controller, CUserSettings* settings, QWidget* parent);

  TarnPlanView::CDefaultLoadViewDisplay* DefaultView() const { return default_view_; }

 private:
  QWidget* BuildButtons();
  void Read();
  void Save();
  bool SaveChosen();
  void Renew();

  CUserSettings* const settings_;
  TarnPlanView::CDefaultLoadViewDisplay* const default_view_;
  CSettingsForm* const form_;
  ChosenSettings shown_;  // at first, or as stored last
  QPushButton* save_ = nullptr;
  QTimer read_again_;
  bool is_read_ = false;
};

}  // namespace TarnClient
