// A client around the plan panel: the lines between the two marks are all that it takes.
#include <TarnPlanView/plan_item_role.h>
#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/plugin_shutdown.h>
#include <TarnPlanView/standard_plan_model.h>
#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/standard_view_controller.h>
#include <TarnPlanView/view_extern_widget.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QApplication>
#include <QLocale>
#include <QSplitter>
#include <QTextStream>
#include <QTranslator>
#include <cstdio>

#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"
#include "live_view.h"

namespace {

/// The panel beside the area that its plans play on.
class Window : public QSplitter {
 public:
  Window() {
    auto* window = this;
    auto* live_view = new LiveView;
    // [embed]
    auto* texts = new QTranslator(qApp);  // or the panel shows the keys of its texts
    if (texts->load(QLocale(), "tarn", "_", TARN_TEXTS) || texts->load("tarn_en", TARN_TEXTS)) {
      QCoreApplication::installTranslator(texts);
    }
    auto& plans = TarnPlanView::CViewModelDataManagerExport::Instance();  // after the plan service is up and logged in
    plans.InitManager();
    plans.InitViewConfigInterfacePointer();
    plans.AnalysisResourceInitViewGroup();
    plans.AnalysisResourceInitView();
    plans.LoadAllViewManagerModelData();
    auto* handle = plans.GetViewManagerByTheme("0", TarnPlanView::PublicTheme);
    auto* tree = qobject_cast<TarnPlanView::CStandardPlanModel*>(handle->GetPlanViewModel());
    auto* controller = new TarnPlanView::CStandardViewController(tree);
    auto* panel = new TarnPlanView::CViewExternWidget(window);  // shows that it waits until the plans are there
    panel->SetModel(tree);
    panel->SetStandardViewControl(controller);
    panel->SetMonitorId("0");
    panel->SetMonitorPointer(live_view);
    connect(controller, &TarnPlanView::CStandardViewController::SignalPlayPlanView, live_view, &LiveView::Play);
    connect(panel, &TarnPlanView::CViewExternWidget::SignalMessageTipNeeded, live_view, &LiveView::ShowMessage);
    // [embed]
    connect(live_view, &LiveView::SignalPlaying, panel, &TarnPlanView::CViewExternWidget::SetCurPlayItemByIndexCode);
    addWidget(live_view);
    panel_ = panel;
    live_view_ = live_view;
  }

  // Opens groups until a plan comes in, plays that, opens a dialog, lists all texts and ends: for a run of a test.
  void PlayTheFirstPlan() {
    auto* tree = panel_->GetPlanViewTree();
    connect(
        tree->model(), &QAbstractItemModel::rowsInserted, panel_,
        [this, tree](const QModelIndex& parent, int first) {
          const QModelIndex row = tree->model()->index(first, 0, parent);
          if (row.data(TarnPlanView::IsGroupRole).toBool()) {
            tree->ExpandAsync(row);
          } else {
            panel_->PlayPlanByIndex(row);
          }
        },
        Qt::QueuedConnection);
    connect(
        live_view_, &LiveView::SignalPlaying, qApp,
        [this] {
          QTextStream(stdout) << live_view_->text() << Qt::endl;
          panel_->OnPopupSavePlanAsDlg(QPoint());
          ListTexts();
          QCoreApplication::quit();
        },
        Qt::QueuedConnection);
  }

  void StopWorking() { panel_->StopWorking(); }

 private:
  // What all widgets say to those who see them and to those who hear them, a line each.
  static void ListTexts() {
    for (const QWidget* widget : QApplication::allWidgets()) {
      for (const char* property : {"text", "placeholderText", "toolTip", "accessibleName"}) {
        const QString text = widget->property(property).toString();
        if (!text.isEmpty()) {
          std::printf("text: %s\n", qUtf8Printable(text.simplified()));
        }
      }
    }
  }

  TarnPlanView::CViewExternWidget* panel_;
  LiveView* live_view_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  TarnHost::PlanStoreOptions options;
  options.url = QStringLiteral("sqlite::memory:");
  options.first_content = &TarnHost::MakeDemoSite;
  QString error;
  const auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !store->LogIn({store->DefaultUser()}).IsDone()) {
    QTextStream(stderr) << error << Qt::endl;
    return 2;
  }
  TarnHost::InstallHostServices(store);
  {
    Window window;
    window.resize(1000, 600);
    if (app.arguments().contains(QStringLiteral("--play-first"))) {
      window.PlayTheFirstPlan();
    }
    window.show();
    QApplication::exec();
    window.StopWorking();
  }
  TarnPlanView::CViewModelDataManagerExport::Instance().UninitManager();
  TarnHost::InstallHostServices(nullptr);
  store->Close();
  TarnPlanView::ReleasePlugin();
  return 0;
}
