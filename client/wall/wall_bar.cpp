#include "wall/wall_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "wall/plain_text_tip.h"

namespace TarnClient {

namespace {

constexpr int kLeastText = 40;

QIcon Icon(const char* name) {
  return QIcon(QStringLiteral(":/TarnClient/images/%1.svg").arg(QLatin1String(name)));
}

void ElideInto(QLabel* label, const QString& text) {
  label->setText(label->fontMetrics().elidedText(text, Qt::ElideMiddle, qMax(kLeastText, label->width())));
  label->setToolTip(PlainTextTip(text));
  label->setAccessibleName(text);
}

}  // namespace

CWallBar::CWallBar(QWidget* parent)
    : QWidget(parent),
      title_(new QLabel(this)),
      page_(new QLabel(this)),
      time_(new QLabel(this)),
      cycle_(new QLabel(this)),
      turn_time_(new QLabel(this)) {
  setLayout(new QHBoxLayout);
  layout()->setContentsMargins(12, 4, 8, 4);
  layout()->setSpacing(3);
  AddTexts();
  AddButtons();
  setFixedHeight(qMax(40, fontMetrics().height() + 22));
  ShowCycle(QString());
  ShowNothing();
}

void CWallBar::AddTexts() {
  QFont font = title_->font();
  font.setBold(true);
  title_->setFont(font);
  cycle_->setObjectName(QStringLiteral("wall_cycle"));
  cycle_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);  // beside its time
  time_->setObjectName(QStringLiteral("page_time"));
  time_->setContentsMargins(8, 0, 0, 0);  // apart from the page's number
  time_->setToolTip(tr("Time left for this page"));
  turn_time_->setObjectName(QStringLiteral("turn_time"));
  turn_time_->setContentsMargins(8, 0, 16, 0);
  turn_time_->setToolTip(tr("Time left for this plan of the cycle"));
  for (QLabel* label : {title_, cycle_, turn_time_, page_, time_}) {
    label->setTextFormat(Qt::PlainText);
    layout()->addWidget(label);
  }
  for (QLabel* label : {title_, cycle_}) {
    label->setMinimumWidth(kLeastText);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    policy.setHorizontalStretch(1);
    label->setSizePolicy(policy);
  }
}

void CWallBar::AddButtons() {
  previous_ = AddButton("previous", "wall_previous_btn", &CWallBar::SignalPrevious);
  pause_ = AddButton("pause", "wall_pause_btn", &CWallBar::SignalPause);
  next_ = AddButton("next", "wall_next_btn", &CWallBar::SignalNext);
  stop_ = AddButton("stop", "wall_stop_btn", &CWallBar::SignalStop);
  Label(stop_, tr("Stop the plan"), tr("Esc"));
  save_ = AddButton("save", "wall_save_btn", &CWallBar::SignalSave);
  save_menu_ = AddButton("drop_down", "wall_save_menu_btn", &CWallBar::SignalSaveMenu);
}

QToolButton* CWallBar::AddButton(const char* icon, const char* name, void (CWallBar::*clicked)()) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setIcon(Icon(icon));
  button->setIconSize(QSize(20, 20));
  button->setFocusPolicy(Qt::TabFocus);
  layout()->addWidget(button);
  connect(button, &QToolButton::clicked, this, clicked);
  return button;
}

void CWallBar::Label(QToolButton* button, const QString& text, const QString& keys) {
  button->setAccessibleName(text);
  button->setToolTip(QStringLiteral("%1 (%2)").arg(text, keys));
}

void CWallBar::ShowPlan(const QString& name, const QString& page_name, int page, int pages, bool in_turn) {
  const bool several = pages > 1;
  title_text_ = name;
  page_->clear();
  if (several) {
    page_->setText(tr("Page %1 of %2").arg(page).arg(pages));
  }
  if (several && !page_name.isEmpty()) {
    title_text_ = QStringLiteral("%1 \u2013 %2").arg(name, page_name);
  }
  ElideTexts();
  time_->clear();
  turn_time_->clear();
  in_turn_ = in_turn;
  LabelSteps(several, in_turn);
  SetPartsVisible(true, several, in_turn);
}

void CWallBar::LabelSteps(bool several, bool in_turn) {
  if (!in_turn) {
    Label(previous_, tr("Previous page"), tr("Left"));
    Label(next_, tr("Next page"), tr("Right"));
  } else if (several) {
    Label(previous_, tr("Previous page or plan"), tr("Left"));
    Label(next_, tr("Next page or plan"), tr("Right"));
  } else {
    Label(previous_, tr("Previous plan"), tr("Left"));
    Label(next_, tr("Next plan"), tr("Right"));
  }
}

void CWallBar::ShowTimes(int page_seconds, int turn_seconds, bool held) {
  ShowTime(time_, page_seconds, held);
  ShowTime(turn_time_, turn_seconds, held);
  if (held) {
    pause_->setIcon(Icon("resume"));
    Label(pause_, in_turn_ ? tr("Go on with the cycle") : tr("Go on turning pages"), tr("Space"));
  } else {
    pause_->setIcon(Icon("pause"));
    Label(pause_, in_turn_ ? tr("Hold this plan") : tr("Hold this page"), tr("Space"));
  }
}

void CWallBar::ShowTime(QLabel* label, int seconds, bool held) {
  if (label->isHidden()) {
    return;
  }
  if (held) {
    label->setText(tr("held"));
  } else {
    label->setText(tr("%1 s").arg(seconds));
  }
}

void CWallBar::ShowNothing() {
  title_text_ = tr("Live view");
  ElideTexts();
  SetPartsVisible(false, false, false);
}

void CWallBar::ShowCycle(const QString& text) {
  cycle_text_ = text;
  cycle_->setVisible(!text.isEmpty());
  ElideTexts();
}

void CWallBar::ShowSaving(const QString& why_not_save, const QString& why_not_save_as) {
  Offer(save_, tr("Save the plan"), tr("Ctrl+S"), why_not_save);
  Offer(save_menu_, tr("Ways to save"), tr("save as: Ctrl+Shift+S"), why_not_save_as);
}

void CWallBar::Offer(QToolButton* button, const QString& text, const QString& keys, const QString& why_not) {
  Label(button, text, keys);
  button->setEnabled(why_not.isEmpty());
  if (!why_not.isEmpty()) {
    button->setToolTip(QStringLiteral("%1: %2").arg(text, why_not));
  }
  button->setAccessibleDescription(why_not);
}

QPoint CWallBar::SavePlace(int width) const {
  return save_menu_->mapToGlobal(QPoint(save_menu_->width() - width, save_menu_->height() + 1));
}

void CWallBar::SetPartsVisible(bool playing, bool several, bool in_turn) {
  for (QToolButton* button : {previous_, pause_, next_}) {
    button->setVisible(several || in_turn);
  }
  time_->setVisible(several);
  page_->setVisible(several);
  turn_time_->setVisible(in_turn);
  stop_->setVisible(playing);
}

void CWallBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ElideTexts();
}

void CWallBar::ElideTexts() {
  ElideInto(title_, title_text_);
  ElideInto(cycle_, cycle_text_);
}

}  // namespace TarnClient
