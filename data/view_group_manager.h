#pragma once

#include <QObject>

#include "ResourceData/resource_observer.h"

namespace TarnPlanView {

/// Turns the host's notices about the root of all plans into signals. Thread: GUI.
class CViewGroupManager : public QObject, public ResourceData::IResourceObserver {
  Q_OBJECT
 public:
  CViewGroupManager();
  ~CViewGroupManager() override;

  void OnResourceUpdate(const Param& param) override;

 Q_SIGNALS:
  void SignalRootChildAdded(ResourceData::ResourceType child_type);
  void SignalRootChildRemoved(const QString& child_index_code, ResourceData::ResourceType child_type);
  void SignalViewModelDataChanged();
};

}  // namespace TarnPlanView
