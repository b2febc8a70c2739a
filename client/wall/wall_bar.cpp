#include "wall/wall_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "wall/plain_text_tip.h"

namespace TarnClient {

namespace {

constexpr int kLeastText = 40;

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
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(12, 4, 8, 4);
  layout->setSpacing(3);
  QFont font = title_->font();
  font.setBold(true);
  title_->setFont(font);
  for (QLabel* label : {title_, cycle_}) {
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(kLeastText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(label, 1);
  }
  cycle_->setObjectName(QStringLiteral("wall_cycle"));
  time_->setObjectName(QStringLiteral("page_time"));
  cycle_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);  // beside its time
  turn_time_->setObjectName(QStringLiteral("turn_time"));
  time_->setContentsMargins(8, 0, 0, 0);  // apart from the page's number
  turn_time_->setContentsMargins(8, 0, 16, 0);
  time_->setToolTip(tr("Time left for this page"));
  turn_time_->setToolTip(tr("Time left for this plan of the cycle"));
  page_->setTextFormat(Qt::PlainText);
  layout->addWidget(turn_time_);
  layout->addWidget(page_);
  layout->addWidget(time_);
  previous_ = AddButton("previous", "wall_previous_btn");
  pause_ = AddButton("pause", "wall_pause_btn");
  next_ = AddButton("next", "wall_next_btn");
  stop_ = AddButton("stop", "wall_stop_btn");
  Label(stop_, tr("Stop the plan"), tr("Esc"));
  save_ = AddButton("save", "wall_save_btn");
  save_menu_ = AddButton("drop_down", "wall_save_menu_btn");
  connect(save_, &QToolButton::clicked, this, &CWallBar::SignalSave);
  connect(save_menu_, &QToolButton::clicked, this, &CWallBar::SignalSaveMenu);
  connect(previous_, &QToolButton::clicked, this, &CWallBar::SignalPrevious);
  connect(pause_, &QToolButton::clicked, this, &CWallBar::SignalPause);
  connect(next_, &QToolButton::clicked, this, &CWallBar::SignalNext);
  connect(stop_, &QToolButton::clicked, this, &CWallBar::SignalStop);
  setFixedHeight(qMax(40, fontMetrics().height() + 22));
  ShowCycle(QString());
  ShowNothing();
}

QToolButton* CWallBar::AddButton(const char* icon, const char* name) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setIcon(QIcon(QStringLiteral(":/TarnClient/images/%1.svg").arg(QLatin1String(icon))));
  button->setIconSize(QSize(20, 20));
  button->setFocusPolicy(Qt::TabFocus);
  layout()->addWidget(button);
  return button;
}

void CWallBar::Label(QToolButton* button, const QString& text, const QString& keys) {
  button->setAccessibleName(text);
  button->setToolTip(QStringLiteral("%1 (%2)").arg(text, keys));
}

void CWallBar::ShowPlan(const QString& name, const QString& page_name, int page, int pages, bool in_turn) {
  const bool several = pages > 1;
  title_text_ = page_name.isEmpty() || !several ? name : QStringLiteral("%1 \u2013 %2").arg(name, page_name);
  ElideTexts();
  page_->setText(several ? tr("Page %1 of %2").arg(page).arg(pages) : QString());
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
  const auto show = [held](QLabel* label, int seconds) {
    if (!label->isHidden()) {
      label->setText(held ? tr("held") : tr("%1 s").arg(seconds));
    }
  };
  show(time_, page_seconds);
  show(turn_time_, turn_seconds);
  pause_->setIcon(
      QIcon(held ? QStringLiteral(":/TarnClient/images/resume.svg") : QStringLiteral(":/TarnClient/images/pause.svg")));
  const QString hold = in_turn_ ? tr("Hold this plan") : tr("Hold this page");
  const QString go_on = in_turn_ ? tr("Go on with the cycle") : tr("Go on turning pages");
  Label(pause_, held ? go_on : hold, tr("Space"));
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
