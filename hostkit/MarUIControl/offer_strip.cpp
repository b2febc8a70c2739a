#include "MarUIControl/offer_strip.h"

#include <QApplication>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/label.h"
#include "MarUIControl/offer_time.h"
#include "MarUIControl/push_button.h"
#include "TarnUIDataController/skin_loader.h"

namespace MarUIControl {

namespace {

constexpr int kTickMs = 100;
constexpr int kLineHeight = 2;

}  // namespace

class COfferStrip::Private {
 public:
  CLabel* text = nullptr;
  CPushButton* action = nullptr;
  CPushButton* close = nullptr;
  OfferTime time;
  QBasicTimer tick;
  QElapsedTimer since_tick;
  std::function<void()> callback;
  int offer_count = 0;
  QPointer<QWidget> focus_before;
};

COfferStrip::COfferStrip(QWidget* parent) : QFrame(parent), d_(new Private) {
  SetAccessibleRole(this, QAccessible::AlertMessage);
  d_->text = new CLabel(this);
  d_->text->setObjectName(QStringLiteral("offer_text"));
  d_->action = new CPushButton(this);
  d_->action->setObjectName(QStringLiteral("offer_action"));
  d_->close = new CPushButton(QStringLiteral("\u2715"), this);
  d_->close->setObjectName(QStringLiteral("offer_close"));
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(10, 5, 5, 5 + kLineHeight);
  layout->setSpacing(6);
  layout->addWidget(d_->text, 1);
  layout->addWidget(d_->action);
  layout->addWidget(d_->close);
  connect(d_->action, &QAbstractButton::clicked, this, &COfferStrip::Take);
  connect(d_->close, &QAbstractButton::clicked, this, &COfferStrip::Withdraw);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
    // A window that is active again has the focus from elsewhere: that is not where it was before the strip.
    const bool within = before && before->window() == window();
    if (within && now && isAncestorOf(now) && !isAncestorOf(before)) {
      d_->focus_before = before;
    }
  });
  hide();
}

COfferStrip::~COfferStrip() = default;

void COfferStrip::Offer(const QString& text, const QString& action_text, int seconds, std::function<void()> callback) {
  Withdraw();
  d_->text->SetText(text);
  d_->action->setText(action_text);
  d_->action->setAccessibleDescription(text);
  setAccessibleName(text);
  d_->close->setAccessibleName(tr("Close"));
  d_->close->setToolTip(tr("Close"));
  d_->callback = std::move(callback);
  ++d_->offer_count;
  d_->time = OfferTime(seconds * 1000, kLongestPauseSeconds * 1000);
  d_->since_tick.start();
  d_->tick.start(kTickMs, this);
  show();
  AnnounceAlert(this);
}

void COfferStrip::Withdraw() {
  if (IsOffering()) {
    End();
    Q_EMIT SignalOver();
  }
}

void COfferStrip::Take() {
  if (!IsOffering()) {
    return;
  }
  const std::function<void()> callback = std::move(d_->callback);
  End();
  Q_EMIT SignalTaken();
  if (callback) {
    callback();
  }
}

bool COfferStrip::IsOffering() const {
  return d_->tick.isActive();
}

int COfferStrip::OfferCount() const {
  return d_->offer_count;
}

QString COfferStrip::Text() const {
  return IsOffering() ? d_->text->text() : QString();
}

void COfferStrip::End() {
  d_->tick.stop();
  d_->callback = nullptr;
  const QWidget* focus = QApplication::focusWidget();
  if (focus && isAncestorOf(focus) && d_->focus_before) {
    d_->focus_before->setFocus(Qt::OtherFocusReason);
  }
  hide();
}

void COfferStrip::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && IsOffering()) {
    Withdraw();
    return;
  }
  QFrame::keyPressEvent(event);
}

void COfferStrip::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  const QRect room = rect().adjusted(4, 0, -4, -1);
  QRect line(room.left(), room.bottom() - kLineHeight + 1, qRound(room.width() * d_->time.PartLeft()), kLineHeight);
  if (isRightToLeft()) {
    line.moveRight(room.right());
  }
  QPainter(this).fillRect(line,
                          tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QStringLiteral("text_muted")));
}

void COfferStrip::timerEvent(QTimerEvent* event) {
  if (event->timerId() != d_->tick.timerId()) {
    QFrame::timerEvent(event);
    return;
  }
  const QWidget* focus = QApplication::focusWidget();
  d_->time.Pass(d_->since_tick.restart(), underMouse() || (focus && isAncestorOf(focus)));
  update();
  if (d_->time.IsOver()) {
    Withdraw();
  }
}

}  // namespace MarUIControl
