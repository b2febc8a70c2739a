#include "window/wait_page.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace TarnClient {

CWaitPage::CWaitPage(QWidget* parent) : QWidget(parent), elapsed_(new QLabel(this)) {
  setObjectName(QStringLiteral("wait_page"));
  auto* text = new QLabel(tr("Loading the plans..."), this);
  text->setAlignment(Qt::AlignCenter);
  text->setWordWrap(true);
  auto* bar = new QProgressBar(this);
  bar->setRange(0, 0);
  bar->setTextVisible(false);
  bar->setFixedHeight(6);
  bar->setAccessibleName(text->text());
  elapsed_->setAlignment(Qt::AlignCenter);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(32, 16, 32, 16);
  layout->setSpacing(12);
  layout->addStretch();
  layout->addWidget(text);
  layout->addWidget(bar);
  layout->addWidget(elapsed_);
  layout->addStretch();
  ShowElapsed(0);
}

void CWaitPage::ShowElapsed(int seconds) {
  elapsed_->setText(tr("%1 s").arg(seconds));
}

}  // namespace TarnClient
