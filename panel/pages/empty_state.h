#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace TarnPlanView {

/// What a view shows in place of rows: a picture, a text and, where something can be done about it, a button. Lies over
/// the view's viewport and follows its size; clicks beside the button go to the view. Thread: GUI.
class CEmptyState : public QWidget {
  Q_OBJECT
 public:
  explicit CEmptyState(QWidget* viewport);

  /// An empty `action` shows no button.
  void ShowState(const QString& text, const QString& action = QString());
  QString Text() const;
  /// Pixels left free at the top, for rows that stay in sight.
  void SetTopDistance(int distance);
  /// The picture of the skin as it is now.
  void RenewPicture();

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void SignalAction();

 private:
  void Place();

  int top_distance_ = 0;
  QLabel *picture_ = nullptr, *text_ = nullptr;
  QPushButton* action_ = nullptr;
};

}  // namespace TarnPlanView
