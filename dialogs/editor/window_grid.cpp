#include "window_grid.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>

#include "MarUIControl/accessible_role.h"
#include "TarnUIDataController/popup_menu.h"
#include "TarnUIDataController/skin_color.h"
#include "WidgetKit/drag.h"
#include "WidgetKit/high_dpi_svg_icon.h"
#include "camera_drop.h"
#include "qt/event_places.h"
#include "split_layout.h"

namespace TarnPlanView {

using tarn_ui_data_controller::SkinColor;
using view_plugin_protocol::PlanWindow;

namespace {

constexpr int kGapOfWindows = 3;
constexpr int kMarginAround = 6;
constexpr int kFrame = 2;
const QSize kSmallest(320, 180);
constexpr int kMark = 16;
const char kOfflineMark[] = ":/TarnHost/icons/tree_main_camera_offline_sel.svg";  // for dark ground
const char kOwnWindow[] = "application/x-tarn-plan-window";

int MirroredKey(int key) {
  switch (key) {
    case Qt::Key_Left:
      return Qt::Key_Right;
    case Qt::Key_Right:
      return Qt::Key_Left;
    default:
      return key;
  }
}

// Whole words as long as they fit; what is too long for the room ends in an ellipsis.
void PaintLines(QPainter* painter, const QRect& room, const QString& words) {
  QTextOption option(Qt::AlignHCenter);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QTextLayout layout(words, painter->font());
  layout.setTextOption(option);
  const QFontMetrics metrics = painter->fontMetrics();
  const int most = qMax(1, room.height() / metrics.height());
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < most; line = layout.createLine()) {
    line.setLineWidth(room.width());
    const bool last = lines.size() + 1 == most;
    const QString rest = words.mid(line.textStart(), last ? -1 : line.textLength());
    lines.append(metrics.elidedText(rest.trimmed(), Qt::ElideRight, room.width()));
  }
  layout.endLayout();
  painter->drawText(room, Qt::AlignCenter, lines.join(QLatin1Char('\n')));
}

}  // namespace

CWindowGrid::CWindowGrid(CPlanDocument* document, const CWindowText* text, QWidget* parent)
    : QWidget(parent),
      document_(document),
      text_(text),
      offline_(WidgetKit::GetHighDpiSvgIcon(QString::fromLatin1(kOfflineMark), QString(), QSize(20, 20))) {
  setObjectName(QStringLiteral("window_grid"));
  MarUIControl::SetAccessibleRole(this, QAccessible::Canvas);
  setFocusPolicy(Qt::StrongFocus);
  setAcceptDrops(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(document_, &CPlanDocument::SignalChanged, this, &CWindowGrid::OnDocument);
  RenewDescription();
}

QSize CWindowGrid::sizeHint() const {
  return QSize(480, 270);
}

QSize CWindowGrid::minimumSizeHint() const {
  return kSmallest;
}

int CWindowGrid::Split() const {
  const auto& pages = document_->Draft().pages;
  const int page = document_->CurrentPage();
  if (page < 0 || page >= pages.size()) {
    return 1;
  }
  return pages[page].split_type;
}

int CWindowGrid::WindowCount() const {
  return WindowsOfSplit(Split());
}

QRect CWindowGrid::Room() const {
  return rect().adjusted(1, 1, -1, -1);
}

QRect CWindowGrid::WindowRect(int window_no) const {
  return WindowPlace(Room(), Split(), window_no, kGapOfWindows);
}

const PlanWindow* CWindowGrid::Window(int window_no) const {
  return document_->Draft().Window(document_->CurrentPage(), window_no);
}

void CWindowGrid::SetCurrentWindow(int window_no) {
  just_filled_ = 0;
  GoTo(window_no);
}

void CWindowGrid::GoTo(int window_no) {
  const int clamped = qBound(1, window_no, WindowCount());
  if (clamped == current_) {
    return;
  }
  current_ = clamped;
  update();
  RenewDescription();
  Q_EMIT SignalCurrentWindowChanged(current_);
}

void CWindowGrid::RenewCameras() {
  update();
  RenewDescription();
}

void CWindowGrid::OnDocument(int change, int) {
  const bool turned = shown_page_ != document_->CurrentPage();
  shown_page_ = document_->CurrentPage();
  if (turned || (change & CPlanDocument::PagesChanged) || marked_ > WindowCount()) {
    marked_ = 0;
  }
  if (turned) {
    SetCurrentWindow(1);
  } else {
    GoTo(current_);  // there may be fewer now
  }
  update();
  RenewDescription();
}

// A changed name is read out while the grid has the focus.
void CWindowGrid::RenewDescription() {
  const QString spoken = text_->Spoken(current_, WindowCount(), Window(current_));
  if (spoken != accessibleName()) {  // each call is read out
    setAccessibleName(spoken);
  }
  QString described = tr("Windows of page %1").arg(document_->CurrentPage() + 1);
  if (marked_ != 0) {
    described += QStringLiteral(". ") + tr("Window %1 is marked, Ctrl+V swaps it with this one").arg(marked_);
  }
  if (described != accessibleDescription()) {
    setAccessibleDescription(described);
  }
}

bool CWindowGrid::PutCameras(int window_no, const QVector<DraftCamera>& cameras) {
  if (cameras.size() == 1) {
    return document_->PutCamera(document_->CurrentPage(), window_no, cameras.first());
  }
  return Fill(window_no, cameras);
}

bool CWindowGrid::Fill(int window_no, const QVector<DraftCamera>& cameras) {
  const PlanFilling filling = document_->Fill(document_->CurrentPage(), window_no, cameras);
  if (filling.placed > 0) {
    ReportFilling(filling);
  }
  return filling.placed > 0;
}

// What all went onto the page in sight needs no word; the page may have been full, with all gone to others.
void CWindowGrid::ReportFilling(const PlanFilling& filling) {
  const int wanted = filling.placed + filling.left_out;
  const QString done = tr("Cameras placed: %1 of %2. Pages used: %3, new: %4.")
                           .arg(filling.placed)
                           .arg(wanted)
                           .arg(filling.pages)
                           .arg(filling.new_pages);
  if (filling.left_out > 0) {
    QString limit = tr("A plan holds at most %1 filled windows.").arg(kMaxFilledWindows);
    if (filling.out_of_pages) {
      limit = tr("A plan has at most %1 pages.").arg(kMaxPages);
    }
    Q_EMIT SignalRefused(done + QLatin1Char(' ') + tr("Left out: %1.").arg(filling.left_out) + QLatin1Char(' ') +
                         limit);
  } else if (filling.beyond_first) {
    Q_EMIT SignalDone(done);
  }
}

// Over what is there only where the user has chosen the window: not where the last camera went by itself.
void CWindowGrid::PutAndGoOn(const DraftCamera& camera) {
  int window_no = current_;
  if (window_no == just_filled_ && IsFilled(Window(window_no))) {
    window_no = NextEmpty(window_no);
  }
  if (window_no == 0) {
    Q_EMIT SignalRefused(tr("All windows of this page are filled. Choose the one to replace, or add a page."));
  } else if (PutCameras(window_no, {camera})) {
    GoOn(window_no);
  }
}

void CWindowGrid::FillAndGoOn(const QVector<DraftCamera>& cameras) {
  if (Fill(current_, cameras)) {
    GoOn(current_);
  }
}

void CWindowGrid::GoOn(int filled) {
  GoTo(filled);
  if (const int next = NextEmpty(filled)) {
    GoTo(next);
  }
  just_filled_ = filled;
}

// After this one, then from the start; 0 when all are filled.
int CWindowGrid::NextEmpty(int window_no) const {
  for (int step = 0; step < WindowCount(); ++step) {
    const int next = (window_no + step) % WindowCount() + 1;
    if (!IsFilled(Window(next))) {
      return next;
    }
  }
  return 0;
}

void CWindowGrid::Mark(int window_no) {
  marked_ = window_no;
  update();
  RenewDescription();
}

void CWindowGrid::SwapMarked() {
  const int marked = marked_;
  Mark(0);
  if (marked != 0) {
    Swap(marked, current_);
  }
}

bool CWindowGrid::MarkOrSwap(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cut)) {
    Mark(marked_ == current_ ? 0 : current_);
  } else if (event->matches(QKeySequence::Paste) && marked_ != 0) {
    SwapMarked();
  } else if (event->matches(QKeySequence::Cancel) && marked_ != 0) {
    Mark(0);
  } else {
    return false;
  }
  return true;
}

void CWindowGrid::Swap(int window_no, int other_window_no) {
  if (window_no == other_window_no || other_window_no < 1 || other_window_no > WindowCount()) {
    return;
  }
  if (document_->SwapWindows(document_->CurrentPage(), window_no, other_window_no)) {
    SetCurrentWindow(other_window_no);
  }
}

void CWindowGrid::Clear() {
  document_->ClearWindow(document_->CurrentPage(), current_);
}

// The current window itself at the edge; 0 when it is no key for going about.
int CWindowGrid::Neighbour(int key) const {
  const int side = SideOfSplit(Split()), column = (current_ - 1) % side;
  switch (isRightToLeft() ? MirroredKey(key) : key) {
    case Qt::Key_Left:
      return column == 0 ? current_ : current_ - 1;
    case Qt::Key_Right:
      return column == side - 1 ? current_ : current_ + 1;
    case Qt::Key_Up:
      return current_ > side ? current_ - side : current_;
    case Qt::Key_Down:
      return current_ + side <= WindowCount() ? current_ + side : current_;
    case Qt::Key_Home:
      return 1;
    case Qt::Key_End:
      return WindowCount();
    default:
      return 0;
  }
}

bool CWindowGrid::MoveOrSwap(QKeyEvent* event) {
  const int other = Neighbour(event->key());
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  if (other == 0 || (modifiers != Qt::NoModifier && modifiers != Qt::ControlModifier)) {
    return false;
  }
  if (modifiers == Qt::ControlModifier) {
    Swap(current_, other);
  } else {
    SetCurrentWindow(other);
  }
  return true;
}

bool CWindowGrid::Turn(int key) {
  if (key == Qt::Key_PageUp) {
    document_->SetCurrentPage(document_->CurrentPage() - 1);
  } else if (key == Qt::Key_PageDown) {
    document_->SetCurrentPage(document_->CurrentPage() + 1);
  } else {
    return false;
  }
  return true;
}

void CWindowGrid::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
    Clear();
  } else if (!Turn(event->key()) && !MarkOrSwap(event) && !MoveOrSwap(event)) {
    QWidget::keyPressEvent(event);
  }
}

void CWindowGrid::mousePressEvent(QMouseEvent* event) {
  const int window_no = WindowAt(Room(), Split(), event->pos());
  if (window_no != 0) {
    SetCurrentWindow(window_no);
  }
  pressed_at_.reset();
  if (window_no != 0 && event->button() == Qt::LeftButton && IsFilled(Window(window_no))) {
    pressed_at_ = event->pos();
  }
}

void CWindowGrid::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) && pressed_at_ &&
      (event->pos() - *pressed_at_).manhattanLength() >= QApplication::startDragDistance()) {
    pressed_at_.reset();
    StartDrag();
  }
}

void CWindowGrid::StartDrag() {
  auto* cargo = new QMimeData;
  cargo->setData(QString::fromLatin1(kOwnWindow), QByteArray::number(current_));
  auto* drag = new WidgetKit::CDrag(this);
  drag->setMimeData(cargo);
  drag->setPixmap(grab(WindowRect(current_)).scaledToWidth(qMin(160, WindowRect(current_).width())));
  drag->exec(Qt::MoveAction);
}

void CWindowGrid::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new tarn_ui_data_controller::CPopupMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(accessibleName());
  QAction* clear = menu->addAction(tr("Clear window"), this, &CWindowGrid::Clear);
  clear->setShortcut(QKeySequence(Qt::Key_Delete));
  clear->setEnabled(IsFilled(Window(current_)));
  menu->addAction(tr("Clear page"), this, [this] { document_->ClearPage(document_->CurrentPage()); });
  menu->addAction(tr("Mark to swap"), this, [this] { Mark(current_); })->setShortcut(QKeySequence::Cut);
  if (marked_ != 0 && marked_ != current_) {
    QAction* swap = menu->addAction(tr("Swap with window %1").arg(marked_), this, &CWindowGrid::SwapMarked);
    swap->setShortcut(QKeySequence::Paste);
  }
  QPoint place = event->globalPos();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    place = mapToGlobal(WindowRect(current_).center());
  }
  menu->PopupAt(place);
}

void CWindowGrid::dragEnterEvent(QDragEnterEvent* event) {
  dragged_ = 0;
  drop_.reset();
  if (event->source() == this && event->mimeData()->hasFormat(QString::fromLatin1(kOwnWindow))) {
    dragged_ = event->mimeData()->data(QString::fromLatin1(kOwnWindow)).toInt();
  } else {
    drop_ = ReadCameraDrop(event->mimeData());
  }
  if (dragged_ != 0 || drop_) {
    event->acceptProposedAction();
  }
}

void CWindowGrid::dragMoveEvent(QDragMoveEvent* event) {
  const int window_no = WindowAt(Room(), Split(), TarnQt::PlaceOf(*event));
  ShowTarget(window_no);
  const bool useful = window_no != 0 && window_no != dragged_ && (dragged_ != 0 || drop_);
  event->setAccepted(useful);
}

void CWindowGrid::dragLeaveEvent(QDragLeaveEvent*) {
  ShowTarget(0);
}

void CWindowGrid::dropEvent(QDropEvent* event) {
  ShowTarget(0);
  const int window_no = WindowAt(Room(), Split(), TarnQt::PlaceOf(*event));
  if (window_no == 0 || (dragged_ == 0 && !drop_)) {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  const auto cameras = std::exchange(drop_, std::nullopt);
  if (dragged_ != 0) {
    Swap(std::exchange(dragged_, 0), window_no);
  } else if (PutCameras(window_no, *cameras)) {
    GoTo(window_no);  // its stream and preset come next, but not the next camera
    just_filled_ = window_no;
  }
}

void CWindowGrid::ShowTarget(int window_no) {
  if (target_ != window_no) {
    target_ = window_no;
    update();
  }
}

void CWindowGrid::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void CWindowGrid::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

bool CWindowGrid::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const int window_no = WindowAt(Room(), Split(), help->pos());
    QToolTip::showText(help->globalPos(), Tip(window_no), this);
    return true;
  }
  return QWidget::event(event);
}

QString CWindowGrid::Tip(int window_no) const {
  const auto* window = Window(window_no);
  if (!IsFilled(window)) {
    return QString();
  }
  const QString tip = text_->NameAndState(window) + QLatin1Char('\n') +
                      tr("Ctrl+X marks a window, Ctrl+V on another one swaps the two");
  return Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal);  // a name may look like markup
}

void CWindowGrid::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), SkinColor("wall_line"));
  for (int window_no = 1; window_no <= WindowCount(); ++window_no) {
    PaintWindow(&painter, window_no);
  }
}

void CWindowGrid::PaintWindow(QPainter* painter, int window_no) const {
  const QRect place = WindowRect(window_no);
  const bool is_filled = IsFilled(Window(window_no));
  painter->fillRect(place, SkinColor(is_filled ? "wall_bar" : "wall_empty"));
  const QRect inside = place.adjusted(kMarginAround, kMarginAround - 2, -kMarginAround, 2 - kMarginAround);
  painter->setPen(Ink("wall_hint"));
  painter->drawText(inside, Qt::AlignTop | Qt::AlignLeft, QString::number(window_no));
  if (is_filled) {
    PaintContent(painter, inside, *Window(window_no));
  } else if (window_no == current_) {
    PaintInvitation(painter, inside);
  }
  PaintMarks(painter, place, window_no);
}

QColor CWindowGrid::Ink(const char* name) const {
  return SkinColor(isEnabled() ? name : "text_disabled");
}

void CWindowGrid::PaintInvitation(QPainter* painter, const QRect& inside) const {
  const int line = fontMetrics().height();
  if (inside.width() > 20 * fontMetrics().averageCharWidth()) {
    painter->drawText(inside.adjusted(0, line, 0, -line), Qt::AlignCenter | Qt::TextWordWrap, tr("Drop a camera here"));
  }
}

void CWindowGrid::PaintContent(QPainter* painter, const QRect& inside, const PlanWindow& window) const {
  const int line = fontMetrics().height();
  const bool offline = text_->IsOffline(&window);
  const bool low = inside.height() < 3 * line;
  if (offline) {
    PaintOffline(painter, QRect(inside.topLeft(), QSize(inside.width(), qMax(line, kMark))));
  }
  QRect room_for_name = inside;
  const QString hints = text_->Hints(window);
  if (!hints.isEmpty() && !low) {
    painter->drawText(inside, Qt::AlignBottom | Qt::AlignHCenter,
                      fontMetrics().elidedText(hints, Qt::ElideRight, inside.width()));
    room_for_name.adjust(0, 0, 0, -line);
  }
  painter->setPen(Ink("wall_text"));
  // Beside the number where the window is too low for two lines below it, but never under the mark.
  const int lines = low && offline ? 1 : 2;
  room_for_name.adjust(0, qBound(0, inside.height() - lines * line, line), 0, 0);
  PaintLines(painter, room_for_name, text_->Name(&window));
}

// The mark of the camera tree, at the end of the line of the number, with the word where there is room for it.
void CWindowGrid::PaintOffline(QPainter* painter, const QRect& top_line) const {
  const auto placed = [this, &top_line](const QRect& part) {
    return QStyle::visualRect(layoutDirection(), top_line, part);
  };
  const QRect mark(top_line.right() + 1 - kMark, top_line.top(), kMark, kMark);
  offline_.paint(painter, placed(mark), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  const QString word = tr("Offline");
  const int number = fontMetrics().horizontalAdvance(QStringLiteral("16")) + kMarginAround;
  const QRect rest = top_line.adjusted(number, 0, -kMark - kMarginAround, 0);
  if (fontMetrics().horizontalAdvance(word) <= rest.width()) {
    painter->drawText(placed(rest), Qt::AlignTop | Qt::AlignRight, word);
  }
}

void CWindowGrid::PaintMarks(QPainter* painter, const QRect& place, int window_no) const {
  const auto frame = [painter, &place](const QColor& color, Qt::PenStyle style) {
    painter->setPen(QPen(color, kFrame, style));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(place.adjusted(1, 1, -2, -2));  // the pen's width belongs to the window
  };
  if (window_no == marked_) {
    painter->setPen(QPen(SkinColor("wall_text"), kFrame, Qt::DotLine));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(place.adjusted(2 * kFrame, 2 * kFrame, -2 * kFrame, -2 * kFrame));
  }
  if (window_no == target_) {
    QColor veil = SkinColor("accent");
    veil.setAlphaF(0.35);
    painter->fillRect(place, veil);
    frame(SkinColor("wall_text"), Qt::SolidLine);
  } else if (window_no == current_ && hasFocus()) {
    frame(SkinColor("wall_text"), Qt::SolidLine);
  } else if (window_no == current_) {
    frame(SkinColor("wall_hint"), Qt::DashLine);
  }
}

}  // namespace TarnPlanView
