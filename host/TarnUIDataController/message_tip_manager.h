#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "Wren/Base/singleton.h"
#include "host_export.h"

class QWidget;

namespace tarn_ui_data_controller {

/// Message tips: short texts over a window, one after the other. They are child overlays, never windows, so they take
/// no activation. A success (state 0) stays 4 s, a failure (state 1) 10 s; less while others wait, longer while the
/// mouse moves over it, and a click takes it away. The same text again is counted. Few wait: of too many, successes are
/// left out first. Each tip is read out to assistive technology. Thread: GUI.
class TARN_HOST_EXPORT CMessageTipManager : public QObject, public Wren::Base::CSingleton<CMessageTipManager> {
  Q_OBJECT
 public:
  ~CMessageTipManager() override;

  /// Queues a tip over the window of `widget`; a null widget takes the active window. `state` is an AlertState of
  /// CNomalMessage; an unknown one counts as a failure. While no window is on screen, it waits; one whose window goes
  /// before it was read comes up over another.
  void ShowTip(const QString& text, int state, QWidget* widget);
  /// The same with its place given. `kind`: 0 success, 1 failure, 2 warning, 3 hint; all but success stay longer.
  /// `place`: 1 at the top of the window, in the middle; others count as 1. `distance`: pixels from that edge at the
  /// least; below 0 counts as 0.
  void ShowMessage(QWidget* window, const QString& text, int kind, int place, int distance);
  /// The tip on screen; an empty text when there is none.
  QString CurrentText() const;
  /// All have been read: the tip on screen goes, and those that wait with it.
  void TakeAway();

 Q_SIGNALS:
  /// A tip has come on screen. `state`: as kind for ShowMessage().
  void SignalTipShown(const QString& text, int state);
  /// A tip was asked for, whether or not it comes on screen. `kind` as for ShowMessage().
  void SignalTipAsked(const QString& text, int kind);
  /// The user has clicked the tip on screen, which is gone by now.
  void SignalTipClicked();

 private:
  friend class Wren::Base::CSingleton<CMessageTipManager>;
  CMessageTipManager();

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace tarn_ui_data_controller
