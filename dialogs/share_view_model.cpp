#include "share_view_model.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/standard_item.h"
#include "MarUIControl/string_conversion.h"
#include "plan_log.h"
#include "qt/first_rows.h"

namespace TarnPlanView {

namespace {

constexpr int kUserIdRole = Qt::UserRole + 1;

void LogUsersUnknown(const char* function) {
  // Log filters in the field know this line by its number.
  constexpr int kLine = 31;
  marlog::Write("LyraClientInfo", marlog::Info, "[%s(%d)] - GetAllUserInfo Get All User Failed",
                QualifiedFunctionName(function).c_str(), kLine);
}

}  // namespace

CShareViewModel::CShareViewModel(QObject* parent) : QStandardItemModel(parent) {
  ResetUsers();
}

CShareViewModel::~CShareViewModel() = default;

void CShareViewModel::ResetUsers() {
  clear();
  auto* all = new MarUIControl::CStandardItem(tr("All"));
  all->setEditable(false);
  all->setCheckable(true);
  appendRow(all);
}

void CShareViewModel::GetUserInfoInsert() {
  auto& host = LyraPluginManager::CViewBusinessInterfaceMgr::Instance();
  view_plugin_protocol::GetCurrentUserResponse current;
  if (!host.GetCurrentUser({}, current)) {
    LogUsersUnknown(__PRETTY_FUNCTION__);
  }
  view_plugin_protocol::UserResponseInfo users;
  if (!host.GetAllUserInfo({}, users)) {
    LogUsersUnknown(__PRETTY_FUNCTION__);
  }
  QList<QStandardItem*> rows;
  for (const auto& user : users.users) {
    if (user.id == current.user.id) {
      continue;
    }
    auto* row = new MarUIControl::CStandardItem(MarUIControl::StringToQString(user.name));
    row->setEditable(false);
    row->setCheckable(true);
    row->setData(user.id, kUserIdRole);
    rows << row;
  }
  TarnQt::AppendRows(item(0), rows);
}

std::string CShareViewModel::GetCheckedUserIds() const {
  std::string ids;
  const QStandardItem* all = item(0);
  for (int row = 0; row < all->rowCount(); ++row) {
    if (all->child(row)->checkState() == Qt::Checked) {
      ids += std::to_string(all->child(row)->data(kUserIdRole).toInt()) + ",";
    }
  }
  if (!ids.empty()) {
    ids.pop_back();
  }
  return ids;
}

void CShareViewModel::ClearCheck() {
  item(0)->setCheckState(Qt::Unchecked);
}

bool CShareViewModel::HasUsers() const {
  return item(0)->rowCount() > 0;
}

}  // namespace TarnPlanView
