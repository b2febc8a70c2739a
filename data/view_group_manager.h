#pragma once

#include <QObject>
#include <string>

#include "ResourceData/resource_observer.h"

namespace TarnPlanView {

/// Turns the host's notices about the root of all plans into signals. Thread: GUI.
class CViewGroupManager : public QObject, public ResourceData::IResourceObserver {
  Q_OBJECT
 public:
  CViewGroupManager();
  ~CViewGroupManager() override;

  const std::string& GetIndexCode() const { return index_code_; }
  void OnResourceUpdate(const Param& param) override;

 Q_SIGNALS:
  void SignalRootChildAdded(ResourceData::ResourceType child_type);
  void SignalRootChildRemoved(const QString& child_index_code, ResourceData::ResourceType child_type);
  void SignalViewModelDataChanged();

 private:
  const std::string index_code_;  // of the root of all plans
};

}  // namespace TarnPlanView
