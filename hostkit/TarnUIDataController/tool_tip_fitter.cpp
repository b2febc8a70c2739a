#include "TarnUIDataController/tool_tip_fitter.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include "MarUIControl/breakable_text.h"
#include "MarUIControl/screen_room.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kWidestTip = 420;

QString WithoutMarkup(const QString& text) {
  if (!Qt::mightBeRichText(text)) {
    return text;
  }
  return QTextDocumentFragment::fromHtml(text).toPlainText();
}

}  // namespace

void ToolTipFitter::Install(QWidget* tip) {
  auto* label = qobject_cast<QLabel*>(tip);
  if (label && !label->findChild<ToolTipFitter*>(QString(), Qt::FindDirectChildrenOnly)) {
    new ToolTipFitter(label);
  }
}

ToolTipFitter::ToolTipFitter(QLabel* tip) : QObject(tip), tip_(tip) {
  tip->installEventFilter(this);
}

bool ToolTipFitter::eventFilter(QObject* watched, QEvent* event) {
  // A tip that is on is used again for the next text.
  if (!fitting_ && (event->type() == QEvent::Show || event->type() == QEvent::Resize)) {
    fitting_ = true;
    Fit();
    fitting_ = false;
  }
  return QObject::eventFilter(watched, event);
}

void ToolTipFitter::Fit() {
  if (tip_->width() <= kWidestTip) {
    return;
  }
  const QString text = WithoutMarkup(tip_->text());
  // As markup, because the label is used again for texts that are.
  tip_->setText(Qt::convertFromPlainText(MarUIControl::BreakableText(text), Qt::WhiteSpaceNormal));
  tip_->setWordWrap(true);
  const QRect place(tip_->pos(), QSize(kWidestTip, tip_->heightForWidth(kWidestTip)));
  tip_->setGeometry(MarUIControl::MovedInto(MarUIControl::RoomAround(place.topLeft(), tip_->screen()), place));
}

}  // namespace tarn_ui_data_controller
