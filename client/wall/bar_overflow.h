#pragma once

#include <QLabel>
#include <QObject>
#include <QVector>

class QToolButton;
class QWidget;

namespace TarnClient {

/// How many groups of buttons, from the first on, give way so that the others and what is `fixed` have `room`. `more`:
/// the button that takes their place.
int GroupsWithoutRoom(int room, int fixed, const QVector<int>& group_widths, int more);

/// Lets the buttons of a bar give way to its text: those that have no room stand in the menu of one more button. Child
/// of the bar. Thread: GUI.
class CBarOverflow : public QObject {
  Q_OBJECT
 public:
  /// `text` is one label of the bar.
  CBarOverflow(QWidget* bar, QLabel* text);

  /// Buttons of the bar that give way together, after those of earlier calls.
  void Add(const QVector<QToolButton*>& together);
  /// Adds the button with the menu to the bar's layout, at its end.
  void AddMore();
  /// Whether the button is to be had at all, in the bar or in the menu.
  void SetWanted(QToolButton* button, bool wanted);
  bool IsWanted(const QToolButton* button) const { return !unwanted_.contains(const_cast<QToolButton*>(button)); }
  QToolButton* MoreButton() const { return more_; }

  bool eventFilter(QObject* watched, QEvent* event) override;
  /// Of the bar, when all buttons that can have given way.
  int LeastWidth() const;

 private:
  using Group = QVector<QToolButton*>;

  void Fit();
  void OpenMenu();
  int FixedWidth() const;
  int WidthOf(const Group& group) const;
  int WidthOf(const QWidget& part) const;
  bool GivesWay(const QWidget* part) const;

  QWidget* const bar_;
  QLabel* const text_;
  QVector<Group> groups_;
  Group unwanted_;
  int in_menu_ = 0;  // groups
  QToolButton* more_ = nullptr;
};

}  // namespace TarnClient
