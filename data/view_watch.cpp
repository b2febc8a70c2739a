#include "view_watch.h"

#include <utility>

#include "view.h"

namespace TarnPlanView {

CViewWatch::CViewWatch(std::string index_code) : index_code_(std::move(index_code)) {}

CViewWatch::~CViewWatch() = default;

const std::shared_ptr<CView>& CViewWatch::View() {
  if (!view_) {
    view_ = std::make_shared<CView>(index_code_);
  }
  return view_;
}

void CViewWatch::OnResourceUpdate(const Param& param) {
  const std::shared_ptr<CView> view = View();  // outlives what it causes
  view->OnResourceUpdate(param);
}

}  // namespace TarnPlanView
