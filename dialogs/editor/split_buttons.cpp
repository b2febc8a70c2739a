#include "split_buttons.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>
#include <algorithm>

#include "MarUIControl/accessible_role.h"
#include "TarnUIDataController/skin_loader.h"
#include "plan_document.h"
#include "split_layout.h"

namespace TarnPlanView {

using tarn_ui_data_controller::CSkinLoader;

namespace {

constexpr int kSplits[] = {1, 2, 4, 8};
constexpr int kPlaces = 4;
const QSize kIcon(26, 18);

QPixmap Picture(int split, const QColor& color, qreal ratio) {
  QPixmap picture(kIcon * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  PaintSplit(&painter, QRect(QPoint(), kIcon), split, color, nullptr);
  return picture;
}

}  // namespace

CSplitButtons::CSplitButtons(CPlanDocument* document, QWidget* parent) : QWidget(parent), document_(document) {
  MarUIControl::SetAccessibleRole(this, QAccessible::Grouping);
  setAccessibleName(tr("Split of the page"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(4);
  for (int place = 0; place < kPlaces; ++place) {
    buttons_.append(MakeButton(place));
    row->addWidget(buttons_.last());
  }
  connect(document_, &CPlanDocument::SignalChanged, this, &CSplitButtons::RenewChecked);
  connect(&CSkinLoader::Instance(), &CSkinLoader::SignalSkinChanged, this, &CSplitButtons::RenewIcons);
  RenewIcons();
  RenewChecked();
}

QToolButton* CSplitButtons::MakeButton(int place) {
  auto* button = new QToolButton(this);
  const int windows = WindowsOfSplit(kSplits[place]);
  MarUIControl::SetAccessibleRole(button, QAccessible::RadioButton);
  button->setObjectName(QStringLiteral("split_%1_btn").arg(windows));
  button->setCheckable(true);
  button->setIconSize(kIcon);
  const QString name = tr("%n window(s)", nullptr, windows);
  button->setAccessibleName(name);
  button->setToolTip(QStringLiteral("%1 (Ctrl+%2)").arg(name).arg(place + 1));
  connect(button, &QToolButton::clicked, this, [this, place] { Choose(place); });
  return button;
}

void CSplitButtons::Choose(int place) {
  if (isEnabled() && place >= 0 && place < kPlaces) {
    document_->SetSplit(document_->CurrentPage(), kSplits[place]);
  }
  RenewChecked();
}

void CSplitButtons::RenewIcons() {
  auto& skin = CSkinLoader::Instance();
  for (int place = 0; place < kPlaces; ++place) {
    QIcon icon(Picture(kSplits[place], skin.GetColor(QStringLiteral("text")), devicePixelRatioF()));
    icon.addPixmap(Picture(kSplits[place], skin.GetColor(QStringLiteral("text_disabled")), devicePixelRatioF()),
                   QIcon::Disabled);
    buttons_[place]->setIcon(icon);
  }
}

// None is checked for a split of a newer version. One is reached by Tab, the others from there by arrow keys.
void CSplitButtons::RenewChecked() {
  const auto& pages = document_->Draft().pages;
  const int split = pages.value(document_->CurrentPage()).split_type;
  for (QToolButton* button : qAsConst(buttons_)) {
    button->setAutoExclusive(false);  // else the last one could not be taken back
  }
  const auto* checked = std::find(std::begin(kSplits), std::end(kSplits), split);
  const int reached = checked == std::end(kSplits) ? 0 : static_cast<int>(checked - std::begin(kSplits));
  for (int place = 0; place < kPlaces; ++place) {
    buttons_[place]->setChecked(kSplits[place] == split);
    buttons_[place]->setFocusPolicy(place == reached ? Qt::StrongFocus : Qt::ClickFocus);
  }
  for (QToolButton* button : qAsConst(buttons_)) {
    button->setAutoExclusive(true);
  }
}

}  // namespace TarnPlanView
