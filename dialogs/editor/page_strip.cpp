#include "page_strip.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "MarUIControl/label.h"
#include "MarUIControl/push_button.h"
#include "page_list.h"
#include "plan_document.h"
#include "why_off.h"

namespace TarnPlanView {

namespace {

constexpr int kListHeight = 84;  // a page and the scroll bar

}  // namespace

CPageStrip::CPageStrip(CPlanDocument* document, QWidget* parent)
    : QWidget(parent),
      document_(document),
      title_(new MarUIControl::CLabel(this)),
      list_(new CPageList(document, this)) {
  add_ = MakeButton("add_page_btn", tr("Add"), tr("New empty page after this one (Insert in the strip)"));
  duplicate_ = MakeButton("duplicate_page_btn", tr("Duplicate"), tr("Same page again (Ctrl+D in the strip)"));
  remove_ = MakeButton("remove_page_btn", tr("Delete"), tr("Delete this page (Delete in the strip)"));
  connect(add_, &QPushButton::clicked, this, [this] { document_->AddPage(document_->CurrentPage()); });
  connect(duplicate_, &QPushButton::clicked, this, [this] { document_->DuplicatePage(document_->CurrentPage()); });
  connect(remove_, &QPushButton::clicked, this, [this] { document_->RemovePage(document_->CurrentPage()); });
  list_->setFixedHeight(kListHeight);
  auto* bar = new QHBoxLayout;
  bar->setSpacing(6);
  bar->addWidget(title_, 1);
  bar->addWidget(add_);
  bar->addWidget(duplicate_);
  bar->addWidget(remove_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  column->addLayout(bar);
  column->addWidget(list_);
  connect(document_, &CPlanDocument::SignalChanged, this, &CPageStrip::RenewButtons);
  RenewButtons();
}

MarUIControl::CPushButton* CPageStrip::MakeButton(const char* name, const QString& text, const QString& tip) {
  auto* button = new MarUIControl::CPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setToolTip(tip);
  button->setAccessibleName(tip.section(QStringLiteral(" ("), 0, 0));
  return button;
}

void CPageStrip::RenewButtons() {
  const int pages = document_->Draft().pages.size();
  title_->setText(tr("Page %1 of %2").arg(document_->CurrentPage() + 1).arg(pages));
  QString full, last;
  if (pages >= kMaxPages) {
    full = tr("A plan has at most %1 pages.").arg(kMaxPages);
  }
  if (pages <= 1) {
    last = tr("The only page cannot be removed.");
  }
  SetWhyOff(add_, full);
  SetWhyOff(duplicate_, full);
  SetWhyOff(remove_, last);
}

}  // namespace TarnPlanView
