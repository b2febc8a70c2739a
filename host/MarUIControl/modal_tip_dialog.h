#pragma once

#include <QDialog>
#include <memory>

#include "host_export.h"

namespace MarUIControl {

/// Box with a title, a text and up to three buttons, modal to its parent's window and over the middle of it. exec()
/// gives 1 for confirm, 2 for the other way and 0 for cancel, Esc and closing. A parent that goes while the box is open
/// ends it with 0 and takes it along: keep such a box in a QPointer, not on the stack. Tests answer it through
/// TarnHost::SetModalAnswer(). Thread: GUI.
class TARN_HOST_EXPORT CModalTipDialog : public QDialog {
  Q_OBJECT
 public:
  enum Result { Cancelled = 0, Confirmed = 1, Other = 2 };
  enum DialogSize { SmallSize = 0, MiddleSize = 1, LargeSize = 2 };
  enum DialogModel { HintModel = 0, WarningModel = 1, QuestionModel = 2 };

  explicit CModalTipDialog(QWidget* parent = nullptr);
  ~CModalTipDialog() override;

  /// A DialogSize: how wide. The height follows the text.
  void SetDialogSize(int size);
  /// A DialogModel: which mark, and for a question that Return cancels.
  void SetDialogModel(int model);
  void SetTitle(const QString& title);
  /// Plain text, wrapped.
  void SetContent(const QString& content);
  void SetConfirmText(const QString& text);
  void SetCancelText(const QString& text);
  /// A third button between the two; none without a text.
  void SetOtherText(const QString& text);
  void SetConfirmVisible(bool visible);
  void SetCancelVisible(bool visible);
  QString Title() const;
  QString Content() const;

  int exec() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace MarUIControl
