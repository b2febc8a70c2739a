#pragma once

#include <QFrame>
#include <functional>
#include <memory>

#include "host_export.h"

namespace MarUIControl {

/// A strip for a layout that offers one thing for some seconds, for instance to take a deletion back: a text, a button,
/// a close button, and a thin line that shrinks with the time that is left. Hidden while nothing is offered.
///
/// The time stands still while the mouse is over the strip or the focus in it, for kLongestPauseSeconds altogether, so
/// that what is offered need not be kept for ever. Tab reaches both buttons, Return and Space press them, Escape
/// closes. Assistive technology hears each offer as an alert. The focus returns to where it was when the strip goes.
/// Thread: GUI.
class TARN_HOST_EXPORT COfferStrip : public QFrame {
  Q_OBJECT
 public:
  /// What an offer can last longer than its seconds.
  static constexpr int kLongestPauseSeconds = 30;

  explicit COfferStrip(QWidget* parent = nullptr);
  ~COfferStrip() override;

  /// Offers `text` with a button `action_text` for `seconds`; an earlier offer is over first. `callback` is called
  /// once, after SignalTaken() and with the strip hidden, when the user takes the offer; it may offer again.
  void Offer(const QString& text, const QString& action_text, int seconds, std::function<void()> callback);

  /// Ends an offer that stands, untaken.
  void Withdraw();

  /// As if the user pressed the button; nothing when nothing is offered.
  void Take();

  /// Whether an offer stands.
  bool IsOffering() const;
  /// How many offers were made up to now: the same text may be offered again.
  int OfferCount() const;
  /// The text offered, empty when nothing is.
  QString Text() const;

 Q_SIGNALS:
  /// The user took the offer.
  void SignalTaken();
  /// The offer ended untaken: its time is over, or it was closed, withdrawn or replaced.
  void SignalOver();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void End();

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace MarUIControl
