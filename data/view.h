#pragma once

#include <QObject>
#include <string>

#include "ResourceData/resource_observer.h"

namespace TarnPlanView {

/// Turns the host's notices about one plan into a signal. Thread: GUI.
class CView : public QObject, public ResourceData::IResourceObserver {
  Q_OBJECT
 public:
  explicit CView(std::string index_code);
  ~CView() override;

  const std::string& GetIndexCode() const { return index_code_; }
  void OnResourceUpdate(const Param& param) override;

 Q_SIGNALS:
  void SignalViewChanged(const QString& view_index_code);

 private:
  std::string index_code_;
};

}  // namespace TarnPlanView
