#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <memory>

#include "ResourceTreeKit/camera_tree.h"
#include "TarnHost/modal_answer.h"
#include "TarnHost/plan_site.h"
#include "TarnUIDataController/skin_loader.h"
#include "conflict_bar.h"
#include "page_list.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "tarn_add_plan_widget.h"
#include "window_grid.h"

namespace TarnTest {

using view_plugin_protocol::GetPlanDetailResponse;

/// The plan editor on screen over the public plans, wired as the panel does it; notes every tip and every question.
class CEditorStage {
 public:
  explicit CEditorStage(CPlanFixture& fixture, const QString& skin = QStringLiteral("redblack"))
      : controller(new TarnPlanView::CStandardViewController(fixture.Public())) {
    using TarnPlanView::CStandardViewController;
    using TarnPlanView::CTarnAddPlanWidget;
    tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(skin);
    controller->setParent(nullptr);
    editor.reset(new CTarnAddPlanWidget(&window));
    editor->SetModel(fixture.Public());
    editor->SetController(controller.get());
    ConnectLoads();
    QObject::connect(editor.get(), &CTarnAddPlanWidget::SignalMessageTipNeeded, &window,
                     [this](const QString& text, int) { tips.append(text); });
    QObject::connect(controller.get(), &CStandardViewController::signalShowMessage, &window,
                     [this](const QString& text) { shown.append(text); });
    QObject::connect(editor.get(), &CTarnAddPlanWidget::SignalClosed, &window, [this] { ++closed; });
    TarnHost::SetModalAnswer([this](const TarnHost::ModalQuestion& question) {
      questions.append(question.text);
      return answer;
    });
    Resize(QSize(770, 720));
    window.show();
    window.activateWindow();
  }
  ~CEditorStage() { TarnHost::SetModalAnswer({}); }

  void ConnectLoads() {
    QObject::connect(controller.get(), &TarnPlanView::CStandardViewController::SignalGetPlanInfo, editor.get(),
                     &TarnPlanView::CTarnAddPlanWidget::OnPlanInfo);
  }
  void Resize(const QSize& size) {
    window.resize(size);
    editor->setGeometry(QRect(QPoint(), size));
  }
  void Open(const QString& plan_code) {
    editor->OpenPlan(plan_code);
    QTRY_VERIFY(Find<QPushButton>("save_plan_btn")->isEnabled());
    WaitForCameras();
  }
  void OpenNew(const QString& group_code) {
    editor->OpenNew(group_code);
    WaitForCameras();
  }
  void Save() { Click("save_plan_btn"); }
  /// Saves a plan that is no longer what was loaded.
  void SaveIntoConflict() {
    Save();
    QTRY_VERIFY(IsConflictShown());
  }
  void WaitForCameras() { QTRY_VERIFY(Cameras().IsLoaded()); }

  template <class Widget>
  Widget* Find(const char* name) const {
    return editor->findChild<Widget*>(QString::fromLatin1(name));
  }
  QLineEdit& Name() const { return *Find<QLineEdit>("plan_name_edit"); }
  void Click(const char* name) { QTest::mouseClick(Find<QWidget>(name), Qt::LeftButton); }
  TarnPlanView::CWindowGrid& Grid() const { return *editor->findChild<TarnPlanView::CWindowGrid*>(); }
  TarnPlanView::CPageList& Pages() const { return *editor->findChild<TarnPlanView::CPageList*>(); }
  ResourceTreeKit::CCameraTree& Cameras() const { return *editor->findChild<ResourceTreeKit::CCameraTree*>(); }
  QString Text(const char* label) const { return Find<QLabel>(label)->text(); }
  /// Whether it neither loads nor saves.
  bool IsIdle() const { return Text("editor_work").isEmpty(); }
  bool IsConflictShown() const { return !editor->findChild<TarnPlanView::CConflictBar*>()->isHidden(); }
  /// What the windows of the current page hold, as they are read out.
  QStringList Windows() const {
    QStringList windows;
    const int before = Grid().CurrentWindow();
    for (int window_no = 1; window_no <= 16; ++window_no) {
      Grid().SetCurrentWindow(window_no);
      if (Grid().CurrentWindow() == window_no) {
        windows.append(Grid().accessibleName().section(QStringLiteral(": "), 1));
      }
    }
    Grid().SetCurrentWindow(before);
    return windows;
  }
  QStringList TakeTips() { return std::exchange(tips, {}); }
  /// What the controller has shown by itself since the last call.
  QStringList Shown() { return std::exchange(shown, {}); }

  QWidget window;
  std::unique_ptr<TarnPlanView::CStandardViewController> controller;
  std::unique_ptr<TarnPlanView::CTarnAddPlanWidget> editor;
  QStringList tips, shown, questions;
  int closed = 0;
  int answer = 1;
};

/// Base of tests of the editor over the demo site, with the hands of other clients.
class CEditorTest : public CPlanTest {
  Q_OBJECT
 protected:
  void Begin(const QMap<QString, int>& switches = {}) {
    QMap<QString, int> all = {{"load_all", 1}, {"timed_play", 1}};
    for (auto it = switches.begin(); it != switches.end(); ++it) {
      all[it.key()] = it.value();
    }
    Open(all, true, TarnHost::MakeDemoSite);
    patrol_ = fixture_.Code(QStringLiteral("Night patrol"));
  }
  CPlanFixture& Begun(const QMap<QString, int>& switches = {}) {
    Begin(switches);
    return fixture_;
  }
  GetPlanDetailResponse Stored(const QString& code) { return fixture_.InStore().Detail(code); }
  void RenameElsewhere(const QString& code, const char* name) {
    QCOMPARE(fixture_.InStore().Update(ChangedPlan(code, name)), QString());
  }

  /// Opens the plan, which the user and somebody else then change, and saves it.
  void OpenIntoConflict(CEditorStage& stage) {
    stage.Open(patrol_);
    stage.Name().setText("Mine");
    RenameElsewhere(patrol_, "Theirs");
    stage.SaveIntoConflict();
  }

  QString patrol_;  // code of a plan of three pages that runs by itself
};

}  // namespace TarnTest
