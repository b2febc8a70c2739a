#pragma once

#include "TarnHost/camera_address.h"
#include "store/store_text.h"

// The rules of TarnHost/camera_address.h with texts for the store: each answers what is wrong, or nothing.
namespace TarnHost::Store {

CStoreText ReadStreamAddress(const QString& text, CameraAddress* address);
CStoreText ReadDeviceAddress(const QString& text, CameraAddress* address);
CStoreText AddSignIn(const CameraAddress& address, CameraSignIn* all);
CStoreText FaultOfCameraName(const QString& name);
CStoreText FaultOfRegionName(const QString& name);
CStoreText FaultOfUser(const QString& user);
CStoreText FaultOfSecret(const CSecret& secret);
CStoreText FaultOfAuthority(const QString& pem);

}  // namespace TarnHost::Store
