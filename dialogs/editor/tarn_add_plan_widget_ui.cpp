#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include "MarUIControl/nomal_message.h"
#include "conflict_bar.h"
#include "editor_cameras.h"
#include "editor_footer.h"
#include "editor_header.h"
#include "page_settings.h"
#include "page_strip.h"
#include "plan_saving.h"
#include "plan_watch.h"
#include "split_buttons.h"
#include "tarn_add_plan_widget_p.h"
#include "view_config_manager.h"
#include "window_grid.h"
#include "window_settings.h"

namespace TarnPlanView {

namespace {

constexpr int kMargin = 16;
constexpr int kGap = 10;
constexpr int kCamerasWidth = 250;
constexpr int kLeastCamerasWidth = 160;
constexpr int kPagesWidth = 472;

}  // namespace

CTarnAddPlanWidget::Private::Private(CTarnAddPlanWidget* editor) : q(editor), focus(editor) {}

void CTarnAddPlanWidget::Private::Build() {
  q->setObjectName(QStringLiteral("add_edit_plan_widget"));
  q->setAttribute(Qt::WA_StyledBackground);
  q->setAccessibleName(CTarnAddPlanWidget::tr("Plan editor"));
  saving = new CPlanSaving(&document, q);
  watch = new CPlanWatch(q);
  // In the order in which Tab goes through them.
  header = new CEditorHeader(&document, q);
  scroll = new QScrollArea(q);
  BuildCameras();
  BuildPages();
  conflict_bar = new CConflictBar(q);
  footer = new CEditorFooter(&document, q);
  BuildFrame();
  GatherUndo();
  Connect();
  ConnectSaving();
}

void CTarnAddPlanWidget::Private::BuildPages() {
  pages_side = new QWidget(q);
  strip = new CPageStrip(&document, pages_side);
  page_settings = new CPageSettings(&document, pages_side);
  grid = new CWindowGrid(&document, &text, pages_side);
  document.SetOtherContentFixed(CViewConfigManager::Instance().OnlyCamera());
  window_settings = new CWindowSettings(&document, &text, pages_side);
  auto* column = new QVBoxLayout(pages_side);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(kGap);
  column->addWidget(strip);
  column->addWidget(page_settings);
  column->addWidget(grid, 1);
  column->addWidget(window_settings);
}

void CTarnAddPlanWidget::Private::BuildCameras() {
  cameras = new CEditorCameras(q);
  cameras->setMinimumWidth(kLeastCamerasWidth);
  text.SetCameraLookUp([this](const std::string& code) { return cameras->Find(code); });
  connect(cameras, &CEditorCameras::SignalCameraWanted, q,
          [this](const DraftCamera& chosen) { grid->PutAndGoOn(chosen); });
  connect(cameras, &CEditorCameras::SignalCamerasWanted, q,
          [this](const QVector<DraftCamera>& chosen) { grid->FillAndGoOn(chosen); });
  connect(cameras, &CEditorCameras::SignalCamerasChanged, q, [this] {
    grid->RenewCameras();
    window_settings->Renew();
  });
}

// Head and foot stay in sight; what is between them scrolls where the window is low.
void CTarnAddPlanWidget::Private::BuildFrame() {
  scroll->setObjectName(QStringLiteral("editor_scroll"));
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  auto* sides = new QSplitter(Qt::Horizontal, scroll);
  sides->setObjectName(QStringLiteral("editor_sides"));
  sides->setHandleWidth(kMargin);
  sides->setChildrenCollapsible(false);
  sides->addWidget(cameras);
  sides->addWidget(pages_side);
  sides->setStretchFactor(1, 1);
  sides->setSizes({kCamerasWidth, kPagesWidth});
  scroll->setWidget(sides);
  auto* column = new QVBoxLayout(q);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(kGap);
  column->addWidget(header);
  column->addWidget(scroll, 1);
  column->addWidget(conflict_bar);
  column->addWidget(footer);
}

void CTarnAddPlanWidget::Private::AddShortcut(const QKeySequence& keys, const std::function<void()>& run) {
  auto* shortcut = new QShortcut(keys, q);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  connect(shortcut, &QShortcut::activated, q, [this, run] {
    if (scroll->isEnabled()) {
      TakeTyped();
      run();
    }
  });
}

void CTarnAddPlanWidget::Private::Connect() {
  connect(&document, &CPlanDocument::SignalRefused, q, [this](const QString& reason) { Refuse(reason); });
  connect(grid, &CWindowGrid::SignalRefused, q, [this](const QString& reason) { Refuse(reason); });
  connect(grid, &CWindowGrid::SignalDone, q, [this](const QString& what) {
    Q_EMIT q->SignalMessageTipNeeded(what, MarUIControl::CNomalMessage::Success);
  });
  connect(window_settings, &CWindowSettings::SignalRefused, q, [this](const QString& reason) { Refuse(reason); });
  connect(window_settings, &CWindowSettings::SignalCameraFailed, cameras, &CEditorCameras::Doubt);
  connect(grid, &CWindowGrid::SignalCurrentWindowChanged, window_settings, &CWindowSettings::ShowWindow);
  connect(footer, &CEditorFooter::SignalSave, q, &CTarnAddPlanWidget::Save);
  connect(footer, &CEditorFooter::SignalCancel, q, &CTarnAddPlanWidget::Cancel);
  AddShortcut(QKeySequence::Undo, [this] { document.UndoStack().undo(); });
  AddShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), [this] { document.UndoStack().redo(); });
  AddShortcut(QKeySequence(Qt::CTRL | Qt::Key_Y), [this] { document.UndoStack().redo(); });
  for (int place = 0; place < 4; ++place) {
    AddShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + place)),
                [this, place] { page_settings->Splits()->Choose(place); });
  }
}

// The fields' own undo would part them from the document; only the search is none of its business.
void CTarnAddPlanWidget::Private::GatherUndo() {
  const auto spins = q->findChildren<QAbstractSpinBox*>();
  for (QAbstractSpinBox* spin : spins) {
    spin->installEventFilter(q);
  }
  q->findChild<QLineEdit*>(QStringLiteral("plan_name_edit"))->installEventFilter(q);
}

void CTarnAddPlanWidget::Private::ConnectSaving() {
  connect(saving, &CPlanSaving::SignalStored, q,
          [this](const QString& plan_code, const QString& group_code) { OnStored(plan_code, group_code); });
  connect(saving, &CPlanSaving::SignalFailed, q, [this](const QString& reason) { OnNotStored(reason); });
  connect(saving, &CPlanSaving::SignalConflict, q,
          [this](SaveConflict found, const auto& plan) { OnConflict(found, plan); });
  connect(watch, &CPlanWatch::SignalLooked, q, [this](const auto& now) { OnLooked(now); });
  connect(saving, &CPlanSaving::SignalSlow, q,
          [this] { footer->ShowWork(CTarnAddPlanWidget::tr("Saving takes long. Cancel leaves the editor.")); });
  connect(conflict_bar, &CConflictBar::SignalLoadTheirs, q, [this] { LoadTheirs(); });
  connect(conflict_bar, &CConflictBar::SignalKeepMine, q, [this] { KeepMine(); });
  connect(&document.UndoStack(), &QUndoStack::indexChanged, q, [this] { OnUndoMoved(); });
  connect(conflict_bar, &CConflictBar::SignalBackToMine, q, [this] { BackToMine(); });
  connect(conflict_bar, &CConflictBar::SignalOverwrite, q, [this] { Overwrite(); });
  connect(conflict_bar, &CConflictBar::SignalSaveAsNew, q, [this] { SaveAsNew(); });
  connect(conflict_bar, &CConflictBar::SignalRetry, q, [this] { q->OpenPlan(QString(standing.awaited)); });
}

}  // namespace TarnPlanView
