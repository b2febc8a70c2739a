#include "store/camera_writer.h"

#include "plan_rules/rights.h"
#include "store/camera_batch.h"
#include "store/camera_rules.h"
#include "store/store_texts.h"
#include "store/text_rules.h"

namespace TarnHost::Store {

void RequireRightToConfigure(const CSiteDirectory& site, int32_t user) {
  const auto found = site.FindUser(user);
  if (found == nullptr || found->rights.count(view_plugin_protocol::kConfigureRight) == 0) {
    throw CStoreError(CStoreError::kNotPermitted, kNoConfigureRight);
  }
}

CameraChangesMade CCameraWriter::Change(const CameraChanges& changes, int32_t user) {
  RequireRightToConfigure(site_, user);
  return session_.Write([&] {
    CCameraBatch batch(session_.Repository().Cameras());
    CameraChangesMade made = batch.Run(changes);
    if (made.changed > 0) {
      session_.CamerasChanged();
    }
    return made;
  });
}

void CCameraWriter::SetAuthority(const std::string& pem, int32_t user) {
  RequireRightToConfigure(site_, user);
  const QString text = CheckedText(pem);
  const CStoreText fault = FaultOfAuthority(text);
  if (!fault.IsEmpty()) {
    throw CStoreError(CStoreError::kRefused, fault);
  }
  session_.Write([&] {
    CCameraRepository& repository = session_.Repository().Cameras();
    if (repository.Authority() != pem) {
      repository.SetAuthority(pem);
      session_.CamerasChanged();
    }
    return true;
  });
}

}  // namespace TarnHost::Store
