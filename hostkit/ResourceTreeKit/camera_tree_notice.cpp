#include "ResourceTreeKit/camera_tree_notice.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

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
  connect(retry_, &QAbstractButton::clicked, this, &CCameraTreeNotice::Retry);
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
  retry_->setVisible(with_retry);
  setGeometry(parentWidget()->rect());
  setVisible(!text.isEmpty());
  raise();
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
