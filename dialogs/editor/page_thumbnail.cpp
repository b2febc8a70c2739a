#include "page_thumbnail.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "plan_draft.h"
#include "plan_rules/picture_bytes.h"
#include "split_layout.h"
#include "window_text.h"

namespace TarnPlanView {

namespace {

const QSize kSize(320, 180);
// Every workstation sees it, whatever its skin.
const QColor kLine(0x2b, 0x2f, 0x36), kEmpty(0x15, 0x17, 0x1a), kFilled(0x23, 0x27, 0x2d), kInk(0xe9, 0xeb, 0xee);

}  // namespace

std::string PaintThumbnail(const PlanDraft& draft, const CWindowText& text) {
  if (draft.pages.isEmpty()) {
    return std::string();
  }
  QImage picture(kSize, QImage::Format_RGB32);
  picture.fill(kLine);
  QPainter painter(&picture);
  QFont font = QGuiApplication::font();
  font.setPixelSize(11);
  painter.setFont(font);
  const int split = draft.pages.first().split_type;
  for (int window_no = 1; window_no <= WindowsOfSplit(split); ++window_no) {
    const QRect place = WindowPlace(picture.rect(), split, window_no, 2);
    const auto* window = draft.Window(0, window_no);
    painter.fillRect(place, IsFilled(window) ? kFilled : kEmpty);
    painter.setPen(kInk);
    painter.drawText(place.adjusted(4, 2, -4, -2), Qt::AlignCenter | Qt::TextWordWrap, text.Name(window));
  }
  painter.end();
  return view_plugin_protocol::BytesOf(picture);
}

}  // namespace TarnPlanView
