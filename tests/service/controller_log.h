#pragma once

#include <QObject>
#include <QStringList>

#include "standard_view_controller.h"

/// Everything a controller says, in order, as "Signal argument...". Indexes appear by their text, "-" when invalid.
class CControllerLog : public QObject {
  Q_OBJECT
 public:
  explicit CControllerLog(TarnPlanView::CStandardViewController* controller) {
    using C = TarnPlanView::CStandardViewController;
    const auto text = [](const QModelIndex& index) { return index.isValid() ? index.data().toString() : "-"; };
    connect(controller, &C::SignalPlayPlanView, this, [this](const auto& plan) { note("play", plan.name); });
    connect(controller, &C::SignalGetPlanInfo, this, [this](const auto& plan) { note("info", plan.name); });
    connect(controller, &C::SignalGetPlanGroupListSucc, this,
            [this, text](const QModelIndex& index, const auto& groups, const auto& plans) {
              lines << QString("list %1 %2 %3").arg(text(index)).arg(groups.groups.size()).arg(plans.plans.size());
            });
    connect(
        controller, &C::SignalAddPlanGroupSucc, this,
        [this, text](const QModelIndex& index, const view_plugin_protocol::PlanGroup& group) {
          lines << QString("group added %1 %2 %3").arg(text(index), QString::fromStdString(group.name)).arg(group.type);
          last_group = group;
        });
    connect(controller, &C::SignalDeletePlanGroupSucc, this,
            [this, text](const QModelIndex& index) { lines << "group deleted " + text(index); });
    connect(controller, &C::SignalDeletePlanSucc, this,
            [this, text](const QModelIndex& index) { lines << "plan deleted " + text(index); });
    connect(controller, &C::SignalUpdatePlanGroupNameSucc, this,
            [this, text](const QModelIndex& index, const QString& name) {
              lines << QString("renamed %1 %2").arg(text(index), name);
            });
    connect(controller, &C::SignalUpdatePlanSucc, this, [this](const auto& plan) { note("updated", plan.plan_name); });
    connect(controller, &C::SignalAddPlanSucc, this, [this](const auto& plan, const QString& code) {
      note("plan added", plan.plan_name);
      last_code = code;
    });
    connect(controller, &C::SignalFinishAnsyGetSubItem, this, [this, text](const QModelIndex& index, bool expand) {
      lines << QString("finished %1 %2").arg(text(index)).arg(expand);
    });
    connect(controller, &C::signalSetNodeLoaded, this,
            [this](const QString& code, bool loaded) { lines << QString("loaded %1 %2").arg(code).arg(loaded); });
    connect(controller, &C::signalShowMessage, this,
            [this](const QString& tip, int state) { lines << QString("tip %1 %2").arg(state).arg(tip); });
    connect(controller, &C::SignalConfigPlayView, this,
            [this](const QString& code, int type) { lines << QString("default %1 %2").arg(code).arg(type); });
    connect(controller, &C::SignalFinshCreateRootPlan, this, [this] { lines << "roots"; });
  }

  /// The lines since the last call.
  QStringList Take() {
    const QStringList taken = lines;
    lines.clear();
    return taken;
  }

  QStringList lines;
  view_plugin_protocol::PlanGroup last_group;
  QString last_code;

 private:
  void note(const char* what, const std::string& name) { lines << QString("%1 %2").arg(what, name.c_str()); }
};
