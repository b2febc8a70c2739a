#pragma once

#include <QObject>
#include <QString>
#include <functional>

class QAction;
class QWidget;

namespace MarUIControl {
class COfferStrip;
}

namespace TarnPlanView {

/// What was done, and how it is undone.
struct Undoable {
  QString notice;
  int seconds = 0;
  std::function<void()> undo;
};

/// Offers to undo the last thing done in a panel, for some seconds: in a strip and, while the panel is on show, by
/// Ctrl+Z in its window. In all panels of a client one offer stands at the most: a new one takes the place of the one
/// before. Thread: GUI.
class CUndoOffer : public QObject {
  Q_OBJECT
 public:
  /// `panel` owns it.
  CUndoOffer(MarUIControl::COfferStrip* strip, QWidget* panel);

  void Offer(const Undoable& done);
  /// What was taken, but could not be undone now. Another offer that stands by then stays.
  void OfferAgain(const Undoable& done);
  void Withdraw();
  /// On while no plan editor is open in the window: there the key undoes edits.
  QAction* Action() const { return action_; }

 public Q_SLOTS:
  void RenewAction();

 Q_SIGNALS:
  /// The key was pressed, and no offer stands.
  void SignalNothing();

 private:
  void Undo();

  QWidget* const panel_;
  MarUIControl::COfferStrip* const strip_;
  QAction* const action_;
};

}  // namespace TarnPlanView
