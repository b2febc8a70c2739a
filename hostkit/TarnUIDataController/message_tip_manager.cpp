#include "TarnUIDataController/message_tip_manager.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <algorithm>

#include "MarUIControl/accessible_role.h"
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
constexpr int kUnreadMs = 1000;        // who closes a window sooner has not read what came up on it
constexpr int kTipDistance = 48;

int LogLevelOf(int kind) {
  if (kind == kSuccessTip || kind == kHintTip) {
    return marlog::Info;
  }
  return marlog::Warning;
}

TipKind KindOf(int alert_state) {
  using MarUIControl::CNomalMessage;
  switch (alert_state) {
    case CNomalMessage::Success:
      return kSuccessTip;
    case CNomalMessage::Warning:
      return kWarningTip;
    case CNomalMessage::Hint:
      return kHintTip;
    default:
      return kFailureTip;
  }
}

bool IsOnScreen(const QWidget* window) {
  return window && window->isVisible() && !window->isMinimized();
}

// Menus and tool tips are windows, too.
bool CanHoldTips(const QWidget* window) {
  const Qt::WindowType type = window->windowType();
  return IsOnScreen(window) && (type == Qt::Window || type == Qt::Dialog);
}

// `window`, or where a tip for it is seen while it is not on screen; null when nothing is.
QWidget* SeenWindow(QWidget* window) {
  if (IsOnScreen(window)) {
    return window;
  }
  QWidget* active = QApplication::activeWindow();
  if (IsOnScreen(active)) {
    return active;
  }
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto seen = std::find_if(windows.begin(), windows.end(), CanHoldTips);
  if (seen == windows.end()) {
    return nullptr;
  }
  return *seen;
}

}  // namespace

class CMessageTipManager::Private : public QObject {
 public:
  explicit Private(CMessageTipManager* manager) : q(manager) {
    end_of_tip.setSingleShot(true);
    QObject::connect(&end_of_tip, &QTimer::timeout, q, [this] { EndTip(); });
  }

  void Add(const Tip& next);
  void ShowNext();
  void Show(const Tip& next, QWidget* window);
  void Follow(MessageTip* made);
  void ScheduleEnd();
  void EndTip();
  void OnWindowGone();
  /// While tips wait for a window on screen.
  bool eventFilter(QObject* watched, QEvent* event) override;

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

// A window that has gone meanwhile takes no tip along: what was refused there is read over another.
void CMessageTipManager::Private::ShowNext() {
  if (end_of_tip.isActive() || waiting.IsEmpty()) {
    return;
  }
  const Tip next = waiting.Next();
  if (QWidget* window = SeenWindow(next.window)) {
    Show(next, window);
    return;
  }
  waiting.PutBack(next);
  qApp->installEventFilter(this);
}

bool CMessageTipManager::Private::eventFilter(QObject* watched, QEvent* event) {
  const bool comes = event->type() == QEvent::Show || event->type() == QEvent::WindowStateChange;
  if (comes && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow()) {
    qApp->removeEventFilter(this);
    QMetaObject::invokeMethod(
        this, [this] { ShowNext(); }, Qt::QueuedConnection);  // when it is there
  }
  return false;
}

void CMessageTipManager::Private::Show(const Tip& next, QWidget* window) {
  shown = next;
  shown.window = window;
  tip = new MessageTip(next.text, next.kind, next.distance, shown.window);
  tip->SetCount(next.count);
  Follow(tip);
  tip->show();
  looked_at_until = 0;
  on_screen.start();
  ScheduleEnd();
  MarUIControl::AnnounceAlert(tip);
  Q_EMIT q->SignalTipShown(next.text, next.kind);
}

// Later: the tip is still in the middle of its click, and a window goes in parts.
void CMessageTipManager::Private::Follow(MessageTip* made) {
  const auto later = Qt::QueuedConnection;
  const QPointer<MessageTip> watched(made);
  const auto on_click = [this, watched] {
    if (watched) {
      EndTip();
      Q_EMIT q->SignalTipClicked();
    }
  };
  const auto on_hide = [this, watched] {
    if (watched) {
      OnWindowGone();
    }
  };
  // Its window was deleted, and the tip with it: a tip that ends otherwise has no time left.
  const auto on_end = [this] {
    if (!tip && end_of_tip.isActive()) {
      OnWindowGone();
    }
  };
  QObject::connect(made, &MessageTip::SignalClicked, q, on_click, later);
  QObject::connect(made, &MessageTip::SignalWindowHidden, q, on_hide, later);
  QObject::connect(made, &QObject::destroyed, q, on_end, later);
  QObject::connect(made, &MessageTip::SignalLookedAt, q, [this] {
    looked_at_until = qMin(kLongestLookMs, static_cast<int>(on_screen.elapsed()) + kLookMs);
    ScheduleEnd();
  });
}

void CMessageTipManager::Private::OnWindowGone() {
  if (on_screen.elapsed() < kUnreadMs) {
    waiting.PutBack(shown);
  }
  EndTip();
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
  ShowMessage(widget, text, KindOf(state), kTipPlaceTop, kTipDistance);
}

void CMessageTipManager::ShowMessage(QWidget* window, const QString& text, int kind, int /*place*/, int distance) {
  marlog::Write("LyraClientInfo", LogLevelOf(kind), "Tip: %s", qUtf8Printable(text));
  Q_EMIT SignalTipAsked(text, kind);
  Tip next;
  next.text = text;
  next.kind = kind;
  next.distance = qMax(0, distance);
  next.window = MarUIControl::GetIndependentWindow(window);
  if (QWidget* seen = SeenWindow(next.window)) {
    next.window = seen;
  }
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
