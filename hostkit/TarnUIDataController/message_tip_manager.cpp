#include "TarnUIDataController/message_tip_manager.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include "MarUIControl/control_accessibility.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip.h"
#include "TarnUIDataController/tip_kind.h"
#include "TarnUIDataController/tip_queue.h"
#include "marlog/marlog.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kLookMs = 3000;          // a tip stays that long once somebody has looked at it,
constexpr int kLongestLookMs = 30000;  // but others are not kept waiting for ever
constexpr int kTipDistance = 48;
constexpr int kPlaceTop = 1;

int LogLevelOf(int kind) {
  if (kind == kSuccessTip) {
    return marlog::Info;
  }
  return marlog::Warning;
}

QWidget* WindowFor(QWidget* widget) {
  if (widget) {
    return MarUIControl::GetIndependentWindow(widget);
  }
  if (QWidget* active = QApplication::activeWindow()) {
    return active;
  }
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    if (window->isVisible()) {
      return window;
    }
  }
  return nullptr;
}

}  // namespace

class CMessageTipManager::Private {
 public:
  explicit Private(CMessageTipManager* manager) : q(manager) {
    end_of_tip.setSingleShot(true);
    QObject::connect(&end_of_tip, &QTimer::timeout, q, [this] { EndTip(); });
  }

  void Add(const Tip& next);
  void ShowNext();
  void Show(const Tip& next);
  void ScheduleEnd();
  void EndTip();

  CMessageTipManager* const q;
  TipQueue waiting;
  Tip shown;
  QPointer<MessageTip> tip;  // of `shown`
  QElapsedTimer on_screen;
  int looked_at_until = 0;  // in its time on screen
  QTimer end_of_tip;
};

void CMessageTipManager::Private::Add(const Tip& next) {
  if (tip && shown.SaysTheSame(next)) {
    tip->SetCount(++shown.count);
    return;
  }
  waiting.Add(next);
  if (end_of_tip.isActive()) {
    ScheduleEnd();
  } else {
    ShowNext();
  }
}

void CMessageTipManager::Private::ShowNext() {
  while (!end_of_tip.isActive() && !waiting.IsEmpty()) {
    const Tip next = waiting.Next();
    if (next.window) {  // else it has gone, and with it the reader
      Show(next);
    }
  }
}

void CMessageTipManager::Private::Show(const Tip& next) {
  shown = next;
  tip = new MessageTip(next.text, next.kind, next.distance, next.window);
  tip->SetCount(next.count);
  // Later: the tip is still in the middle of its click.
  QObject::connect(
      tip.data(), &MessageTip::SignalClicked, q,
      [this, clicked = tip] {
        if (clicked) {
          EndTip();
          Q_EMIT q->SignalTipClicked();
        }
      },
      Qt::QueuedConnection);
  QObject::connect(tip.data(), &MessageTip::SignalLookedAt, q, [this] {
    looked_at_until = qMin(kLongestLookMs, static_cast<int>(on_screen.elapsed()) + kLookMs);
    ScheduleEnd();
  });
  // Its window has gone, and with it the tip; later, since a window goes in parts.
  QObject::connect(
      tip.data(), &QObject::destroyed, q,
      [this] {
        if (!tip) {
          EndTip();
        }
      },
      Qt::QueuedConnection);
  tip->show();
  looked_at_until = 0;
  on_screen.start();
  ScheduleEnd();
  MarUIControl::AnnounceAlert(tip);
  Q_EMIT q->SignalTipShown(next.text, next.kind);
}

void CMessageTipManager::Private::ScheduleEnd() {
  const int stay = qMax(looked_at_until, TipQueue::StayMs(shown.kind, !waiting.IsEmpty()));
  end_of_tip.start(qMax(0, stay - static_cast<int>(on_screen.elapsed())));
}

void CMessageTipManager::Private::EndTip() {
  end_of_tip.stop();
  delete tip;
  ShowNext();
}

CMessageTipManager::CMessageTipManager() : d_(new Private(this)) {}

CMessageTipManager::~CMessageTipManager() {
  delete d_->tip;
}

void CMessageTipManager::ShowTip(const QString& text, int state, QWidget* widget) {
  const TipKind kind = state == MarUIControl::CNomalMessage::Success ? kSuccessTip : kFailureTip;
  ShowMessage(widget, text, kind, kPlaceTop, kTipDistance);
}

void CMessageTipManager::ShowMessage(QWidget* window, const QString& text, int kind, int /*place*/, int distance) {
  QWidget* over = WindowFor(window);
  marlog::Write("LyraClientInfo", LogLevelOf(kind), "Tip: %s", qUtf8Printable(text));
  Q_EMIT SignalTipAsked(text, kind);
  if (!over) {
    return;
  }
  Tip next;
  next.text = text;
  next.kind = kind;
  next.distance = qMax(0, distance);
  next.window = over;
  d_->Add(next);
}

void CMessageTipManager::TakeAway() {
  d_->waiting.Clear();
  d_->EndTip();
}

QString CMessageTipManager::CurrentText() const {
  if (!d_->tip) {
    return {};
  }
  return d_->tip->Text();
}

}  // namespace tarn_ui_data_controller
