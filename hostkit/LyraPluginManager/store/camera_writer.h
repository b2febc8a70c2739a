#pragma once

#include <cstdint>
#include <string>

#include "TarnHost/camera_access.h"
#include "store/site_directory.h"
#include "store/store_session.h"

namespace TarnHost::Store {

/// Throws CStoreError for a user who may not configure the site.
void RequireRightToConfigure(const CSiteDirectory& site, int32_t user);

/// The calls that change the site's regions and cameras, with the rules they obey; they take the right to configure.
/// Every refusal is a CStoreError with a text for the user and leaves nothing behind. Thread: the database thread.
class CCameraWriter {
 public:
  CCameraWriter(CStoreSession& session, const CSiteDirectory& site) : session_(session), site_(site) {}

  CameraChangesMade Change(const CameraChanges& changes, int32_t user);
  /// Certificates in PEM form; an empty text leaves it to each desk's system whom to trust.
  void SetAuthority(const std::string& pem, int32_t user);

 private:
  CStoreSession& session_;
  const CSiteDirectory& site_;
};

}  // namespace TarnHost::Store
