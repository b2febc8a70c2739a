#include "plans/playing_mark.h"

#include "plans/plan_family.h"

namespace TarnClient {

CPlayingMark::CPlayingMark(QObject* parent) : QObject(parent) {
  renew_.setSingleShot(true);
  connect(&renew_, &QTimer::timeout, this, &CPlayingMark::Renew);
}

void CPlayingMark::Watch(CPlanFamily* family) {
  families_.append(family);
  connect(family, &QObject::destroyed, this, [this, family] { families_.removeOne(family); });
  if (family->Model()) {
    connect(family->Model(), &QAbstractItemModel::rowsInserted, this, &CPlayingMark::RenewLater);
    connect(family->Model(), &QAbstractItemModel::modelReset, this, &CPlayingMark::RenewLater);
  }
}

void CPlayingMark::Set(const QString& code, bool makes_current) {
  code_ = code;
  if (!code_.isEmpty() && !makes_current) {
    return Renew();
  }
  for (CPlanFamily* family : qAsConst(families_)) {
    family->MarkPlaying(code_);
  }
}

void CPlayingMark::SetCycling(const QString& group_code) {
  for (CPlanFamily* family : qAsConst(families_)) {
    family->MarkCycling(group_code);
  }
}

void CPlayingMark::RenewLater() {
  if (!code_.isEmpty()) {
    renew_.start(0);
  }
}

void CPlayingMark::Renew() {
  for (CPlanFamily* family : qAsConst(families_)) {
    family->RenewMark(code_);
  }
}

}  // namespace TarnClient
