#include "settings/remembered_desk.h"

#include <TarnPlanView/search_memory.h>

#include <QJsonArray>
#include <QSet>

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

QJsonObject JsonOf(const RememberedWall::Family& family) {
  QJsonArray groups;
  for (const TarnPlanView::OpenGroup& group : family.open_groups.mid(0, RememberedWall::kMostOpenGroups)) {
    groups.append(QJsonArray{group.code, group.above});
  }
  return QJsonObject{{QStringLiteral("open_groups"), groups},
                     {QStringLiteral("searches"),
                      QJsonArray::fromStringList(family.searches.mid(0, TarnPlanView::kMostLastSearches))}};
}

RememberedWall::Family FamilyOf(const CJsonReader& reader) {
  RememberedWall::Family family;
  for (const QJsonValue& group : reader.List("open_groups", RememberedWall::kMostOpenGroups)) {
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

QVector<RememberedWall> WallsOf(const CJsonReader& reader, bool* sound) {
  QVector<RememberedWall> walls;
  QSet<int> numbers;
  for (const QJsonValue& element : reader.List("walls", RememberedDesk::kMostWalls)) {
    const CJsonReader of_wall = reader.Element(element);
    RememberedWall wall = RememberedWall::FromJson(element.toObject(), sound);
    wall.number = of_wall.Number("number", 1, RememberedDesk::kMostWalls).value_or(0);
    wall.is_open = of_wall.Flag("open").value_or(false);
    if (wall.number == 0 || numbers.contains(wall.number)) {
      reader.Reject();
    } else {
      numbers << wall.number;
      walls.append(wall);
    }
  }
  return walls;
}

}  // namespace

QJsonObject RememberedWall::ToJson() const {
  QJsonArray of_families;
  for (const Family& family : families.mid(0, kMostFamilies)) {
    of_families.append(JsonOf(family));
  }
  QJsonObject json{{QStringLiteral("maximized"), is_maximized},
                   {QStringLiteral("full_screen"), is_full_screen},
                   {QStringLiteral("side_width"), side_width},
                   {QStringLiteral("shown_family"), shown_family},
                   {QStringLiteral("families"), of_families},
                   {QStringLiteral("last_played"), QJsonObject{{QStringLiteral("code"), last_played.code},
                                                               {QStringLiteral("is_group"), last_played.is_group}}}};
  if (!window.isEmpty()) {
    json.insert(QStringLiteral("window"), JsonOf(window));
  }
  if (!screen.isEmpty() && !screen_place.isEmpty()) {
    json.insert(QStringLiteral("screen"), screen);
    json.insert(QStringLiteral("screen_place"), JsonOf(screen_place));
  }
  return json;
}

RememberedWall RememberedWall::FromJson(const QJsonObject& json, bool* sound) {
  const CJsonReader reader(json, sound);
  RememberedWall wall;
  wall.window = RectOf(reader.Object("window"));
  wall.is_maximized = reader.Flag("maximized").value_or(false);
  wall.is_full_screen = reader.Flag("full_screen").value_or(false);
  wall.screen = reader.Text("screen").value_or(QString());
  wall.screen_place = RectOf(reader.Object("screen_place"));
  wall.side_width = reader.Number("side_width", 0, kFarthest).value_or(0);
  wall.shown_family = reader.Number("shown_family", 0, kMostFamilies - 1).value_or(0);
  for (const QJsonValue& family : reader.List("families", kMostFamilies)) {
    wall.families.append(FamilyOf(reader.Element(family)));
  }
  const CJsonReader played = reader.Object("last_played");
  wall.last_played.code = played.Text("code").value_or(QString());
  wall.last_played.is_group = played.Flag("is_group").value_or(false);
  return wall;
}

RememberedWall RememberedDesk::Wall(int wall_number) const {
  for (const RememberedWall& wall : walls) {
    if (wall.number == wall_number) {
      return wall;
    }
  }
  RememberedWall unknown;
  unknown.number = wall_number;
  unknown.is_open = false;
  return unknown;
}

QJsonObject RememberedDesk::ToJson() const {
  QJsonArray of_history, of_walls;
  for (const PlayedPlan& plan : history.mid(0, CPlayHistory::kMostPlans)) {
    if (plan.why_not.isEmpty()) {
      of_history.append(JsonOf(plan));
    }
  }
  for (const RememberedWall& wall : walls.mid(0, kMostWalls)) {
    QJsonObject of_wall = wall.ToJson();
    of_wall.insert(QStringLiteral("number"), wall.number);
    of_wall.insert(QStringLiteral("open"), wall.is_open);
    of_walls.append(of_wall);
  }
  QJsonObject json = RememberedWall::ToJson();
  json.insert(QStringLiteral("history"), of_history);
  json.insert(QStringLiteral("walls"), of_walls);
  return json;
}

RememberedDesk RememberedDesk::FromJson(const QJsonObject& json, bool* sound) {
  const CJsonReader reader(json, sound);
  RememberedDesk desk;
  static_cast<RememberedWall&>(desk) = RememberedWall::FromJson(json, sound);
  desk.history = HistoryOf(reader);
  desk.walls = WallsOf(reader, sound);
  return desk;
}

}  // namespace TarnClient
