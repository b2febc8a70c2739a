#include "commands/row_commands.h"

#include <QCoreApplication>

#include "plan_rules/families.h"

namespace TarnClient {

using view_plugin_protocol::AddRight;
using view_plugin_protocol::EditRight;

namespace {

class Texts {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CRowMenu)
};

// Why the family of the row, or the user's rights in it, do not allow a change.
QString WhyNoChange(const RowSituation& row, view_plugin_protocol::Right right) {
  if (row.family == view_plugin_protocol::ReceivedFamily) {
    return Texts::tr("Plans that were received cannot be changed.");
  }
  if (!MayChange(row.family, right, row.rights)) {
    return LackOf(right);
  }
  return QString();
}

// Hits may be of the other list's family, whose groups are not here.
QString WhyNotFromHere(const RowSituation& row) {
  if (row.list_of_row.isEmpty()) {
    return QString();
  }
  return Texts::tr("It stands in the list \"%1\". Do it there.").arg(row.list_of_row);
}

QString WhyNotWhileEdited(const RowSituation& row) {
  if (row.kind == RowKind::Plan && row.edited) {
    return Texts::tr("The plan is open in the editor. Close it first, or change it there.");
  }
  return QString();
}

QString WhyNotStopped(const RowSituation& row) {
  if (row.playing) {
    return QString();
  }
  if (row.kind == RowKind::Group) {
    return Texts::tr("The plans of this group are not playing in turn.");
  }
  return Texts::tr("This plan is not playing.");
}

QString WhyNoCycle(const RowSituation& row) {
  if (row.kind == RowKind::Group && !row.cycles) {
    return Texts::tr("Playing the plans of a group in turn is switched off.");
  }
  return QString();
}

bool SuitsKind(RowCommand command, RowKind kind) {
  switch (command) {
    case RowCommand::NewPlan:
    case RowCommand::NewGroup:
      return true;
    case RowCommand::Duplicate:
    case RowCommand::MoveTo:
      return kind == RowKind::Plan;
    case RowCommand::Rename:
    case RowCommand::PlayOn:
    case RowCommand::Stop:
    case RowCommand::OpenAtStart:
      return kind == RowKind::Plan || kind == RowKind::Group;
  }
  return false;
}

QString WhyUnsuited(RowCommand command) {
  if (command == RowCommand::Duplicate || command == RowCommand::MoveTo) {
    return Texts::tr("Choose a plan first.");
  }
  return Texts::tr("Choose a plan or a group first.");
}

// The first of two reasons that there is.
QString FirstOf(const QString& first, const QString& second) {
  return first.isEmpty() ? second : first;
}

QString ReasonOf(RowCommand command, const RowSituation& row) {
  switch (command) {
    case RowCommand::NewPlan:
      return row.why_no_new_plan;
    case RowCommand::NewGroup:
      return FirstOf(row.why_no_new_group, WhyNotFromHere(row));
    case RowCommand::Duplicate:
      return WhyNoChange(row, AddRight);
    case RowCommand::MoveTo:
      return FirstOf(FirstOf(WhyNoChange(row, EditRight), WhyNotWhileEdited(row)), WhyNotFromHere(row));
    case RowCommand::Rename:
      return FirstOf(WhyNoChange(row, EditRight), WhyNotWhileEdited(row));
    case RowCommand::Stop:
      return WhyNotStopped(row);
    case RowCommand::PlayOn:
    case RowCommand::OpenAtStart:
      return WhyNoCycle(row);
  }
  return QString();
}

}  // namespace

RowCommandState StateOf(RowCommand command, const RowSituation& row) {
  RowCommandState state;
  if (row.kind == RowKind::None && row.loading) {
    state.reason = Texts::tr("The plans are still being loaded.");
  } else if (row.kind == RowKind::None) {
    state.reason = Texts::tr("Choose a row first.");
  } else if (!SuitsKind(command, row.kind)) {
    state.shown = false;
    state.reason = WhyUnsuited(command);
  } else {
    state.reason = ReasonOf(command, row);
  }
  return state;
}

}  // namespace TarnClient
