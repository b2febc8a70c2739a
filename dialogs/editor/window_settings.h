#pragma once

#include <QPair>
#include <QTimer>
#include <QVector>
#include <QWidget>

#include "camera_abilities.h"

class QComboBox;
class QLabel;

namespace view_plugin_protocol {
struct PlanWindow;
}

namespace TarnPlanView {

class CPlanDocument;
class CWindowText;

/// Stream and preset of one window's camera, as far as the camera has them; what the plan says already is always among
/// the choices. Asks the host only for a camera that stays for a moment, and again whenever this is shown. Thread: GUI.
class CWindowSettings : public QWidget {
  Q_OBJECT
 public:
  /// Both outlive the settings.
  CWindowSettings(CPlanDocument* document, const CWindowText* text, QWidget* parent);

  /// A window of the current page.
  void ShowWindow(int window_no);
  /// The cameras' names are to be looked up again.
  void Renew();

 Q_SIGNALS:
  /// For the user: what the host did not answer.
  void SignalRefused(const QString& reason);
  /// It is on the site as far as was known here, but the host did not answer what it can do.
  void SignalCameraFailed(const QString& camera_code);

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using Choices = QVector<QPair<int, QString>>;

  QComboBox* MakeBox(const char* name, const QString& label, int width);
  void ConnectAbilities();
  const view_plugin_protocol::PlanWindow* Window() const;
  Choices Streams(const view_plugin_protocol::PlanWindow& window) const;
  Choices Presets(const view_plugin_protocol::PlanWindow& window) const;
  static void Offer(QComboBox* box, const Choices& choices, int current);
  void AskSoon();
  void OnAbility(const QString& camera_code);
  void OnFailure(const QString& camera_code, const QString& error);

  CPlanDocument* const document_;
  const CWindowText* const text_;
  CCameraAbilities abilities_;
  QTimer rest_;  // since another camera came into the window
  QLabel* title_ = nullptr;
  QComboBox *stream_ = nullptr, *preset_ = nullptr;
  QString asked_, failed_;  // cameras' codes: asked for, and whose failure the user has read
  int window_no_ = 1;
};

}  // namespace TarnPlanView
