#include "settings/remembered_desk.h"

#include <TarnPlanView/search_memory.h>

#include <QJsonArray>

#include "settings/json_reader.h"

namespace TarnClient {

namespace {

constexpr int kFarthest = 1 << 20;  // in pixels: more than any screens take together

QJsonObject JsonOf(const QRect& rect) {
  return QJsonObject{{QStringLiteral("x"), rect.x()},
                     {QStringLiteral("y"), rect.y()},
                     {QStringLiteral("width"), rect.width()},
                     {QStringLiteral("height"), rect.height()}};
}

QRect RectOf(const CJsonReader& reader) {
  const auto x = reader.Number("x", -kFarthest, kFarthest), y = reader.Number("y", -kFarthest, kFarthest);
  const auto width = reader.Number("width", 1, kFarthest), height = reader.Number("height", 1, kFarthest);
  if (!x || !y || !width || !height) {
    return QRect();
  }
  return QRect(*x, *y, *width, *height);
}

QJsonObject JsonOf(const RememberedDesk::Family& family) {
  QJsonArray groups;
  for (const TarnPlanView::OpenGroup& group : family.open_groups.mid(0, RememberedDesk::kMostOpenGroups)) {
    groups.append(QJsonArray{group.code, group.above});
  }
  return QJsonObject{{QStringLiteral("open_groups"), groups},
                     {QStringLiteral("searches"),
                      QJsonArray::fromStringList(family.searches.mid(0, TarnPlanView::kMostLastSearches))}};
}

RememberedDesk::Family FamilyOf(const CJsonReader& reader) {
  RememberedDesk::Family family;
  for (const QJsonValue& group : reader.List("open_groups", RememberedDesk::kMostOpenGroups)) {
    const auto code = reader.TextIn(group[0]), above = reader.TextIn(group[1]);
    if (code && above) {
      family.open_groups.append({*code, *above});
    } else {
      reader.Reject();
    }
  }
  for (const QJsonValue& search : reader.List("searches", TarnPlanView::kMostLastSearches)) {
    if (const auto text = reader.TextIn(search)) {
      family.searches.append(*text);
    }
  }
  return family;
}

QJsonObject JsonOf(const PlayedPlan& plan) {
  return QJsonObject{{QStringLiteral("code"), plan.code},
                     {QStringLiteral("name"), plan.name},
                     {QStringLiteral("place"), plan.place},
                     {QStringLiteral("time"), plan.time.toUTC().toString(Qt::ISODate)}};
}

QVector<PlayedPlan> HistoryOf(const CJsonReader& reader) {
  QVector<PlayedPlan> history;
  for (const QJsonValue& element : reader.List("history", CPlayHistory::kMostPlans)) {
    const CJsonReader of_plan = reader.Element(element);
    PlayedPlan plan;
    plan.code = of_plan.Text("code").value_or(QString());
    plan.name = of_plan.Text("name").value_or(QString());
    plan.place = of_plan.Text("place").value_or(QString());
    plan.time = QDateTime::fromString(of_plan.Text("time").value_or(QString()), Qt::ISODate).toLocalTime();
    if (plan.code.isEmpty() || plan.name.isEmpty() || !plan.time.isValid()) {
      reader.Reject();
    } else {
      history.append(plan);
    }
  }
  return history;
}

}  // namespace

QJsonObject RememberedDesk::ToJson() const {
  QJsonArray of_families, of_history;
  for (const Family& family : families.mid(0, kMostFamilies)) {
    of_families.append(JsonOf(family));
  }
  for (const PlayedPlan& plan : history.mid(0, CPlayHistory::kMostPlans)) {
    if (plan.why_not.isEmpty()) {
      of_history.append(JsonOf(plan));
    }
  }
  QJsonObject json{{QStringLiteral("maximized"), is_maximized},
                   {QStringLiteral("side_width"), side_width},
                   {QStringLiteral("shown_family"), shown_family},
                   {QStringLiteral("families"), of_families},
                   {QStringLiteral("history"), of_history},
                   {QStringLiteral("last_played"), QJsonObject{{QStringLiteral("code"), last_played.code},
                                                               {QStringLiteral("is_group"), last_played.is_group}}}};
  if (!window.isEmpty()) {
    json.insert(QStringLiteral("window"), JsonOf(window));
  }
  return json;
}

RememberedDesk RememberedDesk::FromJson(const QJsonObject& json, bool* sound) {
  const CJsonReader reader(json, sound);
  RememberedDesk desk;
  desk.window = RectOf(reader.Object("window"));
  desk.is_maximized = reader.Flag("maximized").value_or(false);
  desk.side_width = reader.Number("side_width", 0, kFarthest).value_or(0);
  desk.shown_family = reader.Number("shown_family", 0, kMostFamilies - 1).value_or(0);
  for (const QJsonValue& family : reader.List("families", kMostFamilies)) {
    desk.families.append(FamilyOf(reader.Element(family)));
  }
  desk.history = HistoryOf(reader);
  const CJsonReader played = reader.Object("last_played");
  desk.last_played.code = played.Text("code").value_or(QString());
  desk.last_played.is_group = played.Flag("is_group").value_or(false);
  return desk;
}

}  // namespace TarnClient
