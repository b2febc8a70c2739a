#pragma once

#include <QDialog>
#include <QTimer>

#include "settings/chosen_settings.h"
#include "site/camera_trial.h"

class QPushButton;
class QTabWidget;
class QVBoxLayout;

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
/// have answered. Who may configure the site has pages for its cameras and users besides, where every change is made at
/// once. Thread: GUI.
class CSettingsDialog : public QDialog {
  Q_OBJECT
 public:
  /// Messages about the default view go by way of the controller, which may go before. Neither it nor the settings are
  /// owned.
  CSettingsDialog(TarnPlanView::CStandardViewController* controller, CUserSettings* settings, QWidget* parent);

  TarnPlanView::CDefaultLoadViewDisplay* DefaultView() const { return default_view_; }
  /// How the page of cameras tries an address; before it is opened.
  void SetTryCamera(TryCamera try_camera) { try_camera_ = std::move(try_camera); }
  /// About this desk, below what can be set; before it is shown.
  void AddNote(const QString& text);
  /// Only for who may configure the site.
  void OpenCameras();
  void OpenUsers();
  /// The site's users are others than before.
  void OnUsersChanged();

 private:
  QWidget* BuildPages();
  QWidget* BuildButtons();
  void OnPage();
  void OpenPage(int page);
  void FillPage();
  bool IsForm() const;
  void Resize(const QSize& wanted);
  void Read();
  void Save();
  bool SaveChosen();
  void Renew();

  CUserSettings* const settings_;
  TarnPlanView::CDefaultLoadViewDisplay* const default_view_;
  CSettingsForm* const form_;
  ChosenSettings shown_;  // at first, or as stored last
  QTabWidget* pages_ = nullptr;
  QVBoxLayout* general_ = nullptr;
  QWidget *cameras_ = nullptr, *users_ = nullptr;  // filled when they are first opened
  TryCamera try_camera_;
  QSize size_of_form_;
  bool was_form_ = true;
  QPushButton *save_ = nullptr, *close_ = nullptr;
  QTimer read_again_;
  bool is_read_ = false;
};

}  // namespace TarnClient
