#include "site/removal_text.h"

#include <QStringList>

namespace TarnClient {

namespace {

constexpr int kMostNames = 5;

}  // namespace

QString CRemovalText::Of(const QString& name, bool is_region, int cameras, const TarnHost::PlansShowing& showing) {
  QStringList lines = {Question(name, is_region, cameras)};
  if (cameras > 0) {
    lines.append(Plans(showing));
  }
  lines.append(tr("This cannot be undone."));
  return lines.join(QLatin1Char('\n'));
}

QString CRemovalText::Question(const QString& name, bool is_region, int cameras) {
  if (is_region && cameras == 0) {
    return tr("Remove the region \"%1\"?").arg(name);
  }
  if (is_region) {
    return tr("Remove the region \"%1\" with %n camera(s) in it?", nullptr, cameras).arg(name);
  }
  if (!name.isEmpty()) {
    return tr("Remove the camera \"%1\"?").arg(name);
  }
  return tr("Remove %n camera(s)?", nullptr, cameras);
}

QString CRemovalText::Plans(const TarnHost::PlansShowing& showing) {
  const auto count = static_cast<int>(showing.plans.size());
  if (count + showing.others == 0) {
    return tr("Shown by no plan.");
  }
  QStringList names;
  for (const auto& plan : showing.plans) {
    if (names.size() == kMostNames) {
      names.append(tr("%n more", nullptr, count - kMostNames));
      break;
    }
    names.append(QStringLiteral("\"%1\"").arg(QString::fromStdString(plan.name)));
  }
  QStringList sentences;
  if (count > 0) {
    sentences.append(tr("Shown by %n plan(s): %1.", nullptr, count).arg(names.join(QStringLiteral(", "))));
  }
  if (showing.others > 0) {
    sentences.append(tr("Shown by %n plan(s) that you may not see.", nullptr, showing.others));
  }
  sentences.append(tr("Windows that showed it stay and say that the camera is gone."));
  return sentences.join(QLatin1Char(' '));
}

}  // namespace TarnClient
