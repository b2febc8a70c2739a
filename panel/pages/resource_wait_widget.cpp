#include "resource_wait_widget.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/push_button.h"
#include "TarnUIDataController/skin_loader.h"

namespace TarnPlanView {

namespace {

constexpr int kFrameMs = 80;
constexpr int kFramesPerTurn = 12;
constexpr int kMarkSize = 36;
constexpr int kSaidAfterSeconds = 1;  // most loads are over by then
constexpr int kElapsedAfterSeconds = 5;
constexpr int kRetryAfterSeconds = 15;

}  // namespace

CResourceWaitWidget::CResourceWaitWidget(QWidget* parent)
    : QWidget(parent),
      text_(new QLabel(tr("Loading the plans..."), this)),
      trouble_(new QLabel(this)),
      elapsed_(new QLabel(this)),
      mark_place_(new QWidget(this)),
      retry_(new MarUIControl::CPushButton(tr("Try again"), this)) {
  for (QLabel* label : {text_, trouble_, elapsed_}) {
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
  }
  text_->setObjectName(QStringLiteral("wait_text"));
  trouble_->setObjectName(QStringLiteral("wait_trouble"));
  trouble_->setTextFormat(Qt::PlainText);
  trouble_->hide();
  elapsed_->setObjectName(QStringLiteral("wait_elapsed"));
  retry_->setObjectName(QStringLiteral("wait_retry"));
  mark_place_->setFixedSize(kMarkSize, kMarkSize);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 16, 24, 16);
  layout->setSpacing(12);
  layout->addStretch();
  layout->addWidget(mark_place_, 0, Qt::AlignHCenter);
  layout->addWidget(text_);
  layout->addWidget(trouble_);
  layout->addWidget(elapsed_);
  layout->addWidget(retry_, 0, Qt::AlignHCenter);
  layout->addStretch();
  ticker_.setInterval(kFrameMs);
  connect(&ticker_, &QTimer::timeout, this, &CResourceWaitWidget::Tick);
  connect(retry_, &QPushButton::clicked, this, &CResourceWaitWidget::SignalRetry);
  ShowElapsed(0);
}

void CResourceWaitWidget::SetWaiting(bool waiting) {
  if (!waiting) {
    ticker_.stop();
    return;
  }
  since_start_.start();
  is_said_ = false;
  ShowElapsed(0);
  ticker_.start();
}

void CResourceWaitWidget::ShowTrouble(const QString& text) {
  const bool news = !text.isEmpty() && text != trouble_->text();
  trouble_->setText(text);
  trouble_->setVisible(!text.isEmpty());
  setAccessibleDescription(text);
  if (news && isVisible()) {
    MarUIControl::AnnounceAlert(trouble_);
  }
}

void CResourceWaitWidget::ShowElapsed(int seconds) {
  elapsed_->setText(seconds >= kElapsedAfterSeconds ? tr("%1 s").arg(seconds) : QString());
  retry_->setVisible(seconds >= kRetryAfterSeconds);
}

void CResourceWaitWidget::Tick() {
  frame_ = (frame_ + 1) % kFramesPerTurn;
  update(MarkRect());
  const int seconds = static_cast<int>(since_start_.elapsed() / 1000);
  ShowElapsed(seconds);
  if (seconds >= kSaidAfterSeconds && !is_said_ && isVisible()) {
    is_said_ = true;
    MarUIControl::AnnounceAlert(text_);
  }
}

QRect CResourceWaitWidget::MarkRect() const {
  return mark_place_->geometry();
}

void CResourceWaitWidget::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto& skin = tarn_ui_data_controller::CSkinLoader::Instance();
  const QRectF circle = QRectF(MarkRect()).adjusted(3, 3, -3, -3);
  painter.setPen(QPen(skin.GetColor(QStringLiteral("border")), 3));
  painter.drawEllipse(circle);
  if (IsWaiting()) {
    painter.setPen(QPen(skin.GetColor(QStringLiteral("focus")), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -frame_ * 360 * 16 / kFramesPerTurn, 100 * 16);
  }
}

}  // namespace TarnPlanView
