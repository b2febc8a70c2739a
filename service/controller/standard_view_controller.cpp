#include "standard_view_controller.h"

#include <QPointer>
#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "change_call.h"
#include "host_calls/ask.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_node_ref.h"
#include "plan_rows.h"
#include "plan_rules/default_view.h"
#include "plan_rules/families.h"
#include "plan_rules/window_content.h"
#include "qt/live_index.h"
#include "standard_plan_model.h"
#include "view_config_manager.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

using HostCalls::Ask;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using namespace view_plugin_protocol;

namespace {

/// Reports how a request for a change ended: `announce` and then the tip, or the host's text. A slot may end the
/// controller in between.
template <class Response, class Announce>
void Settle(CStandardViewController* controller, const HostCalls::Result<Response>& answer, const QString& tip,
            const Announce& announce) {
  using MarUIControl::CNomalMessage;
  if (!answer.ok) {
    Q_EMIT controller->signalShowMessage(StringToQString(answer.response.error_info), CNomalMessage::Failure);
    return;
  }
  const QPointer<CStandardViewController> alive(controller);
  announce();
  if (alive) {
    Q_EMIT alive->signalShowMessage(tip, CNomalMessage::Success);
  }
}

/// `code`: of the plan or group that the call was about.
template <class Response>
CallAnswer AnswerOf(const HostCalls::Result<Response>& result, const std::string& code) {
  if (result.ok) {
    return {true, StringToQString(code)};
  }
  return {false, StringToQString(result.response.error_info), result.response.error_kind};
}

/// The same of a deletion.
template <class Response>
CallAnswer AnswerOfDeletion(const HostCalls::Result<Response>& result, const std::string& code) {
  CallAnswer answer = AnswerOf(result, code);
  answer.restorable_seconds = result.response.restorable_seconds;
  return answer;
}

CallAnswer AnswerOfGroupDeletion(const HostCalls::Result<DeletePlanGroupResponse>& result, const std::string& code) {
  CallAnswer answer = AnswerOfDeletion(result, code);
  answer.deleted_groups = result.response.deleted_groups;
  answer.deleted_plans = result.response.deleted_plans;
  return answer;
}

std::string NameOf(const QModelIndex& index) {
  return QStringToString(index.data(Qt::DisplayRole).toString());
}

AddPlanGroupRequest MakeAddGroupRequest(const QModelIndex& parent, const QString& name) {
  AddPlanGroupRequest request;
  request.name = QStringToString(name);
  request.parent_index_code = QStringToString(GroupCodeOf(parent));
  switch (TypeOf(parent)) {
    case PublicRootItem:
    case PublicGroupItem:
      request.kind = PublicFamily;
      break;
    case ReceivedRootItem:
    case ReceivedGroupItem:
      request.kind = ReceivedFamily;
      request.flag = true;
      break;
    default:
      request.kind = OwnFamily;
      break;
  }
  return request;
}

DeletePlanResquest MakeDeletePlanRequest(const QModelIndex& index) {
  const QModelIndex parent = index.parent();
  DeletePlanResquest request;
  request.plan_index_code = CViewPublicDef::GetIndexCode(index);
  request.plan_name = NameOf(index);
  request.group_index_code = CViewPublicDef::GetIndexCode(parent);
  request.group_name = NameOf(parent);
  request.reserved = "";
  return request;
}

QString TooManyWindows() {
  return CStandardViewController::tr("Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg");
}

}  // namespace

struct CStandardViewController::CStandardViewControllerData {
  CStandardPlanModel* model;
  QPointer<QObject> play_listener;
  std::function<void(const CallAnswer&, const std::string& code)> play_answered;
};

CStandardViewController::CStandardViewController(CStandardPlanModel* model)
    : QObject(model), data_(std::make_shared<CStandardViewControllerData>()) {
  data_->model = model;
  registerMetaTypes();
  if (model) {
    connect(model, &CStandardPlanModel::SignalFinshCreateRootPlan, this,
            &CStandardViewController::SignalFinshCreateRootPlan);
  }
  connectDataManager();
}

CStandardViewController::~CStandardViewController() = default;

void CStandardViewController::registerMetaTypes() {
  qRegisterMetaType<GetPlanGroupsResponse>("view_plugin_protocol::GetPlanGroupsResponse");
  qRegisterMetaType<GetPlansInGroupResponse>("view_plugin_protocol::GetPlansInGroupResponse");
  qRegisterMetaType<AddPlanRequest>("view_plugin_protocol::AddPlanRequest");
  qRegisterMetaType<UpdatePlanRequest>("view_plugin_protocol::UpdatePlanRequest");
  qRegisterMetaType<GetPlanDetailResponse>("view_plugin_protocol::GetPlanDetailResponse");
  qRegisterMetaType<MarUIControl::CNomalMessage::AlertState>("MarUIControl::CNomalMessage::AlertState");
  qRegisterMetaType<GetClientDefaultViewConfigResponse>("view_plugin_protocol::GetClientDefaultViewConfigResponse");
  qRegisterMetaType<ClienDefaultViewConfigReponse>("view_plugin_protocol::ClienDefaultViewConfigReponse");
}

void CStandardViewController::connectDataManager() {
  using Self = CStandardViewController;
  using Manager = CViewModelDataManager;
  Manager* manager = &Manager::Instance();
  connect(this, &Self::SignalGetPlanGroupListSucc, manager, &Manager::OnGetPlanGroupListSucc);
  connect(this, &Self::SignalAddPlanGroupSucc, manager, &Manager::OnAddPlanGroupSucc);
  connect(this, &Self::SignalAddPlanSucc, manager, &Manager::OnAddPlanSucc);
  connect(this, &Self::SignalDeletePlanGroupSucc, manager, &Manager::OnDeletePlanGroupPlanSucc);
  connect(this, &Self::SignalDeletePlanSucc, manager, &Manager::OnDeletePlanGroupPlanSucc);
  connect(this, &Self::SignalUpdatePlanGroupNameSucc, manager, &Manager::OnUpdatePlanGroupNameSucc);
  connect(this, &Self::SignalUpdatePlanSucc, manager, &Manager::OnUpdatePlanSucc);
  connect(this, &Self::signalSetNodeLoaded, manager, &Manager::OnSetGroupNodeLoaded);
  connect(this, &Self::SignalGetViewConfigData, manager, &Manager::OnGetViewConfigData);
  connect(this, &Self::SignalSetViewConfigData, manager, &Manager::OnSetViewConfigData);
}

void CStandardViewController::showSuccess(const QString& text) {
  Q_EMIT signalShowMessage(text, MarUIControl::CNomalMessage::Success);
}

void CStandardViewController::showFailure(const std::string& error_info) {
  Q_EMIT signalShowMessage(StringToQString(error_info), MarUIControl::CNomalMessage::Failure);
}

void CStandardViewController::AddPlanGroupByIndexName(const QModelIndex& parent, const QString& name,
                                                      const PlanAnswer& answer) {
  if (!parent.isValid() || name.isEmpty()) {
    answer({});
  } else {
    addPlanGroupByIndexNameThread(parent, name, answer);
  }
}

void CStandardViewController::addPlanGroupByIndexNameThread(const QModelIndex& parent, const QString& name,
                                                            const PlanAnswer& reply) {
  const AddPlanGroupRequest request = MakeAddGroupRequest(parent, name);
  const CPlanNodeRef node(parent);
  const int notices = CViewModelDataManager::Instance().GetNoticeCount();
  Ask(&CViewBusinessInterfaceMgr::AddPlanGroup, request)
      .AsCurrentUser()
      .Then(this, [this, request, node, notices, reply](const auto& answer) {
        const std::string& code = answer.response.index_code;
        Settle(this, answer, tr("AddASuccess"), [&] {
          PlanGroup group;
          group.name = request.name;
          group.parent_index_code = request.parent_index_code;
          group.index_code = code;
          group.type = request.kind;
          Q_EMIT SignalAddPlanGroupSucc(TarnQt::CLiveIndex(node.Resolve()), group);
        });
        RecheckIfNoticed(notices, code, true);
        reply(AnswerOf(answer, code));
      });
}

void CStandardViewController::DeletePlanGroupByIndex(const QModelIndex& index, const PlanAnswer& answer) {
  if (GroupCodeOf(index).isEmpty()) {
    answer({});
  } else {
    deletePlanGroupByIndexThread(index, answer);
  }
}

void CStandardViewController::deletePlanGroupByIndexThread(const QModelIndex& index, const PlanAnswer& reply) {
  DeletePlanGroupRequest request;
  request.index_code = QStringToString(GroupCodeOf(index));
  request.name = NameOf(index);
  request.type = CViewPublicDef::GetIndexType(index);
  const CPlanNodeRef node(index);
  AskForChange(&CViewBusinessInterfaceMgr::DeletePlanGroup, request, request.index_code)
      .Then(this, [this, node, reply, code = request.index_code](const auto& answer) {
        Settle(this, answer, tr("DeleteTheSuccess"),
               [&] { Q_EMIT SignalDeletePlanGroupSucc(TarnQt::CLiveIndex(node.Resolve())); });
        reply(AnswerOfGroupDeletion(answer, code));
      });
}

void CStandardViewController::DeletePlanByIndex(const QModelIndex& index, const PlanAnswer& answer) {
  deletePlanByIndexThread(index, answer);
}

void CStandardViewController::deletePlanByIndexThread(const QModelIndex& index, const PlanAnswer& reply) {
  const CPlanNodeRef node(index);
  const DeletePlanResquest request = MakeDeletePlanRequest(index);
  AskForChange(&CViewBusinessInterfaceMgr::DeletePlan, request, request.plan_index_code)
      .Then(this, [this, node, reply, code = request.plan_index_code](const auto& answer) {
        Settle(this, answer, tr("DeleteTheSuccess"),
               [&] { Q_EMIT SignalDeletePlanSucc(TarnQt::CLiveIndex(node.Resolve())); });
        reply(AnswerOfDeletion(answer, code));
      });
}

void CStandardViewController::RestoreDeleted(const RestoreDeletedRequest& request, const QString& parent_code,
                                             const PlanAnswer& answer) {
  AskForChange(&CViewBusinessInterfaceMgr::RestoreDeleted, request, request.index_code)
      .Then(this, [this, request, parent_code, answer](const auto& restored) {
        if (restored.ok) {
          CViewModelDataManager::Instance().OnRestored(parent_code, request.is_group);
        } else {
          showFailure(restored.response.error_info);
        }
        std::string code = restored.response.index_code;
        if (code.empty()) {
          code = request.index_code;
        }
        answer(AnswerOf(restored, code));
      });
}

void CStandardViewController::UpdatePlanGroupName(const QModelIndex& index, const QString& name) {
  updatePlanGroupNameThread(index, name);
}

void CStandardViewController::updatePlanGroupNameThread(const QModelIndex& index, const QString& name) {
  UpdatePlanGroupRequest request;
  request.index_code = CViewPublicDef::GetIndexCode(index);
  request.name = QStringToString(name);
  request.flag = TypeOf(index) == ReceivedGroupItem;
  const CPlanNodeRef node(index);
  const int notices = CViewModelDataManager::Instance().GetNoticeCount();
  AskForChange(&CViewBusinessInterfaceMgr::UpdatePlanGroup, request, request.index_code)
      .Then(this, [=](const auto& answer) {
        Settle(this, answer, tr("EditSuccess"),
               [&] { Q_EMIT SignalUpdatePlanGroupNameSucc(TarnQt::CLiveIndex(node.Resolve()), name); });
        if (answer.ok) {
          RecheckIfNoticed(notices, request.index_code, true);
        }
      });
}

void CStandardViewController::AddPlanParam(const AddPlanRequest& request, const PlanAnswer& answer) {
  if (IsExceedAddLimit(request.pages)) {
    answer({false, TooManyWindows(), Refused});
  } else {
    addPlanParamThread(request, answer);
  }
}

void CStandardViewController::addPlanParamThread(const AddPlanRequest& request, const PlanAnswer& reply) {
  const int notices = CViewModelDataManager::Instance().GetNoticeCount();
  Ask(&CViewBusinessInterfaceMgr::AddPlan, request).AsCurrentUser().Then(this, [=](const auto& answer) {
    const std::string& code = answer.response.index_code;
    Settle(this, answer, tr("SaveSuccessfulYCFI2BGO"),
           [&] { Q_EMIT SignalAddPlanSucc(request, StringToQString(code)); });
    RecheckIfNoticed(notices, code, false);
    reply(AnswerOf(answer, code));
  });
}

void CStandardViewController::UpdatePlanParam(const UpdatePlanRequest& request, const QString& old_name,
                                              const PlanAnswer& answer, FailureText failure) {
  if (IsExceedAddLimit(request.pages)) {
    answer({false, TooManyWindows(), Refused});
  } else {
    updatePlanParamThread(request, old_name, answer, failure);
  }
}

void CStandardViewController::updatePlanParamThread(const UpdatePlanRequest& request, const QString& old_name,
                                                    const PlanAnswer& reply, FailureText failure) {
  Q_UNUSED(old_name)  // for those who watch the request; the host does not need it
  const int notices = CViewModelDataManager::Instance().GetNoticeCount();
  AskForChange(&CViewBusinessInterfaceMgr::UpdatePlan, request, request.plan_index_code)
      .Then(this, [=](const auto& answer) {
        if (answer.ok || failure == FailureText::ByMessage) {
          Settle(this, answer, tr("SaveSuccessfulYCFI2BGO"), [&] { Q_EMIT SignalUpdatePlanSucc(request); });
        }
        if (answer.ok) {
          RecheckIfNoticed(notices, request.plan_index_code, false);
        }
        reply(AnswerOf(answer, request.plan_index_code));
      });
}

void CStandardViewController::PlayPlanViewByIndexCode(const std::string& indexCode) {
  if (!indexCode.empty()) {
    downloadPlanInfoThread(indexCode);
  }
}

void CStandardViewController::downloadPlanInfoThread(const std::string& indexCode) {
  GetPlanDetailRequest request;
  request.plan_index_code = indexCode;
  request.play = true;
  Ask(&CViewBusinessInterfaceMgr::GetPlanDetail, request).Then(this, [this, indexCode](const auto& answer) {
    const QPointer<CStandardViewController> alive(this);
    if (answer.ok) {
      Q_EMIT SignalPlayPlanView(answer.response);
    } else {
      showFailure(answer.response.error_info);
    }
    if (alive && data_->play_listener) {
      data_->play_answered(AnswerOf(answer, indexCode), indexCode);
    }
  });
}

void CStandardViewController::SetPlayListener(
    QObject* listener, const std::function<void(const CallAnswer&, const std::string& code)>& answered) {
  data_->play_listener = listener;
  data_->play_answered = answered;
}

void CStandardViewController::GetPlanInfoByIndexCode(const std::string& indexCode, const PlanAnswer& answer) {
  getPlanInfoByIndexCodeThread(indexCode, answer);
}

void CStandardViewController::getPlanInfoByIndexCodeThread(const std::string& indexCode, const PlanAnswer& reply) {
  GetPlanDetailRequest request;
  request.plan_index_code = indexCode;
  Ask(&CViewBusinessInterfaceMgr::GetPlanDetail, request).Then(this, [this, reply](const auto& answer) {
    if (answer.ok) {
      Q_EMIT SignalGetPlanInfo(answer.response);
    } else {
      showFailure(answer.response.error_info);
    }
    reply(AnswerOf(answer, answer.response.index_code));
  });
}

void CStandardViewController::AddOperationPlayPlan(const QString& name, bool automatic, bool from_history) {
  if (!name.isEmpty()) {
    addOperationPlayPlanThread(name, automatic, from_history);
  }
}

void CStandardViewController::addOperationPlayPlanThread(const QString& name, bool automatic, bool from_history) {
  AddPlanLogRequestParam request;
  request.name = QStringToString(name);
  request.automatic = automatic;
  request.from_history = from_history;
  Ask(&CViewBusinessInterfaceMgr::AddPlanLog, request)
      .AsCurrentUser()
      .InOrder(PlayLogOrder(), {})
      .Then(this, [](const auto&) {});
}

void CStandardViewController::InitGetViewDefaultConfig(const GetClientDefaultViewConfigRequest& request) {
  InitGetViewDefaultConfig(request, [](const CallAnswer&) {});
}

void CStandardViewController::InitGetViewDefaultConfig(const GetClientDefaultViewConfigRequest& request,
                                                       const PlanAnswer& answer) {
  initGetViewConfig(request, answer);
}

void CStandardViewController::initGetViewConfig(const GetClientDefaultViewConfigRequest& request,
                                                const PlanAnswer& reply) {
  Ask(&CViewBusinessInterfaceMgr::GetClientViewConfig, request).Then(this, [this, reply](const auto& answer) {
    std::string code;
    if (!answer.ok) {
      showFailure(answer.response.error_info);
    } else if (answer.response.index_code != kNoDefaultViewCode) {
      code = answer.response.index_code;
      Q_EMIT SignalConfigPlayView(StringToQString(code), answer.response.type);
    }
    reply(AnswerOf(answer, code));
  });
}

bool CStandardViewController::GetClientViewDefaultConfig(const GetClientDefaultViewConfigRequest& request) {
  return getViewDefaultConfig(request);
}

bool CStandardViewController::getViewDefaultConfig(const GetClientDefaultViewConfigRequest& request) {
  GetClientDefaultViewConfigResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetClientViewConfig(request, response)) {
    showFailure(response.error_info);
    return false;
  }
  CViewModelDataManager::Instance().OnGetViewConfigData(response);
  return true;
}

bool CStandardViewController::SetClientViewDefaultConfig(const ClienDefaultViewConfigRequest& request) {
  return setViewDefaultConfig(request);
}

bool CStandardViewController::setViewDefaultConfig(const ClienDefaultViewConfigRequest& request) {
  ClienDefaultViewConfigReponse response;
  if (!CViewBusinessInterfaceMgr::Instance().SetClientViewConfig(request, response)) {
    showFailure(response.error_info);
    return false;
  }
  CViewModelDataManager::Instance().OnSetViewConfigData(response);
  showSuccess(tr("SaveSuccessfulYCFI2BGO"));
  return true;
}

bool CStandardViewController::IsExceedAddLimit(const std::list<PlanPage>& pages) {
  if (FilledWindowsOf(pages) <= kMaxFilledWindows) {
    return false;
  }
  Q_EMIT signalShowMessage(TooManyWindows(), MarUIControl::CNomalMessage::Failure);
  return true;
}

bool CStandardViewController::event(QEvent* event) {
  return QObject::event(event);
}

}  // namespace TarnPlanView
