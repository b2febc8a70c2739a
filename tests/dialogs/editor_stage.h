#pragma once

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceTreeKit/camera_tree.h"
#include "TarnHost/modal_answer.h"
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
    QObject::connect(controller.get(), &CStandardViewController::SignalGetPlanInfo, editor.get(),
                     &CTarnAddPlanWidget::OnPlanInfo);
    QObject::connect(editor.get(), &CTarnAddPlanWidget::SignalMessageTipNeeded, &window,
                     [this](const QString& text, int) { tips.append(text); });
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
  void WaitForCameras() { QTRY_VERIFY(Cameras().IsLoaded()); }

  template <class Widget>
  Widget* Find(const char* name) const {
    return editor->findChild<Widget*>(QString::fromLatin1(name));
  }
  void Click(const char* name) { QTest::mouseClick(Find<QWidget>(name), Qt::LeftButton); }
  TarnPlanView::CWindowGrid& Grid() const { return *editor->findChild<TarnPlanView::CWindowGrid*>(); }
  TarnPlanView::CPageList& Pages() const { return *editor->findChild<TarnPlanView::CPageList*>(); }
  ResourceTreeKit::CCameraTree& Cameras() const { return *editor->findChild<ResourceTreeKit::CCameraTree*>(); }
  QString Text(const char* label) const { return Find<QLabel>(label)->text(); }
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

  /// The plan as the host has it.
  static GetPlanDetailResponse Stored(const QString& plan_code) {
    view_plugin_protocol::GetPlanDetailRequest request;
    request.plan_index_code = plan_code.toStdString();
    GetPlanDetailResponse response;
    LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response);
    return response;
  }

  QWidget window;
  std::unique_ptr<TarnPlanView::CStandardViewController> controller;
  std::unique_ptr<TarnPlanView::CTarnAddPlanWidget> editor;
  QStringList tips, questions;
  int closed = 0;
  int answer = 1;
};

}  // namespace TarnTest
