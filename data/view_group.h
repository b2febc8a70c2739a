#pragma once

#include <QObject>
#include <string>

#include "ResourceData/resource_observer.h"

namespace TarnPlanView {

/// Turns the host's notices about one plan group into signals. Thread: GUI.
class CViewGroup : public QObject, public ResourceData::IResourceObserver {
  Q_OBJECT
 public:
  explicit CViewGroup(std::string index_code);
  ~CViewGroup() override;

  const std::string& GetIndexCode() const { return index_code_; }
  void OnResourceUpdate(const Param& param) override;

 Q_SIGNALS:
  void SignalViewGroupNameChanged(const QString& index_code, const QString& new_name);
  void SignalViewGroupChildAdded(const QString& group_index_code, ResourceData::ResourceType child_type);
  void SignalViewGroupChildRemoved(const QString& child_index_code, ResourceData::ResourceType child_type);

 private:
  std::string index_code_;
};

}  // namespace TarnPlanView
