#include "MarUIControl/modal_tip_dialog.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QShowEvent>
#include <QVBoxLayout>
#include <utility>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/breakable_text.h"
#include "MarUIControl/label.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"
#include "MarUIControl/screen_room.h"
#include "TarnUIDataController/modal_answer.h"

namespace MarUIControl {

namespace {

constexpr int kMargin = 24;
constexpr int kMarkSize = 26;
constexpr int kTipGap = 12;
constexpr int kTallestText = 320;
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 32;
constexpr int kWidths[] = {320, 400, 560};
const QLatin1String kMarks[] = {QLatin1String("i"), QLatin1String("!"), QLatin1String("?")};

}  // namespace

class CModalTipDialog::Private {
 public:
  explicit Private(CModalTipDialog* dialog) : q(dialog) {}

  void MakeText();
  void MakeButtons();
  void LayOut();
  void FitText();
  void LetKeysScroll();
  void Center();
  void ChooseDefault();
  void NameForReaders();
  int ShownButtons() const;

  CModalTipDialog* const q;
  CLabel* title = nullptr;
  QLabel *mark = nullptr, *content = nullptr;
  QString whole_content;
  QScrollArea* scroll = nullptr;  // a text of the store's may be of any length
  CPrimaryButton* confirm = nullptr;
  CPushButton *cancel = nullptr, *other = nullptr;
  int model = HintModel;
};

void CModalTipDialog::Private::MakeText() {
  title = new CLabel(q);
  title->setObjectName(QStringLiteral("modal_tip_title"));
  title->hide();
  mark = new QLabel(q);
  mark->setObjectName(QStringLiteral("modal_tip_mark"));
  mark->setAlignment(Qt::AlignCenter);
  mark->setFixedSize(kMarkSize, kMarkSize);
  content = new QLabel;
  content->setObjectName(QStringLiteral("modal_tip_content"));
  content->setTextFormat(Qt::PlainText);
  content->setWordWrap(true);
  content->setAlignment(Qt::AlignLeading | Qt::AlignVCenter);  // one line stands beside the mark
  scroll = new QScrollArea(q);
  SetAccessibleRole(scroll, QAccessible::StaticText);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(content);
}

void CModalTipDialog::Private::MakeButtons() {
  confirm = new CPrimaryButton(CModalTipDialog::tr("OK"), q);
  other = new CPushButton(q);  // keys go through the buttons in the order in which they are made
  cancel = new CPushButton(CModalTipDialog::tr("Cancel"), q);
  other->hide();
  for (CPushButton* button : {static_cast<CPushButton*>(confirm), other, cancel}) {
    button->setMinimumSize(kButtonWidth, kButtonHeight);
  }
  connect(confirm, &QPushButton::clicked, q, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, q, &QDialog::reject);
  connect(other, &QPushButton::clicked, q, [this] { q->done(Other); });
}

void CModalTipDialog::Private::LayOut() {
  auto* text = new QHBoxLayout;
  text->setSpacing(kTipGap);
  text->addWidget(mark, 0, Qt::AlignTop);
  text->addWidget(scroll, 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(kTipGap);
  buttons->addStretch(1);
  buttons->addWidget(confirm);
  buttons->addWidget(other);
  buttons->addWidget(cancel);
  auto* column = new QVBoxLayout(q);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(kMargin - 8);
  column->setSizeConstraint(QLayout::SetNoConstraint);  // the width is the caller's, the height the text's
  column->addWidget(title);
  column->addLayout(text, 1);
  column->addLayout(buttons);
}

void CModalTipDialog::Private::FitText() {
  q->ensurePolished();
  content->ensurePolished();
  const int width = q->width() - 2 * kMargin - kMarkSize - kTipGap;
  const int lines = content->heightForWidth(width);
  scroll->setFixedHeight(qBound(kMarkSize, lines, kTallestText));
  scroll->setFocusPolicy(Qt::NoFocus);
  if (lines > kTallestText) {
    LetKeysScroll();
  }
  q->layout()->activate();
  q->setFixedHeight(q->layout()->minimumSize().height());
}

// Who comes to it by keys hears the whole text.
void CModalTipDialog::Private::LetKeysScroll() {
  scroll->setAccessibleName(whole_content);
  scroll->setFocusPolicy(Qt::StrongFocus);
}

void CModalTipDialog::Private::Center() {
  QPoint middle = QGuiApplication::primaryScreen()->geometry().center();
  if (q->parentWidget()) {
    middle = q->parentWidget()->window()->frameGeometry().center();
  }
  QRect place(QPoint(0, 0), q->size());
  place.moveCenter(middle);
  q->move(MovedInto(RoomAround(middle, q->screen()), place).topLeft());
}

// Return by mistake must not confirm what cannot be undone: questions begin on Cancel.
void CModalTipDialog::Private::ChooseDefault() {
  const bool way_out = !cancel->isHidden() && (confirm->isHidden() || model == QuestionModel);
  CPushButton* button = confirm;
  if (way_out) {
    button = cancel;
  }
  button->setDefault(true);
  button->setFocus();
}

// A box without a title is called by what it says.
void CModalTipDialog::Private::NameForReaders() {
  q->setAccessibleName(q->windowTitle().isEmpty() ? whole_content : q->windowTitle());
}

CModalTipDialog::CModalTipDialog(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), d_(new Private(this)) {
  setAttribute(Qt::WA_StyledBackground);
  setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);  // without a window there is none to block
  d_->MakeText();
  d_->MakeButtons();
  d_->LayOut();
  SetDialogSize(MiddleSize);
  SetDialogModel(HintModel);
}

CModalTipDialog::~CModalTipDialog() = default;

void CModalTipDialog::SetDialogSize(int size) {
  setFixedWidth(kWidths[qBound<int>(SmallSize, size, LargeSize)]);
}

void CModalTipDialog::SetDialogModel(int model) {
  d_->model = model;
  d_->mark->setText(kMarks[qBound<int>(HintModel, model, QuestionModel)]);
}

void CModalTipDialog::SetTitle(const QString& title) {
  d_->title->SetText(title);
  d_->title->setVisible(!title.isEmpty());
  setWindowTitle(title);
  d_->NameForReaders();
}

void CModalTipDialog::SetContent(const QString& content) {
  d_->whole_content = content;
  d_->content->setText(BreakableText(content));
  d_->content->setAccessibleName(content);  // without the places to break at
  setAccessibleDescription(content);
  d_->NameForReaders();
}

void CModalTipDialog::SetConfirmText(const QString& text) {
  d_->confirm->setText(text);
}

void CModalTipDialog::SetCancelText(const QString& text) {
  d_->cancel->setText(text);
}

void CModalTipDialog::SetOtherText(const QString& text) {
  d_->other->setText(text);
  d_->other->setVisible(!text.isEmpty());
}

void CModalTipDialog::SetConfirmVisible(bool visible) {
  d_->confirm->setVisible(visible);
}

void CModalTipDialog::SetCancelVisible(bool visible) {
  d_->cancel->setVisible(visible);
}

QString CModalTipDialog::Title() const {
  return d_->title->text();
}

QString CModalTipDialog::Content() const {
  return d_->whole_content;
}

// As the bits of a ModalQuestion.
int CModalTipDialog::Private::ShownButtons() const {
  const std::pair<const QWidget*, int> bits[] = {{confirm, 1}, {cancel, 2}, {other, 4}};
  int shown = 0;
  for (const auto& [button, bit] : bits) {
    if (!button->isHidden()) {
      shown |= bit;
    }
  }
  return shown;
}

int CModalTipDialog::exec() {
  return TarnHost::AskModal({Title(), Content(), d_->ShownButtons()}, [this] { return QDialog::exec(); });
}

void CModalTipDialog::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) {
    d_->FitText();
    d_->Center();
    d_->ChooseDefault();
  }
  QDialog::showEvent(event);
}

}  // namespace MarUIControl
