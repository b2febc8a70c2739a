#pragma once

#include <QDialog>
#include <memory>

#include "host_export.h"

namespace MarUIControl {

/// Box with a title, a text and up to three buttons, modal to its parent's window and over the middle of it. exec()
/// gives 1 for confirm, 2 for the other way and 0 for cancel, Esc and closing. A parent that goes while the box is open
/// ends it with 0 and takes it along: keep such a box in a QPointer, not on the stack. In the substitute host
/// TarnHost::SetModalAnswer() answers it without showing it; another host has its own way for tests, or none. Thread:
/// GUI.
class TARN_HOST_EXPORT CModalTipDialog : public QDialog {
  Q_OBJECT
 public:
  /// What exec() gives.
  enum Result {
    Cancelled = 0,  ///< The cancel button, Esc, or the box was closed.
    Confirmed = 1,  ///< The confirm button.
    Other = 2,      ///< The third button.
  };
  /// How wide the box is.
  enum DialogSize {
    SmallSize = 0,   ///< For one short line.
    MiddleSize = 1,  ///< What it has at first.
    LargeSize = 2,   ///< For several lines.
  };
  /// What the box is for.
  enum DialogModel {
    HintModel = 0,      ///< Says something; what it has at first.
    WarningModel = 1,   ///< Something has failed.
    QuestionModel = 2,  ///< Asks; begins on cancel, so that Return by mistake confirms nothing.
  };

  explicit CModalTipDialog(QWidget* parent = nullptr);
  ~CModalTipDialog() override;

  /// A DialogSize: how wide; the nearest for another number. The height follows the text, which scrolls when it is
  /// long.
  void SetDialogSize(int size);
  /// A DialogModel: which mark, and for a question that Return cancels. Before the box is shown.
  void SetDialogModel(int model);
  /// The title, above the text and for the window; none without a text.
  void SetTitle(const QString& title);
  /// What it says: plain text, wrapped.
  void SetContent(const QString& content);
  /// "OK" at first.
  void SetConfirmText(const QString& text);
  /// "Cancel" at first.
  void SetCancelText(const QString& text);
  /// A third button between the two; none without a text.
  void SetOtherText(const QString& text);
  /// Whether there is a confirm button; there is at first.
  void SetConfirmVisible(bool visible);
  /// Whether there is a cancel button; there is at first. Esc cancels all the same.
  void SetCancelVisible(bool visible);
  /// As set.
  QString Title() const;
  /// As set.
  QString Content() const;

  /// Shows the box and gives a Result once it is closed. Events are delivered meanwhile, so anything may have gone.
  int exec() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace MarUIControl
