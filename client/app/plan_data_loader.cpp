#include "app/plan_data_loader.h"

#include <TarnPlanView/view_model_data_manager_export.h>

namespace TarnClient {

using TarnPlanView::CViewModelDataManagerExport;

namespace {

constexpr int kPollMs = 100;

}  // namespace

CPlanDataLoader::CPlanDataLoader(QObject* parent) : QObject(parent) {
  poll_.setInterval(kPollMs);
  connect(&poll_, &QTimer::timeout, this, &CPlanDataLoader::Poll);
}

void CPlanDataLoader::Start() {
  since_start_.start();
  auto& data = CViewModelDataManagerExport::Instance();
  data.InitManager();
  data.InitViewConfigInterfacePointer();
  data.AnalysisResourceInitViewGroup();
  data.AnalysisResourceInitView();
  data.LoadAllViewManagerModelData();
  poll_.start();
  // Not at once: whoever hears of it may want to end the event loop, which has to run for that.
  QTimer::singleShot(0, this, &CPlanDataLoader::Poll);
}

void CPlanDataLoader::Poll() {
  if (!poll_.isActive()) {
    return;
  }
  auto& data = CViewModelDataManagerExport::Instance();
  if (!data.IsViewResourceDownLoadFinish() || !data.IsViewModelInitFinish()) {
    Q_EMIT SignalWaiting(static_cast<int>(since_start_.elapsed() / 1000));
    return;
  }
  poll_.stop();
  Q_EMIT SignalReady();
}

}  // namespace TarnClient
