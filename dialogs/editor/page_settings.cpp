#include "page_settings.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

#include "MarUIControl/label.h"
#include "MarUIControl/push_button.h"
#include "MarUIControl/spin_box.h"
#include "plan_document.h"
#include "split_buttons.h"

namespace TarnPlanView {

CPageSettings::CPageSettings(CPlanDocument* document, QWidget* parent)
    : QWidget(parent), document_(document), splits_(new CSplitButtons(document, this)) {
  MakeDwell();
  auto* clear = new MarUIControl::CPushButton(tr("Clear"), this);
  clear->setObjectName(QStringLiteral("clear_page_btn"));
  clear->setToolTip(tr("Take everything out of this page's windows"));
  clear->setAccessibleName(tr("Clear page"));
  connect(clear, &QPushButton::clicked, this, [this] { document_->ClearPage(document_->CurrentPage()); });
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(splits_);
  row->addSpacing(8);
  auto* label = new MarUIControl::CLabel(tr("Shown for"), this);
  label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  row->addWidget(label);
  row->addWidget(dwell_);
  row->addStretch(1);
  row->addWidget(clear);
  connect(document_, &CPlanDocument::SignalLeavingPage, dwell_, [this] { dwell_->interpretText(); });
  connect(document_, &CPlanDocument::SignalChanged, this, &CPageSettings::ShowDocument);
  ShowDocument();
}

void CPageSettings::MakeDwell() {
  dwell_ = new MarUIControl::CSpinBox(this);
  dwell_->setObjectName(QStringLiteral("dwell_spin"));
  dwell_->setAccessibleName(tr("Seconds that this page is shown"));
  dwell_->setToolTip(tr("%1 s to 24 hours").arg(kMinDwellSeconds));
  dwell_->setSuffix(tr(" s"));
  dwell_->setKeyboardTracking(false);  // a number half typed is no dwell time
  connect(dwell_, QOverload<int>::of(&QSpinBox::valueChanged), this,
          [this](int seconds) { document_->SetDwell(document_->CurrentPage(), seconds); });
}

// A plan made elsewhere may have a time out of bounds. It is shown as it is and stays until it is changed.
void CPageSettings::ShowDocument() {
  const auto& pages = document_->Draft().pages;
  const int page = document_->CurrentPage();
  if (page < 0 || page >= pages.size()) {
    return;
  }
  const QSignalBlocker quiet(dwell_);
  const int seconds = pages[page].dwell_seconds;
  dwell_->setRange(qMin(kMinDwellSeconds, seconds), qMax(kMaxDwellSeconds, seconds));
  if (dwell_->value() != seconds) {
    dwell_->setValue(seconds);
  }
}

}  // namespace TarnPlanView
