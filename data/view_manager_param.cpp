#include "view_manager_param.h"

#include <utility>

namespace TarnPlanView {

CViewManagerParam::CViewManagerParam() : data_(std::make_shared<ViewManagerParam>()) {}
CViewManagerParam::CViewManagerParam(std::shared_ptr<ViewManagerParam> param) : data_(std::move(param)) {}
CViewManagerParam::CViewManagerParam(const CViewManagerParam&) = default;
CViewManagerParam& CViewManagerParam::operator=(const CViewManagerParam&) = default;
CViewManagerParam::~CViewManagerParam() = default;

std::shared_ptr<ViewManagerParam> CViewManagerParam::GetDataPtr() const {
  return data_;
}

}  // namespace TarnPlanView
