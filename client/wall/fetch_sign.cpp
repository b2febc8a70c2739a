#include "wall/fetch_sign.h"

#include "MarUIControl/accessible_role.h"

namespace TarnClient {

namespace {

constexpr int kDelayMs = 1000, kDistance = 16;

}  // namespace

CFetchSign::CFetchSign(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("wall_fetch_sign"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignCenter);
  delay_.setSingleShot(true);
  delay_.setInterval(kDelayMs);
  connect(&delay_, &QTimer::timeout, this, &CFetchSign::Appear);
  hide();
}

void CFetchSign::Await(const QString& text) {
  if (text == text_) {
    return;
  }
  text_ = text;
  hide();
  if (text_.isEmpty()) {
    delay_.stop();
  } else {
    delay_.start();
  }
}

void CFetchSign::Appear() {
  setAccessibleName(text_);
  Place(area_);
  raise();
  show();
  MarUIControl::AnnounceAlert(this);  // nothing has the focus here that a reader would follow
}

void CFetchSign::Place(const QRect& area) {
  area_ = area;
  ensurePolished();
  const int room = qMax(0, area.width() - 2 * kDistance);
  setText(text_);
  const int frame = sizeHint().width() - fontMetrics().horizontalAdvance(text_);
  setText(fontMetrics().elidedText(text_, Qt::ElideMiddle, room - frame));
  resize(qMin(room, sizeHint().width()), sizeHint().height());
  move(area.center().x() - width() / 2, area.top() + kDistance);
}

}  // namespace TarnClient
