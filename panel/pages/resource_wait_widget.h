#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QPushButton;

namespace TarnPlanView {

/// The page shown until the plans are there: a turning mark; after 5 s also how long it has taken, after 15 s a button
/// to try again. Thread: GUI.
class CResourceWaitWidget : public QWidget {
  Q_OBJECT
 public:
  explicit CResourceWaitWidget(QWidget* parent = nullptr);

  /// Starts or ends the animation; starting begins to count again.
  void SetWaiting(bool waiting);
  bool IsWaiting() const { return ticker_.isActive(); }
  /// Why the plans do not come, while that lasts; empty when it is over.
  void ShowTrouble(const QString& text);
  /// What the page says after so many seconds.
  void ShowElapsed(int seconds);

 Q_SIGNALS:
  void SignalRetry();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Tick();
  QRect MarkRect() const;

  QTimer ticker_;
  QElapsedTimer since_start_;
  int frame_ = 0;
  bool is_said_ = false;  // that one waits
  QLabel *text_ = nullptr, *trouble_ = nullptr, *elapsed_ = nullptr;
  QWidget* mark_place_ = nullptr;
  QPushButton* retry_ = nullptr;
};

}  // namespace TarnPlanView
