#include "wall/wall_bar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/key_guide.h"
#include "MarUIControl/label.h"
#include "wall/bar_overflow.h"
#include "wall/steady_width.h"

namespace TarnClient {

namespace {

constexpr int kApart = 10, kLeastTitle = 40, kMostNote = 300;

QIcon Icon(const char* name) {
  return QIcon(QStringLiteral(":/TarnClient/images/%1.svg").arg(QLatin1String(name)));
}

void Label(QToolButton* button, const QString& text) {
  QAction* action = button->defaultAction();
  action->setText(text);
  action->setToolTip(MarUIControl::TipWithKeys(text, action->shortcuts()));
  if (button->accessibleName() != text) {  // each call is read out
    button->setAccessibleName(text);
  }
}

// What has fitted in once always will, so that nothing beside it moves.
void KeepRoomFor(QLabel* label, const QString& text) {
  const QMargins margins = label->contentsMargins();
  const int width = SteadyWidth(label->fontMetrics(), text) + margins.left() + margins.right();
  label->setMinimumWidth(qMax(label->minimumWidth(), width));
}

void Show(MarUIControl::CLabel* label, const QString& text) {
  label->SetText(text);
  label->setAccessibleName(text);
  label->setVisible(!text.isEmpty());
}

}  // namespace

CWallBar::CWallBar(QWidget* parent)
    : QWidget(parent),
      title_(new MarUIControl::CLabel(this)),
      changed_(new MarUIControl::CLabel(this)),
      note_(new MarUIControl::CLabel(this)),
      cycle_(new MarUIControl::CLabel(this)),
      page_(new QLabel(this)),
      time_(new QLabel(this)),
      turn_time_(new QLabel(this)) {
  setLayout(new QHBoxLayout);
  layout()->setContentsMargins(12, 4, 8, 4);
  layout()->setSpacing(3);
  overflow_ = new CBarOverflow(this, title_);
  AddTexts();
  NameTimes();
  AddButtons();
  setFixedHeight(qMax(40, fontMetrics().height() + 22));
  ShowChanged(false);
  ShowCycle(QString());
  ShowNote(QString());
  ShowNothing();
}

void CWallBar::AddTexts() {
  QFont font = title_->font();
  font.setBold(true);
  title_->setFont(font);
  title_->setObjectName(QStringLiteral("wall_title"));
  note_->setObjectName(QStringLiteral("wall_bar_note"));
  cycle_->setObjectName(QStringLiteral("wall_cycle"));
  page_->setObjectName(QStringLiteral("wall_page"));
  time_->setObjectName(QStringLiteral("page_time"));
  time_->setToolTip(tr("Time left for this page"));
  turn_time_->setObjectName(QStringLiteral("turn_time"));
  turn_time_->setToolTip(tr("Time left for this plan of the cycle"));
  title_->setMinimumWidth(kLeastTitle);
  QSizePolicy what_is_left(QSizePolicy::Ignored, QSizePolicy::Preferred);
  what_is_left.setHorizontalStretch(1);
  title_->setSizePolicy(what_is_left);
  for (QLabel* label : {note_, cycle_}) {
    label->setMaximumWidth(kMostNote);
  }
  changed_->setObjectName(QStringLiteral("wall_changed"));
  changed_->setTextFormat(Qt::PlainText);
  changed_->setContentsMargins(kApart, 0, 0, 0);
  changed_->setToolTip(tr("The windows are not as they are saved. Leaving can be taken back for some seconds."));
  layout()->addWidget(title_);
  layout()->addWidget(changed_);
  for (QLabel* label : {static_cast<QLabel*>(note_), static_cast<QLabel*>(cycle_), turn_time_, page_, time_}) {
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setContentsMargins(kApart, 0, 0, 0);
    layout()->addWidget(label);
  }
  turn_time_->setContentsMargins(kApart, 0, kApart, 0);
  for (QLabel* label : {time_, turn_time_}) {
    KeepRoomFor(label, tr("held"));
  }
}

// Each second of a time would be read out as a new name.
void CWallBar::NameTimes() {
  for (QLabel* label : {time_, turn_time_}) {
    MarUIControl::SetAccessibleRole(label, QAccessible::StaticText);
    label->setAccessibleName(label->toolTip());
  }
}

void CWallBar::AddButtons() {
  show_in_tree_ = AddButton("wall_show_in_tree_btn");
  previous_ = AddCommand("previous", "wall_previous_btn", Qt::Key_Left, &CWallBar::SignalPrevious);
  pause_ = AddCommand("pause", "wall_pause_btn", Qt::Key_Space, &CWallBar::SignalPause);
  pause_->defaultAction()->setCheckable(true);
  next_ = AddCommand("next", "wall_next_btn", Qt::Key_Right, &CWallBar::SignalNext);
  stop_ = AddCommand("stop", "wall_stop_btn", Qt::Key_Escape, &CWallBar::SignalStop);
  Label(stop_, tr("Stop the plan"));
  for (int side = 1; side <= 4; ++side) {
    splits_ << AddButton("");
    MarUIControl::SetAccessibleRole(splits_.last(), QAccessible::RadioButton);
    splits_.last()->setObjectName(QStringLiteral("wall_split_%1_btn").arg(side * side));
  }
  save_ = AddButton("wall_save_btn");
  save_menu_ = AddButton("wall_save_menu_btn");
  // What is wanted least often gives way first; stop never does.
  for (const auto& together :
       {splits_, QVector<QToolButton*>{save_, save_menu_}, {show_in_tree_}, {previous_, next_}, {pause_}}) {
    overflow_->Add(together);
  }
  overflow_->AddMore();
}

void CWallBar::OfferOnTitle(QAction* action) {
  title_->addAction(action);
  title_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QToolButton* CWallBar::AddButton(const char* name) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setIconSize(QSize(20, 20));
  button->setFocusPolicy(Qt::TabFocus);
  layout()->addWidget(button);
  return button;
}

// The wall takes the keys wherever in it the focus is; of its own an action has them at its button alone.
QToolButton* CWallBar::AddCommand(const char* icon, const char* name, int key, void (CWallBar::*wanted)()) {
  auto* action = new QAction(Icon(icon), QString(), this);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetShortcut);
  action->setShortcutVisibleInContextMenu(true);
  connect(action, &QAction::triggered, this, wanted);
  QToolButton* button = AddButton(name);
  button->setDefaultAction(action);
  return button;
}

void CWallBar::ShowPlan(const QString& name, const QString& page_name, int page, int pages, bool in_turn) {
  const bool several = pages > 1;
  if (several && !page_name.isEmpty()) {
    Show(title_, QStringLiteral("%1 \u2013 %2").arg(name, page_name));
  } else {
    Show(title_, name);
  }
  page_->clear();
  if (several) {
    page_->setMinimumWidth(0);
    KeepRoomFor(page_, tr("Page %1 of %2").arg(pages).arg(pages));  // from the first page on
    page_->setText(tr("Page %1 of %2").arg(page).arg(pages));
  }
  in_turn_ = in_turn;
  LabelSteps(several, in_turn);
  SetPartsVisible(true, several, in_turn);
}

void CWallBar::LabelSteps(bool several, bool in_turn) {
  if (!in_turn) {
    Label(previous_, tr("Previous page"));
    Label(next_, tr("Next page"));
  } else if (several) {
    Label(previous_, tr("Previous page or plan"));
    Label(next_, tr("Next page or plan"));
  } else {
    Label(previous_, tr("Previous plan"));
    Label(next_, tr("Next plan"));
  }
}

void CWallBar::ShowTimes(int page_seconds, int turn_seconds, bool held) {
  ShowTime(time_, page_seconds, held);
  ShowTime(turn_time_, turn_seconds, held);
  ShowHold(held);
}

// The name stays, and the button is pressed or not; picture and tip say what a press does.
void CWallBar::ShowHold(bool held) {
  QAction* action = pause_->defaultAction();
  QString name = tr("Hold this page"), tip = name;
  if (in_turn_) {
    name = tip = tr("Hold this plan");
  }
  if (held) {
    tip = in_turn_ ? tr("Go on with the cycle") : tr("Go on turning pages");
  }
  tip = MarUIControl::TipWithKeys(tip, action->shortcuts());
  // This comes several times a second. A click has pressed the button already, so what it shows beside that counts.
  if (action->text() == name && action->toolTip() == tip && action->isChecked() == held) {
    return;
  }
  Label(pause_, name);
  action->setToolTip(tip);
  action->setIcon(Icon(held ? "resume" : "pause"));
  action->setChecked(held);
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
  MarUIControl::SetQuietDescription(label, label->text());
  KeepRoomFor(label, label->text());
}

void CWallBar::ShowNothing() {
  Show(title_, tr("Live view"));
  ShowChanged(false);
  SetPartsVisible(false, false, false);
}

void CWallBar::SetLocked(bool locked) {
  stop_->defaultAction()->setEnabled(!locked);
}

void CWallBar::SetSplitActions(const QList<QAction*>& actions) {
  for (int place = 0; place < splits_.size(); ++place) {
    splits_[place]->setDefaultAction(actions.value(place));
    splits_[place]->setAccessibleName(actions.value(place)->text());
  }
}

void CWallBar::ShowChanged(bool changed) {
  Show(changed_, changed ? tr("● changed") : QString());
}

void CWallBar::ShowCycle(const QString& text) {
  Show(cycle_, text);
}

void CWallBar::ShowNote(const QString& text) {
  Show(note_, text);
  note_->setVisible(is_playing_ && !text.isEmpty());  // else the empty wall says it
}

QSize CWallBar::minimumSizeHint() const {
  return QSize(overflow_->LeastWidth(), height());
}

QPoint CWallBar::SavePlace(int width) const {
  const QToolButton* button = save_menu_->isHidden() ? overflow_->MoreButton() : save_menu_;
  return button->mapToGlobal(QPoint(button->width() - width, button->height() + 1));
}

QList<QAction*> CWallBar::Commands() const {
  QList<QAction*> commands;
  for (const QToolButton* button : {previous_, pause_, next_, stop_}) {
    if (overflow_->IsWanted(button)) {
      commands << button->defaultAction();
    }
  }
  return commands;
}

void CWallBar::SetPartsVisible(bool playing, bool several, bool in_turn) {
  is_playing_ = playing;
  ShowNote(note_->text());
  for (QToolButton* button : {previous_, pause_, next_}) {
    overflow_->SetWanted(button, several || in_turn);
  }
  time_->setVisible(several);
  page_->setVisible(several);
  turn_time_->setVisible(in_turn);
  overflow_->SetWanted(stop_, playing);
  stop_->setVisible(playing);
  overflow_->SetWanted(show_in_tree_, playing);
  for (QToolButton* split : qAsConst(splits_)) {
    overflow_->SetWanted(split, playing);
  }
}

}  // namespace TarnClient
