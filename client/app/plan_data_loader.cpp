#include "app/plan_data_loader.h"

#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <memory>

namespace TarnClient {

using TarnPlanView::CViewModelDataManagerExport;

namespace {

constexpr int kPollMs = 100;

}  // namespace

CPlanDataLoader::CPlanDataLoader(QObject* parent) : QObject(parent) {
  poll_.setInterval(kPollMs);
  connect(&poll_, &QTimer::timeout, this, &CPlanDataLoader::Poll);
}

void CPlanDataLoader::Prepare() {
  auto& data = CViewModelDataManagerExport::Instance();
  data.InitManager();
  data.InitViewConfigInterfacePointer();
  const std::unique_ptr<TarnPlanView::CStandardPlanModelExport> handle(
      data.GetViewManagerByTheme(QStringLiteral("0"), TarnPlanView::PublicTheme));
  if (const QAbstractItemModel* model = handle->GetPlanViewModel()) {
    connect(model, &QAbstractItemModel::rowsInserted, this, &CPlanDataLoader::OnRowsInserted);
  }
}

void CPlanDataLoader::Load() {
  auto& data = CViewModelDataManagerExport::Instance();
  data.AnalysisResourceInitViewGroup();
  data.AnalysisResourceInitView();
  data.LoadAllViewManagerModelData();
}

// A root row that comes in is the beginning of a load, no matter who asked for it.
void CPlanDataLoader::OnRowsInserted(const QModelIndex& parent) {
  if (!parent.isValid()) {
    poll_.start();
    // Not at once: those who hear of it may want to end the event loop, which has to run for that.
    QTimer::singleShot(0, this, &CPlanDataLoader::Poll);
  }
}

void CPlanDataLoader::Poll() {
  auto& data = CViewModelDataManagerExport::Instance();
  if (poll_.isActive() && data.IsViewResourceDownLoadFinish() && data.IsViewModelInitFinish()) {
    poll_.stop();
    Q_EMIT SignalReady();
  }
}

}  // namespace TarnClient
