#include "standard_plan_model.h"

#include <QBrush>
#include <QFont>
#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"
#include "item_type.h"
#include "plan_code_index.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "qt/first_rows.h"
#include "recent_level.h"
#include "view_config_manager.h"
#include "view_group_item.h"

namespace TarnPlanView {

using view_plugin_protocol::GetPlanGroupsRequest;
using view_plugin_protocol::GetPlanGroupsResponse;

namespace {

constexpr int kPlaceholderPixelSize = 13;

GetPlanGroupsRequest TopLevelRequest() {
  GetPlanGroupsRequest request;
  request.parent_index_code = kTopLevelCode;
  return request;
}

void SetRootIdentity(QStandardItem* item, ThemeNodeType theme) {
  switch (theme) {
    case PublicTheme:
      item->setData(PublicRootItem, ItemTypeRole);
      item->setData(QString::fromLatin1(kPublicRootCode), GroupIndexCodeRole);
      break;
    case OwnTheme:
      item->setData(OwnRootItem, ItemTypeRole);
      item->setData(QString::fromLatin1(kOwnRootCode), GroupIndexCodeRole);
      break;
    case ReceivedTheme:
      item->setData(ReceivedRootItem, ItemTypeRole);
      item->setData(QString::fromLatin1(kReceivedRootCode), GroupIndexCodeRole);
      break;
  }
}

}  // namespace

class CStandardPlanModel::Private {
 public:
  explicit Private(ViewManagerParam p) : param(std::move(p)) {}

  ViewManagerParam param;
  QString playing_code;
  bool loaded = false;
  bool group_can_be_selected = false;
  CPlanCodeIndex* index = nullptr;  // child of the model
  CRecentLevel level;
  HostCalls::CCallScope root_calls;  // of the rows that are there now
};

CStandardPlanModel::CStandardPlanModel(ViewManagerParam param, QObject* parent)
    : MarUIControl::CStandardItemModel(parent), d_(std::make_unique<Private>(std::move(param))) {
  d_->level.ForgetWithChangesOf(this);  // first: others that hear of a change may ask for rows
  d_->index = new CPlanCodeIndex(this);
  qRegisterMetaType<QList<view_plugin_protocol::PlanGroup>>("QList<view_plugin_protocol::PlanGroup>");
  qRegisterMetaType<QList<view_plugin_protocol::PlanBasicInfo>>("QList<view_plugin_protocol::PlanBasicInfo>");
  qRegisterMetaType<GetPlanGroupsResponse>("view_plugin_protocol::GetPlanGroupsResponse");
  connect(this, &CStandardPlanModel::SignalGetRootPlanGroupSucc, this, &CStandardPlanModel::OnAddRootPlanGroup);
}

CStandardPlanModel::~CStandardPlanModel() = default;

ViewManagerParam CStandardPlanModel::GetViewMangageParam() const {
  return d_->param;
}
ThemeNodeType CStandardPlanModel::GetViewManagerThemeNodeType() const {
  return d_->param.type;
}
QString CStandardPlanModel::GetViewManagerMonitorId() const {
  return d_->param.name;
}

void CStandardPlanModel::SetViewGroupSeleted(bool selected) {
  d_->group_can_be_selected = selected;
}
bool CStandardPlanModel::IsGroupCanSelected() const {
  return d_->group_can_be_selected;
}

void CStandardPlanModel::SetPlayingIndexCode(const QString& code) {
  d_->playing_code = code;
}
QString CStandardPlanModel::GetPlayingIndexCode() const {
  return d_->playing_code;
}

void CStandardPlanModel::LoadPlanModel() {
  if (d_->loaded) {
    return;
  }
  if (CViewConfigManager::Instance().IsLoadAll()) {
    GetPlanGroupsResponse response;
    if (LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanGroups(TopLevelRequest(), response)) {
      AddRootNode(response);
    }
  } else {
    LoadRootNode();
  }
  // Also after a failed call: one load a life of the rows, whatever came of it.
  d_->loaded = true;
}

void CStandardPlanModel::LoadRootNode() {
  // A failed call delivers the empty response, which adds no rows.
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanGroups, TopLevelRequest())
      .Within(d_->root_calls)
      .Then(this, [this](const auto& answer) { Q_EMIT SignalGetRootPlanGroupSucc(answer.response); });
}

void CStandardPlanModel::OnAddRootPlanGroup(const GetPlanGroupsResponse& lst_group) {
  AddRootNode(lst_group);
}

void CStandardPlanModel::AddRootNode(const GetPlanGroupsResponse& response) {
  AddRootRows(CRowRecord::OfAll(response.groups));
}

void CStandardPlanModel::AddRootRows(const QVector<CRowRecord::Ptr>& roots) {
  QList<QStandardItem*> rows;
  if (d_->param.flag9) {
    rows.append(makePlaceholder());
  }
  for (const CRowRecord::Ptr& root : roots) {
    auto* item = new CViewGroupItem(d_->param, root);
    SetRootIdentity(item, d_->param.type);
    rows.append(item);
  }
  TarnQt::AppendRows(invisibleRootItem(), rows);
}

QStandardItem* CStandardPlanModel::makePlaceholder() {
  auto* item = new QStandardItem(QLatin1Char('<') + tr("Empty") + QLatin1Char('>'));
  item->setData(true, ItemMarkRole);
  item->setData(PlaceholderItem, ItemTypeRole);
  item->setData(QString::fromLatin1(kPlaceholderCode), GroupIndexCodeRole);
  QFont font = item->font();
  font.setFamily(QStringLiteral("Segoe UI Semibold"));
  font.setPixelSize(kPlaceholderPixelSize);
  item->setFont(font);
  item->setForeground(QBrush(QColor(51, 51, 51, 255)));
  item->setEditable(false);
  return item;
}

void CStandardPlanModel::UninitModelRootItem() {
  removeRows(0, rowCount(), QModelIndex());
  d_->loaded = false;
  d_->root_calls.Drop();
}

void CStandardPlanModel::FinishAddChildItems(const QModelIndex& index) {
  Q_EMIT SignalFinshAsynchronous(index, true);
}

bool CStandardPlanModel::FindItemByIndexCode(const QString& code, bool isGroup) const {
  return FindTargetItemByIndexCode(code, isGroup) != nullptr;
}

QModelIndex CStandardPlanModel::FindIndexByIndexCode(const QString& code, bool isGroup) const {
  if (code.isEmpty()) {
    return {};
  }
  const CPlanCodeIndex::Place place = d_->index->FindPlace(code, isGroup);
  return place.parent ? createIndex(place.row, 0, place.parent) : QModelIndex();
}

QStandardItem* CStandardPlanModel::FindTargetItemByIndexCode(const QString& code, bool isGroup) const {
  return code.isEmpty() ? nullptr : d_->index->Find(code, isGroup);
}

QStandardItem* CStandardPlanModel::FindItemByIndex(const QModelIndex& index) const {
  if (QStandardItem* item = itemFromIndex(index)) {
    return item;
  }
  return FindTargetItemByIndexCode(CodeOfRow(index), index.data(IsGroupRole).toBool());
}

QVector<CRowRecord::Ptr> CStandardPlanModel::WithoutRow(const QVector<CRowRecord::Ptr>& records) const {
  return d_->index->WithoutRow(records);
}

QStandardItem* CStandardPlanModel::FindItemPlanPlaying() const {
  return d_->index->FindPlaying();
}

QModelIndex CStandardPlanModel::index(int row, int column, const QModelIndex& parent) const {
  if (column == 0 && d_->level.Has(row, parent)) {
    return createIndex(row, 0, d_->level.Parent());
  }
  const QModelIndex index = CStandardItemModel::index(row, column, parent);
  if (index.isValid()) {
    d_->level.Note(parent, static_cast<QStandardItem*>(index.internalPointer()), rowCount(parent));
  }
  return index;
}

QMap<int, QVariant> CStandardPlanModel::itemData(const QModelIndex& index) const {
  QMap<int, QVariant> values = CStandardItemModel::itemData(index);
  if (const auto* row = dynamic_cast<const CRecordItem*>(itemFromIndex(index))) {
    row->AddRecordData(&values);
  }
  return values;
}

bool CStandardPlanModel::setItemData(const QModelIndex& index, const QMap<int, QVariant>& roles) {
  storeEverything(index);
  return CStandardItemModel::setItemData(index, roles);
}

bool CStandardPlanModel::clearItemData(const QModelIndex& index) {
  storeEverything(index);
  return CStandardItemModel::clearItemData(index);
}

void CStandardPlanModel::storeEverything(const QModelIndex& index) {
  if (auto* row = dynamic_cast<CRecordItem*>(itemFromIndex(index))) {
    row->StoreEverything();
  }
}

bool CStandardPlanModel::event(QEvent* event) {
  return QObject::event(event);
}

}  // namespace TarnPlanView
