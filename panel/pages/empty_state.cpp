#include "empty_state.h"

#include <QEvent>
#include <QLabel>
#include <QRegion>
#include <QVBoxLayout>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/push_button.h"
#include "current_skin.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

constexpr char kDarkPicture[] = ":/Images/TarnUIDataController/ResourceTree/default_no_data_d.svg";
constexpr char kLightPicture[] = ":/Images/TarnUIDataController/ResourceTree/default_no_data.svg";

}  // namespace

CEmptyState::CEmptyState(QWidget* viewport)
    : QWidget(viewport),
      picture_(new QLabel(this)),
      text_(new QLabel(this)),
      action_(new MarUIControl::CPushButton(this)) {
  setObjectName(QStringLiteral("empty_state"));
  text_->setObjectName(QStringLiteral("empty_state_text"));
  text_->setAlignment(Qt::AlignCenter);
  text_->setWordWrap(true);
  text_->setTextFormat(Qt::PlainText);
  picture_->setAlignment(Qt::AlignCenter);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 8, 24, 8);
  layout->setSpacing(12);
  layout->addStretch();
  layout->addWidget(picture_);
  layout->addWidget(text_);
  layout->addWidget(action_, 0, Qt::AlignHCenter);
  layout->addStretch();
  connect(action_, &QPushButton::clicked, this, &CEmptyState::SignalAction);
  viewport->installEventFilter(this);
  hide();
}

void CEmptyState::ShowState(const QString& text, const QString& action) {
  RenewPicture();
  text_->setText(text);
  action_->setText(action);
  action_->setVisible(!action.isEmpty());
  // Without a button the rows below stay within reach of the mouse.
  setAttribute(Qt::WA_TransparentForMouseEvents, action.isEmpty());
  const bool news = !isVisible() || accessibleName() != text;
  setAccessibleName(text);
  Place();
  show();
  if (news) {
    MarUIControl::AnnounceAlert(this);
  }
}

QString CEmptyState::Text() const {
  return text_->text();
}

void CEmptyState::SetTopDistance(int distance) {
  top_distance_ = distance;
  Place();
}

bool CEmptyState::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize) {
    Place();
  }
  return QWidget::eventFilter(watched, event);
}

void CEmptyState::Place() {
  setGeometry(parentWidget()->rect().adjusted(0, top_distance_, 0, 0));
}

void CEmptyState::RenewPicture() {
  const bool dark = IsCurrentSkinDark();
  picture_->setPixmap(CViewPublicDef::GetHighDpiSvgPixmap(QString::fromLatin1(dark ? kDarkPicture : kLightPicture)));
}

}  // namespace TarnPlanView
