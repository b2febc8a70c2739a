#include "TarnUIDataController/message_tip_manager.h"

#include <QApplication>
#include <QPointer>
#include <QQueue>
#include <QTimer>

#include "MarUIControl/control_accessibility.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip.h"
#include "TarnUIDataController/tip_kind.h"
#include "marlog/marlog.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kMostWaiting = 32;
constexpr int kTipDistance = 48;
constexpr int kPlaceTop = 1;

struct TipTraits {
  int shown_ms;
  int log_level;
};

TipTraits TraitsOf(int kind) {
  if (kind == kSuccessTip) {
    return {2000, marlog::Info};
  }
  return {5000, marlog::Warning};
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
  struct Waiting {
    QString text;
    int kind = kSuccessTip;
    int distance = kTipDistance;
    QPointer<QWidget> window;
  };

  explicit Private(CMessageTipManager* manager) : q(manager) {
    end_of_tip.setSingleShot(true);
    QObject::connect(&end_of_tip, &QTimer::timeout, q, [this] { EndTip(); });
  }

  void ShowNext();
  void EndTip();

  CMessageTipManager* const q;
  QQueue<Waiting> waiting;
  QPointer<MessageTip> tip;
  QTimer end_of_tip;
};

void CMessageTipManager::Private::ShowNext() {
  while (!end_of_tip.isActive() && !waiting.isEmpty()) {
    const Waiting next = waiting.dequeue();
    if (!next.window) {
      continue;  // its window has gone, and with it the reader
    }
    tip = new MessageTip(next.text, next.kind, next.distance, next.window);
    tip->show();
    end_of_tip.start(TraitsOf(next.kind).shown_ms);
    MarUIControl::AnnounceAlert(tip);
    Q_EMIT q->SignalTipShown(next.text, next.kind);
  }
}

void CMessageTipManager::Private::EndTip() {
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
  marlog::Write("LyraClientInfo", TraitsOf(kind).log_level, "Tip: %s", qUtf8Printable(text));
  if (!over) {
    return;
  }
  if (d_->waiting.size() >= kMostWaiting) {
    d_->waiting.dequeue();
  }
  d_->waiting.enqueue({text, kind, qMax(0, distance), over});
  d_->ShowNext();
}

QString CMessageTipManager::CurrentText() const {
  if (!d_->tip) {
    return {};
  }
  return d_->tip->Text();
}

}  // namespace tarn_ui_data_controller
