#pragma once

#include <QFrame>
#include <QPointer>
#include <QString>
#include <memory>

namespace Ui {
class CViewNameEdit;
}

namespace TarnPlanView {

/// Pop-up in which the user types the name of a group or of a cycle. It checks the name and reports it; who shows it
/// sends the request. Hides itself after a confirmed name, on Esc and when the focus leaves it with the cursor outside;
/// made to be kept and shown again after SetMode(), and SetName() for a rename. Thread: GUI.
class CViewNameEdit : public QFrame {
  Q_OBJECT
 public:
  /// Messages stand over the window of `parent`.
  explicit CViewNameEdit(QWidget* parent);
  ~CViewNameEdit() override;

  /// 0 adds a group, 1 renames a group, 2 renames a cycle. Any other number changes no text. Mode 0 also puts a new
  /// default name into the field.
  void SetMode(int mode);
  /// In place of the mode's own title, until the next SetMode().
  void SetTitle(const QString& title);
  /// The name as it stands, for modes 1 and 2: confirming it unchanged only hides the pop-up.
  void SetName(const QString& name);
  /// Into the field alone: it counts as typed.
  void SetTyped(const QString& name);

 Q_SIGNALS:
  /// Names come trimmed; the pop-up hides after the signal.
  void SignalAddPlanViewGroup(QString name);
  void SignalEditPlanViewGroup(QString name);
  void SignalEditCycleName(QString name);
  /// With or without a name.
  void SignalClosed();

 public Q_SLOTS:
  void OnClickedBtn();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildForm();
  void Report(const QString& name);
  void StopHint();
  void HideHintOver(const QString& text);
  QString NamingRule() const;

  std::unique_ptr<Ui::CViewNameEdit> ui_;
  int mode_ = 0;
  QString name_;
  QPointer<QWidget> parent_;
  int hint_timer_ = 0;
};

}  // namespace TarnPlanView
