#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QToolButton;

namespace MarUIControl {
class CLabel;
}

namespace TarnClient {

class CBarOverflow;

/// The strip above the wall: name of the plan, its page, the buttons to turn, hold and stop, and those to save. In a
/// narrow window the name keeps its room and buttons go into a menu. Thread: GUI.
class CWallBar : public QWidget {
  Q_OBJECT
 public:
  explicit CWallBar(QWidget* parent = nullptr);

  /// `page` counts from 1. With one page there is nothing to turn or hold, unless the plan is one turn of a cycle.
  void ShowPlan(const QString& name, const QString& page_name, int page, int pages, bool in_turn);
  /// What is left of the page's time and of the turn's.
  void ShowTimes(int page_seconds, int turn_seconds, bool held);
  /// Whether the windows are others than the plan's.
  void ShowChanged(bool changed);
  /// What makes these splits is the window's; the buttons show the actions, from one window on.
  void SetSplitActions(const QList<QAction*>& actions);
  /// Pages can still be turned and held.
  void SetLocked(bool locked);
  void ShowNothing();
  /// Where a group cycle is; an empty text when none runs.
  void ShowCycle(const QString& text);
  /// Something about the plan that plays, or that has ended; an empty text for nothing.
  void ShowNote(const QString& text);
  /// What can be done with what plays: the actions of the buttons, but for those to save.
  QList<QAction*> Commands() const;
  /// What the save buttons do is the window's.
  QToolButton* ShowInTreeButton() const { return show_in_tree_; }
  /// A command about the plan, in the menu of its name.
  void OfferOnTitle(QAction* action);
  QToolButton* SaveButton() const { return save_; }
  QToolButton* SaveMenuButton() const { return save_menu_; }
  /// Where on the screen something so wide opens below the save control, within the window.
  QPoint SavePlace(int width) const;

  /// Buttons that give way ask for no room.
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void SignalPrevious();
  void SignalNext();
  void SignalPause();
  void SignalStop();

 private:
  void AddTexts();
  void NameTimes();
  void AddButtons();
  QToolButton* AddButton(const char* name);
  QToolButton* AddCommand(const char* icon, const char* name, int key, void (CWallBar::*wanted)());
  void ShowHold(bool held);
  void ShowTime(QLabel* label, int seconds, bool held);
  void SetPartsVisible(bool playing, bool several, bool in_turn);
  void LabelSteps(bool several, bool in_turn);

  MarUIControl::CLabel *title_ = nullptr, *changed_ = nullptr, *note_ = nullptr, *cycle_ = nullptr;
  QLabel *page_ = nullptr, *time_ = nullptr, *turn_time_ = nullptr;
  bool is_playing_ = false, in_turn_ = false;
  QToolButton *previous_ = nullptr, *pause_ = nullptr, *next_ = nullptr, *stop_ = nullptr;
  QVector<QToolButton*> splits_;
  QToolButton* show_in_tree_ = nullptr;
  QToolButton *save_ = nullptr, *save_menu_ = nullptr;
  CBarOverflow* overflow_ = nullptr;
};

}  // namespace TarnClient
