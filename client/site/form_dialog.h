#pragma once

#include <QDialog>
#include <QPointer>

#include "site/site_call.h"

class QBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace MarUIControl {
class CLineEdit;
}  // namespace MarUIControl

namespace TarnClient {

/// A dialog with labelled fields, a line for what is wrong, and two buttons: one that does it, and Cancel. Return does
/// it, Esc cancels. Thread: GUI.
class CFormDialog : public QDialog {
  Q_OBJECT
 public:
  /// `name` begins the names of its parts.
  CFormDialog(const QString& name, const QString& title, const QString& confirm_text, QWidget* parent);

  /// What is wrong, read out to assistive technology; empty: nothing.
  void ShowFault(const QString& text);
  /// While it is being done, nothing can be entered; Cancel stays.
  void SetBusy(bool busy);

 Q_SIGNALS:
  void SignalConfirmed();

 protected:
  /// A field below its label, with further widgets beside it.
  void AddField(const QString& label, QWidget* field, const QList<QWidget*>& beside = {});
  void AddNote(const QString& text);
  void AddWidget(QWidget* widget, int stretch = 0);
  /// The fault that is shown already says something else now; is not read out again.
  void RenewFault(const QString& text);
  /// To assistive technology.
  static void ReadOut(QLabel* label);
  /// Closes when the service has taken the changes; else says why not.
  void SendChanges(const TarnHost::CameraChanges& changes);
  void CloseIfDone(const SiteCallResult& result);
  QPushButton* ConfirmButton() const { return confirm_; }
  MarUIControl::CLineEdit* NewField(const char* name, int longest);
  QPushButton* NewButton(const char* name, const QString& text);

  void showEvent(QShowEvent* event) override;

 private:
  QBoxLayout* BuildButtons(const QString& confirm_text);

  const QString name_;
  QWidget* const fields_;
  QVBoxLayout* const layout_;
  QLabel* const fault_;
  QPushButton *confirm_ = nullptr, *cancel_ = nullptr;
  QList<QWidget*> stops_;  // of Tab, as they stand
  QPointer<QWidget> typed_in_;
};

}  // namespace TarnClient
