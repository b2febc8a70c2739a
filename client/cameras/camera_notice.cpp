#include "cameras/camera_notice.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "TarnHost/camera_access.h"

namespace TarnClient {

namespace {

void Observe(ResourceData::IResourceObserver* observer, bool on) {
  LyraPluginManager::CViewBusinessInterfaceMgr::Instance().ViewRegisterResourceUpdate(
      observer, {TarnHost::kCameraResource, TarnHost::kCameraResourceCode, int(on)});
}

}  // namespace

CCameraNotice::CCameraNotice(QObject* parent) : QObject(parent) {
  Observe(this, true);
}

CCameraNotice::~CCameraNotice() {
  Observe(this, false);
}

void CCameraNotice::OnResourceUpdate(const Param&) {
  Q_EMIT SignalCamerasChanged();
}

}  // namespace TarnClient
