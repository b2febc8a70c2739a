#include "deletion_texts.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/result.h"
#include "plan_item_role.h"
#include "view_config_manager.h"
#include "view_extern_widget.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

bool SaysPlan() {
  return CViewConfigManager::Instance().IsShowPlanOrView();
}

bool IsChildPlaying(const QModelIndex& group) {
  const QAbstractItemModel* rows = group.model();
  for (int row = 0; row < rows->rowCount(group); ++row) {
    const QModelIndex child = rows->index(row, 0, group);
    const bool is_group = CViewPublicDef::IsPlanGroup(child);
    if ((is_group && IsChildPlaying(child)) || (!is_group && child.data(PlayingRole).toBool())) {
      return true;
    }
  }
  return false;
}

// False as soon as a group is found whose rows were not all fetched.
bool Count(const QModelIndex& group, RowsInside* inside) {
  const QAbstractItemModel* rows = group.model();
  if (rows->canFetchMore(group)) {
    return false;
  }
  for (int row = 0; row < rows->rowCount(group); ++row) {
    const QModelIndex child = rows->index(row, 0, group);
    if (!CViewPublicDef::IsPlanGroup(child)) {
      ++inside->plans;
      continue;
    }
    ++inside->groups;
    if (!Count(child, inside)) {
      return false;
    }
  }
  return true;
}

std::optional<RowsInside> CountedByHost(const QModelIndex& group) {
  using LyraPluginManager::CViewBusinessInterfaceMgr;
  const QString code = group.data(GroupIndexCodeRole).toString();
  const auto counted = HostCalls::CallNow(&CViewBusinessInterfaceMgr::CountBelowGroup, {code.toStdString()});
  if (!counted.ok) {
    return std::nullopt;
  }
  return RowsInside{counted.response.groups, counted.response.plans};
}

std::optional<RowsInside> InsideOf(const QModelIndex& group) {
  RowsInside inside;
  return Count(group, &inside) ? inside : CountedByHost(group);
}

QString KindText(bool is_group) {
  if (is_group) {
    return CViewExternWidget::tr("group");
  }
  return SaysPlan() ? CViewExternWidget::tr("plan") : CViewExternWidget::tr("view");
}

// Empty for nothing.
QString CountText(const RowsInside& inside) {
  if (inside.groups == 0 && inside.plans == 0) {
    return {};
  }
  const QString groups = CViewExternWidget::tr("%n group(s)", nullptr, inside.groups);
  if (inside.plans == 0) {
    return groups;
  }
  if (inside.groups == 0) {
    return PlansText(inside.plans);
  }
  return FillPlaces(CViewExternWidget::tr("%1 and %2"), {groups, PlansText(inside.plans)});
}

QString InsideText(const DeletionSubject& subject) {
  if (!subject.is_group) {
    return {};
  }
  if (!subject.inside) {
    return CViewExternWidget::tr(" with all that is in it");
  }
  const QString counts = CountText(*subject.inside);
  return counts.isEmpty() ? QString() : FillPlaces(CViewExternWidget::tr(" with %1"), {counts});
}

QString QuestionText(bool playing) {
  if (!playing) {
    return CViewExternWidget::tr("ConfirmToDelete");
  }
  if (SaysPlan()) {
    return CViewExternWidget::tr("TheUserCurrentlyHasAWPBwgUrC");
  }
  return CViewExternWidget::tr("TheUserCurrentlyHasAwlMLoHj");
}

}  // namespace

QString PlansText(int count) {
  return SaysPlan() ? CViewExternWidget::tr("%n plan(s)", nullptr, count)
                    : CViewExternWidget::tr("%n view(s)", nullptr, count);
}

DeletionSubject DeletionSubjectOf(const QModelIndex& row) {
  DeletionSubject subject;
  subject.name = row.data().toString();
  subject.is_group = row.data(IsGroupRole).toBool();
  if (subject.is_group) {
    subject.playing = IsChildPlaying(row);
    subject.inside = InsideOf(row);
  } else {
    subject.playing = row.data(PlayingRole).toBool();
  }
  return subject;
}

QString FillPlaces(const QString& text, const QStringList& values) {
  QString filled;
  for (int at = 0; at < text.size(); ++at) {
    int place = 0;
    if (text.at(at) == QLatin1Char('%') && at + 1 < text.size()) {
      place = text.at(at + 1).digitValue();
    }
    if (place >= 1 && place <= values.size()) {
      filled += values.at(place - 1);
      ++at;
    } else {
      filled += text.at(at);
    }
  }
  return filled;
}

QString DeletionQuestion(const DeletionSubject& subject) {
  return FillPlaces(QuestionText(subject.playing), {subject.name, KindText(subject.is_group), InsideText(subject)});
}

QString DeletionNotice(const DeletionSubject& subject) {
  const QString counts = CountText(subject.inside.value_or(RowsInside()));
  if (counts.isEmpty()) {
    return FillPlaces(CViewExternWidget::tr("Deleted %1."), {subject.name});
  }
  return FillPlaces(CViewExternWidget::tr("Deleted %1, %2."), {subject.name, counts});
}

}  // namespace TarnPlanView
