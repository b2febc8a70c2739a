#pragma once

#include <QWidget>

namespace MarUIControl {
class CPushButton;
}
class QLabel;

namespace ResourceTreeKit {

/// What stands in the place of a camera tree's rows while it has none: why, and what can be done about it. Is read out
/// when it comes into sight, says something else, or is the answer to another try. Thread: GUI.
class CCameraTreeNotice : public QWidget {
  Q_OBJECT
 public:
  /// Covers `place` and follows its size.
  explicit CCameraTreeNotice(QWidget* place);

  void ShowText(const QString& text, bool with_retry);
  QString Text() const;

 Q_SIGNALS:
  void Retry();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void SayOnce();

  QString said_;  // since it is in sight
  QLabel* const text_;
  MarUIControl::CPushButton* const retry_;
};

}  // namespace ResourceTreeKit
