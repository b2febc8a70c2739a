#include "plans/playing_mark.h"

#include <TarnPlanView/view_model_data_manager_export.h>

namespace TarnClient {

namespace {

void SetPlayState(const QString& code, bool playing) {
  TarnPlanView::CViewModelDataManagerExport::Instance().SetPlanPlayStateByIndexCode(QStringLiteral("0"), code, playing);
}

}  // namespace

CPlayingMark::CPlayingMark(QObject* parent) : QObject(parent) {
  renew_.setSingleShot(true);
  connect(&renew_, &QTimer::timeout, this, &CPlayingMark::Renew);
}

void CPlayingMark::Watch(TarnPlanView::CStandardPlanModel* model) {
  models_.append(model);
  const auto renew_later = [this] {
    if (!code_.isEmpty()) {
      renew_.start(0);
    }
  };
  connect(model, &QAbstractItemModel::rowsInserted, this, renew_later);
  connect(model, &QAbstractItemModel::modelReset, this, renew_later);
}

void CPlayingMark::Set(const QString& code) {
  if (code == code_) {
    Renew();
    return;
  }
  SetPlayState(code_, false);
  code_ = code;
  Renew();
}

void CPlayingMark::Renew() {
  SetPlayState(code_, true);
  for (const auto& model : qAsConst(models_)) {
    if (model) {
      model->SetPlayingIndexCode(code_);
    }
  }
}

}  // namespace TarnClient
