#pragma once

#include <memory>
#include <string>

#include "ResourceData/resource_observer.h"

namespace TarnPlanView {

class CView;

/// Hears the host's notices about one plan for its CView, which is made when there is a first one or somebody asks for
/// it: a tree that has loaded everything watches each plan, and few ever change. Thread: GUI.
class CViewWatch : public ResourceData::IResourceObserver {
 public:
  explicit CViewWatch(std::string index_code);
  ~CViewWatch() override;

  const std::string& GetIndexCode() const { return index_code_; }
  /// The same one as long as the watch lives.
  const std::shared_ptr<CView>& View();
  /// Whether it is the one made here.
  bool Made(const CView& view) const { return view_.get() == &view; }
  /// May be the end of the watch.
  void OnResourceUpdate(const Param& param) override;

 private:
  const std::string index_code_;
  std::shared_ptr<CView> view_;  // null before it is needed
};

}  // namespace TarnPlanView
