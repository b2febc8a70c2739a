#include "ResourceTreeKit/camera_tree_notice.h"

#include <QLabel>
#include <QShowEvent>
#include <QVBoxLayout>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/push_button.h"

namespace ResourceTreeKit {

CCameraTreeNotice::CCameraTreeNotice(QWidget* place)
    : QWidget(place), text_(new QLabel(this)), retry_(new MarUIControl::CPushButton(this)) {
  text_->setObjectName(QStringLiteral("empty_state_text"));
  text_->setTextFormat(Qt::PlainText);
  text_->setAlignment(Qt::AlignCenter);
  text_->setWordWrap(true);
  retry_->setText(tr("Try again"));
  retry_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(retry_, &QAbstractButton::clicked, this, [this] {
    said_.clear();
    Q_EMIT Retry();
  });
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 24, 24, 24);
  layout->setSpacing(12);
  layout->addStretch(2);
  layout->addWidget(text_);
  layout->addWidget(retry_, 0, Qt::AlignHCenter);
  layout->addStretch(3);
  place->installEventFilter(this);
  hide();
}

void CCameraTreeNotice::ShowText(const QString& text, bool with_retry) {
  text_->setText(text);
  setAccessibleName(text);
  retry_->setVisible(with_retry);
  setGeometry(parentWidget()->rect());
  setVisible(!text.isEmpty());
  raise();
  SayOnce();
}

void CCameraTreeNotice::SayOnce() {
  if (isVisible() && said_ != text_->text()) {
    said_ = text_->text();
    MarUIControl::AnnounceAlert(this);
  }
}

// Spontaneous is a window that was made small and large again, which is no news.
void CCameraTreeNotice::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) {
    SayOnce();
  }
}

void CCameraTreeNotice::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!event->spontaneous()) {
    said_.clear();
  }
}

QString CCameraTreeNotice::Text() const {
  return text_->text();
}

bool CCameraTreeNotice::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) {
    setGeometry(parentWidget()->rect());
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace ResourceTreeKit
