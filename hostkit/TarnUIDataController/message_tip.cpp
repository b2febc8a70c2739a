#include "TarnUIDataController/message_tip.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QVariant>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/breakable_text.h"
#include "TarnUIDataController/tip_kind.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kSideDistance = 12;
constexpr int kWidestText = 520;

// The kinds differ by the mark and the edge, too, not by the colour alone.
QString MarkFor(int kind) {
  switch (kind) {
    case kSuccessTip:
      return QStringLiteral("\u2713");
    case kWarningTip:
      return QStringLiteral("!");
    case kHintTip:
      return QStringLiteral("i");
    default:
      return QStringLiteral("\u2715");
  }
}

}  // namespace

MessageTip::MessageTip(const QString& text, int kind, int distance, QWidget* window)
    : QFrame(window), whole_text_(text), distance_(distance) {
  setObjectName(QStringLiteral("message_tip"));
  setProperty("kind", kind);
  setMouseTracking(true);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::NoFocus);
  MarUIControl::SetAccessibleRole(this, QAccessible::AlertMessage);  // so that it is read out when it is shown
  setAccessibleName(text);
  auto* mark = new QLabel(MarkFor(kind), this);
  mark->setObjectName(QStringLiteral("message_tip_mark"));
  mark->setAlignment(Qt::AlignCenter);
  mark->setFixedSize(22, 22);
  text_ = new QLabel(MarUIControl::BreakableText(text), this);
  text_->setObjectName(QStringLiteral("message_tip_text"));
  text_->setTextFormat(Qt::PlainText);  // names of plans are no markup
  text_->setAccessibleName(text);       // without the places to break at
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(14, 10, 18, 10);
  layout->setSpacing(10);
  layout->addWidget(mark, 0, Qt::AlignTop);
  layout->addWidget(text_, 1);
  count_ = new QLabel(this);
  count_->setObjectName(QStringLiteral("message_tip_count"));
  layout->addWidget(count_, 0, Qt::AlignVCenter);
  count_->hide();
  for (QLabel* label : {mark, text_, count_}) {
    label->setMouseTracking(true);  // or moves over them never come here
  }
  window->installEventFilter(this);
  Place();
}

void MessageTip::SetCount(int count) {
  count_->setText(QStringLiteral("\u00d7%1").arg(count));
  count_->setVisible(count > 1);
  MarUIControl::SetQuietDescription(this, count_->text());  // read out for each of a flood it would drown all else
  Place();
}

void MessageTip::mousePressEvent(QMouseEvent* event) {
  event->accept();  // not for what lies below
}

void MessageTip::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->pos())) {
    Q_EMIT SignalClicked();
  }
}

void MessageTip::mouseMoveEvent(QMouseEvent*) {
  Q_EMIT SignalLookedAt();
}

bool MessageTip::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize) {
    Place();
  } else if (watched == parent() && event->type() == QEvent::Hide && parentWidget()->isHidden()) {
    Q_EMIT SignalWindowHidden();
  }
  return QFrame::eventFilter(watched, event);
}

void MessageTip::Place() {
  ensurePolished();
  const int room = qMax(120, parentWidget()->width() - 2 * kSideDistance - 64);
  const int widest = qMin(kWidestText, room);
  text_->ensurePolished();
  text_->setWordWrap(false);
  const bool wrap = text_->sizeHint().width() > widest;
  text_->setWordWrap(wrap);
  text_->setMinimumHeight(0);
  if (wrap) {
    text_->setFixedWidth(widest);
    text_->setMinimumHeight(text_->heightForWidth(widest));
  } else {
    text_->setFixedWidth(text_->sizeHint().width());
  }
  layout()->activate();
  adjustSize();
  move((parentWidget()->width() - width()) / 2, distance_);
  raise();
}

}  // namespace tarn_ui_data_controller
