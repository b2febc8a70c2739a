#pragma once

#include <QObject>
#include <functional>

class QAction;
class QWidget;

namespace MarUIControl {
class COfferStrip;
}

namespace TarnPlanView {

/// Offers to undo the last thing done in a panel, in a strip and by Ctrl+Z in the panel's window, for some seconds. In
/// all panels of a client one offer stands at the most: a new one takes the place of the one before. Thread: GUI.
class CUndoOffer : public QObject {
  Q_OBJECT
 public:
  /// `panel` owns it.
  CUndoOffer(MarUIControl::COfferStrip* strip, QWidget* panel);

  void Offer(const QString& text, int seconds, const std::function<void()>& undo);
  void Withdraw();
  /// On while an offer stands and the focus is where the key has no meaning of its own.
  QAction* Action() const { return action_; }

 private:
  void RenewAction();

  MarUIControl::COfferStrip* const strip_;
  QAction* const action_;
};

}  // namespace TarnPlanView
