#include "TarnUIDataController/message_tip_manager.h"

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QQueue>
#include <QTimer>
#include <algorithm>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip.h"
#include "marlog/marlog.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kSuccessMs = 2000;
constexpr int kFailureMs = 5000;
constexpr int kMostWaiting = 32;

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
    int state = 0;
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
    tip = new MessageTip(next.text, next.state, next.window);
    tip->show();
    end_of_tip.start(next.state == 0 ? kSuccessMs : kFailureMs);
    QAccessibleEvent alert(tip, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    Q_EMIT q->SignalTipShown(next.text, next.state);
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
  QWidget* window = WindowFor(widget);
  marlog::Write("LyraClientInfo", state == 0 ? marlog::Info : marlog::Warning, "Tip: %s", qUtf8Printable(text));
  if (!window) {
    return;
  }
  if (d_->waiting.size() >= kMostWaiting) {
    d_->waiting.dequeue();
  }
  d_->waiting.enqueue({text, state, window});
  d_->ShowNext();
}

QString CMessageTipManager::CurrentText() const {
  return d_->tip ? d_->tip->Text() : QString();
}

}  // namespace tarn_ui_data_controller
