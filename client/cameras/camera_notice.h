#pragma once

#include <QObject>

#include "ResourceData/resource_observer.h"

namespace TarnClient {

/// Says when the site's regions or cameras have become others: names, places, addresses, passwords; at which desk does
/// not matter. What they are now is asked of the service. Made once services are installed. Thread: GUI.
class CCameraNotice : public QObject, private ResourceData::IResourceObserver {
  Q_OBJECT
 public:
  explicit CCameraNotice(QObject* parent = nullptr);
  ~CCameraNotice() override;

 Q_SIGNALS:
  void SignalCamerasChanged();

 private:
  void OnResourceUpdate(const Param& param) override;
};

}  // namespace TarnClient
