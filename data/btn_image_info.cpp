#include "btn_image_info.h"

#include <utility>

namespace TarnPlanView {

CBtnImageInfo::CBtnImageInfo() : data_(std::make_shared<BtnImageInfo>()) {}
CBtnImageInfo::CBtnImageInfo(const BtnImageInfo& record) : data_(std::make_shared<BtnImageInfo>(record)) {}
CBtnImageInfo::CBtnImageInfo(std::shared_ptr<BtnImageInfo> body) : data_(std::move(body)) {}
CBtnImageInfo::CBtnImageInfo(const CBtnImageInfo& other) = default;
CBtnImageInfo& CBtnImageInfo::operator=(const CBtnImageInfo& other) = default;
CBtnImageInfo::~CBtnImageInfo() = default;

std::shared_ptr<BtnImageInfo> CBtnImageInfo::GetDataPtr() const {
  return data_;
}

QIcon CBtnImageInfo::GetVal_normal_icon() {
  return data_->normal_icon;
}
void CBtnImageInfo::SetVal_normal_icon(const QIcon& value) {
  data_->normal_icon = value;
}
QIcon CBtnImageInfo::GetVal_hover_icon() {
  return data_->hover_icon;
}
void CBtnImageInfo::SetVal_hover_icon(const QIcon& value) {
  data_->hover_icon = value;
}
QIcon CBtnImageInfo::GetVal_selected_icon() {
  return data_->selected_icon;
}
void CBtnImageInfo::SetVal_selected_icon(const QIcon& value) {
  data_->selected_icon = value;
}
QIcon CBtnImageInfo::GetVal_normal_black_icon() {
  return data_->normal_black_icon;
}
void CBtnImageInfo::SetVal_normal_black_icon(const QIcon& value) {
  data_->normal_black_icon = value;
}
QIcon CBtnImageInfo::GetVal_hover_black_icon() {
  return data_->hover_black_icon;
}
void CBtnImageInfo::SetVal_hover_black_icon(const QIcon& value) {
  data_->hover_black_icon = value;
}
QIcon CBtnImageInfo::GetVal_selected_black_icon() {
  return data_->selected_black_icon;
}
void CBtnImageInfo::SetVal_selected_black_icon(const QIcon& value) {
  data_->selected_black_icon = value;
}

}  // namespace TarnPlanView
