#include "messages/change_texts.h"

#include <QCoreApplication>

namespace TarnClient {

namespace {

const char* CreatedText(PlanChange change) {
  if (change == PlanChange::EmptyPlanAdded) {
    return QT_TRANSLATE_NOOP("TarnClient::ChangeTexts", "Created %1 in %2. It shows no camera yet.");
  }
  return QT_TRANSLATE_NOOP("TarnClient::ChangeTexts", "Created %1 in %2");
}

bool IsAdded(PlanChange change) {
  return change == PlanChange::GroupAdded || change == PlanChange::PlanAdded || change == PlanChange::EmptyPlanAdded;
}

}  // namespace

QString TextOf(PlanChange change, const QString& name, const QString& place) {
  if (IsAdded(change) && !name.isEmpty() && !place.isEmpty()) {
    return QCoreApplication::translate("TarnClient::ChangeTexts", CreatedText(change)).arg(name, place);
  }
  const char* text = nullptr;
  switch (change) {
    case PlanChange::None:
      break;
    case PlanChange::GroupAdded:
    case PlanChange::PlanAdded:
      text = QT_TRANSLATE_NOOP("TarnClient::ChangeTexts", "Created %1");
      break;
    case PlanChange::EmptyPlanAdded:
      text = QT_TRANSLATE_NOOP("TarnClient::ChangeTexts", "Created %1. It shows no camera yet.");
      break;
    case PlanChange::GroupRenamed:
    case PlanChange::PlanRenamed:
      text = QT_TRANSLATE_NOOP("TarnClient::ChangeTexts", "Renamed to %1");
      break;
    case PlanChange::PlanSaved:
      text = QT_TRANSLATE_NOOP("TarnClient::ChangeTexts", "Saved %1");
      break;
    case PlanChange::EmptyPlanSaved:
      text = QT_TRANSLATE_NOOP("TarnClient::ChangeTexts", "Saved %1. It shows no camera yet.");
      break;
  }
  if (!text || name.isEmpty()) {
    return QString();
  }
  return QCoreApplication::translate("TarnClient::ChangeTexts", text).arg(name);
}

}  // namespace TarnClient
