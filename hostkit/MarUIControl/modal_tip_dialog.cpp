#include "MarUIControl/modal_tip_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QVariant>

#include "MarUIControl/label.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"
#include "TarnUIDataController/modal_answer.h"

namespace MarUIControl {

class CModalTipDialog::Private {
 public:
  CLabel* title = nullptr;
  QLabel* mark = nullptr;
  QLabel* content = nullptr;
  CPrimaryButton* confirm = nullptr;
  CPushButton* cancel = nullptr;
};

CModalTipDialog::CModalTipDialog(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), d_(new Private) {
  setWindowModality(Qt::WindowModal);
  d_->title = new CLabel(this);
  d_->content = new QLabel(this);
  d_->content->setTextFormat(Qt::PlainText);
  d_->content->setWordWrap(true);
  d_->confirm = new CPrimaryButton(tr("OK"), this);
  d_->cancel = new CPushButton(tr("Cancel"), this);
  connect(d_->confirm, &QPushButton::clicked, this, &QDialog::accept);
  connect(d_->cancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(d_->confirm);
  buttons->addWidget(d_->cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(d_->title);
  layout->addWidget(d_->content, 1);
  layout->addLayout(buttons);
  SetDialogSize(MiddleSize);
}

CModalTipDialog::~CModalTipDialog() = default;

void CModalTipDialog::SetDialogSize(int size) {
  static constexpr int kWidths[] = {320, 400, 560};
  setFixedWidth(kWidths[qBound<int>(SmallSize, size, LargeSize)]);
}

void CModalTipDialog::SetDialogModel(int model) {
  setProperty("model", model);
}

void CModalTipDialog::SetTitle(const QString& title) {
  d_->title->SetText(title);
  setWindowTitle(title);
}

void CModalTipDialog::SetContent(const QString& content) {
  d_->content->setText(content);
}

void CModalTipDialog::SetConfirmText(const QString& text) {
  d_->confirm->setText(text);
}

void CModalTipDialog::SetCancelText(const QString& text) {
  d_->cancel->setText(text);
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
  return d_->content->text();
}

int CModalTipDialog::exec() {
  const int buttons = (d_->confirm->isHidden() ? 0 : 1) | (d_->cancel->isHidden() ? 0 : 2);
  return TarnHost::AskModal({Title(), Content(), buttons}, [this] { return QDialog::exec(); });
}

}  // namespace MarUIControl
