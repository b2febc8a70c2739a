#include "TarnUIDataController/message_tip_manager.h"

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QQueue>
#include <QTimer>
#include <algorithm>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip.h"
#include "TarnUIDataController/tip_kind.h"
#include "marlog/marlog.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kSuccessMs = 2000;
constexpr int kFailureMs = 5000;
constexpr int kMostWaiting = 32;
constexpr int kTipDistance = 48;
constexpr int kPlaceTop = 1;

QWidget* WindowFor(QWidget* widget) {
  QWidget* window = MarUIControl::GetIndependentWindow(widget ? widget : QApplication::activeWindow());
  if (window) {
    return window;
  }
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto visible = std::find_if(windows.begin(), windows.end(), [](QWidget* one) { return one->isVisible(); });
  return visible == windows.end() ? nullptr : *visible;
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
    end_of_tip.start(next.kind == kSuccessTip ? kSuccessMs : kFailureMs);
    QAccessibleEvent alert(tip, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
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
  ShowMessage(widget, text, state == 0 ? kSuccessTip : kFailureTip, kPlaceTop, kTipDistance);
}

void CMessageTipManager::ShowMessage(QWidget* window, const QString& text, int kind, int /*place*/, int distance) {
  QWidget* over = WindowFor(window);
  marlog::Write("LyraClientInfo", kind == kSuccessTip ? marlog::Info : marlog::Warning, "Tip: %s",
                qUtf8Printable(text));
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
  return d_->tip ? d_->tip->Text() : QString();
}

}  // namespace tarn_ui_data_controller
