#include "window/main_window.h"

#include <QLabel>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QUrl>

#include "MarUIControl/string_conversion.h"
#include "plans/plan_pane.h"
#include "plans/plan_player.h"
#include "plans/plan_tree.h"
#include "wall/live_wall.h"
#include "wall/test_picture_source.h"
#include "window/wait_page.h"

namespace TarnClient {

namespace {

constexpr int kSideWidth = 330;

// The address as a reader may see it: without a password.
QString ShownStore(const QString& url) {
  return url.startsWith(QLatin1String("postgresql:")) ? QUrl(url).toDisplayString(QUrl::RemovePassword)
                                                      : url.section(QLatin1Char(':'), 1);
}

}  // namespace

CMainWindow::CMainWindow(const QString& user, const QString& store_url, QWidget* parent)
    : QMainWindow(parent),
      wall_(new CLiveWall(&CTestPictureSource::Make, this)),
      player_(new CPlanPlayer(wall_, this)),
      tabs_(new QTabWidget(this)) {
  setWindowTitle(tr("Plans"));
  auto* splitter = new QSplitter(Qt::Horizontal, this);
  splitter->setHandleWidth(1);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(BuildSide());
  splitter->addWidget(wall_);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kSideWidth, 4 * kSideWidth});
  setCentralWidget(splitter);
  BuildStatusBar(user, store_url);
  auto* stop = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(stop, &QShortcut::activated, player_, &CPlanPlayer::Stop);
  resize(1280, 800);
}

CMainWindow::~CMainWindow() = default;

QWidget* CMainWindow::BuildSide() {
  side_ = new QStackedWidget(this);
  side_->setMinimumWidth(220);
  wait_page_ = new CWaitPage(side_);
  side_->addWidget(wait_page_);
  tabs_->setDocumentMode(true);
  tabs_->tabBar()->setAccessibleName(tr("Families of plans"));
  side_->addWidget(tabs_);
  return side_;
}

void CMainWindow::BuildStatusBar(const QString& user, const QString& store_url) {
  auto* user_label = new QLabel(tr("User: %1").arg(user), this);
  auto* store_label = new QLabel(tr("Store: %1").arg(ShownStore(store_url)), this);
  user_label->setTextFormat(Qt::PlainText);
  store_label->setTextFormat(Qt::PlainText);
  store_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  store_label->setToolTip(store_label->text());
  statusBar()->addWidget(user_label);
  statusBar()->addWidget(store_label, 1);
  statusBar()->setSizeGripEnabled(false);
}

void CMainWindow::ShowWaiting(int seconds) {
  wait_page_->ShowElapsed(seconds);
}

void CMainWindow::ShowPlans() {
  const struct {
    TarnPlanView::ThemeNodeType theme;
    QString title, empty;
  } families[] = {{TarnPlanView::PublicTheme, tr("Public plans"), tr("No public plans yet")},
                  {TarnPlanView::OwnTheme, tr("My plans"), tr("You have no plans of your own yet")}};
  for (const auto& family : families) {
    auto* pane = new CPlanPane(family.theme, family.empty, tabs_);
    pane->Tree()->setAccessibleName(family.title);
    tabs_->addTab(pane, family.title);
    player_->Attach(pane);
    panes_.append(pane);
  }
  side_->setCurrentWidget(tabs_);
  tabs_->currentWidget()->setFocus();
}

void CMainWindow::PlayPlan(const std::string& code) {
  player_->Play(code);
  for (CPlanPane* pane : qAsConst(panes_)) {
    pane->Reveal(MarUIControl::StringToQString(code));
  }
}

}  // namespace TarnClient
