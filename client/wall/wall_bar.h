#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace TarnClient {

/// The strip above the wall: name of the plan, its page, and the buttons to turn, hold and stop. Thread: GUI.
class CWallBar : public QWidget {
  Q_OBJECT
 public:
  explicit CWallBar(QWidget* parent = nullptr);

  /// `page` counts from 1. With one page there is nothing to turn or hold.
  void ShowPlan(const QString& name, const QString& page_name, int page, int pages);
  void ShowTime(int seconds_left, bool paused);
  void ShowNothing();

 Q_SIGNALS:
  void SignalPrevious();
  void SignalNext();
  void SignalPause();
  void SignalStop();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QToolButton* AddButton(const char* icon, const char* name);
  void Label(QToolButton* button, const QString& text, const QString& keys);
  void ElideTitle();
  void SetButtonsVisible(bool playing, bool several);

  QString title_text_;
  QLabel* title_ = nullptr;
  QLabel* page_ = nullptr;
  QLabel* time_ = nullptr;
  QToolButton *previous_ = nullptr, *pause_ = nullptr, *next_ = nullptr, *stop_ = nullptr;
};

}  // namespace TarnClient
