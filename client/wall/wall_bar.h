#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace TarnClient {

/// The strip above the wall: name of the plan, its page, the buttons to turn, hold and stop, and those to save.
/// Thread: GUI.
class CWallBar : public QWidget {
  Q_OBJECT
 public:
  explicit CWallBar(QWidget* parent = nullptr);

  /// `page` counts from 1. With one page there is nothing to turn or hold.
  void ShowPlan(const QString& name, const QString& page_name, int page, int pages);
  void ShowTime(int seconds_left, bool paused);
  void ShowNothing();
  /// Where a group cycle is; an empty text when none runs.
  void ShowCycle(const QString& text);
  /// An empty reason means that it can be done.
  void ShowSaving(const QString& why_not_save, const QString& why_not_save_as);
  /// Where on the screen something so wide opens below the save control, within the window.
  QPoint SavePlace(int width) const;

 Q_SIGNALS:
  void SignalPrevious();
  void SignalNext();
  void SignalPause();
  void SignalStop();
  void SignalSave();
  void SignalSaveMenu();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QToolButton* AddButton(const char* icon, const char* name);
  void Label(QToolButton* button, const QString& text, const QString& keys);
  void Offer(QToolButton* button, const QString& text, const QString& keys, const QString& why_not);
  void ElideTexts();
  void SetButtonsVisible(bool playing, bool several);

  QString title_text_, cycle_text_;
  QLabel* title_ = nullptr;
  QLabel* page_ = nullptr;
  QLabel* time_ = nullptr;
  QLabel* cycle_ = nullptr;
  QToolButton *previous_ = nullptr, *pause_ = nullptr, *next_ = nullptr, *stop_ = nullptr;
  QToolButton *save_ = nullptr, *save_menu_ = nullptr;
};

}  // namespace TarnClient
