#include "store/page_codec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

QJsonObject WindowToJson(const PlanWindow& window) {
  return {{"no", window.window_no},
          {"kind", window.content_kind},
          {"code", ToQt(window.resource_code)},
          {"name", ToQt(window.resource_name)},
          {"stream", window.stream_type},
          {"preset", window.preset_no}};
}

PlanWindow WindowFromJson(const QJsonObject& json) {
  PlanWindow window;
  window.window_no = json["no"].toInt(window.window_no);
  window.content_kind = json["kind"].toInt(window.content_kind);
  window.resource_code = json["code"].toString().toStdString();
  window.resource_name = json["name"].toString().toStdString();
  window.stream_type = json["stream"].toInt(window.stream_type);
  window.preset_no = json["preset"].toInt(window.preset_no);
  return window;
}

QJsonObject PageToJson(const PlanPage& page) {
  QJsonArray windows;
  for (const PlanWindow& window : page.windows) {
    windows.append(WindowToJson(window));
  }
  return {{"no", page.page_no},
          {"name", ToQt(page.name)},
          {"split", page.split_type},
          {"dwell", page.dwell_seconds},
          {"windows", windows}};
}

PlanPage PageFromJson(const QJsonObject& json) {
  PlanPage page;
  page.page_no = json["no"].toInt(page.page_no);
  page.name = json["name"].toString().toStdString();
  page.split_type = json["split"].toInt(page.split_type);
  page.dwell_seconds = json["dwell"].toInt(page.dwell_seconds);
  for (const QJsonValue& window : json["windows"].toArray()) {
    page.windows.push_back(WindowFromJson(window.toObject()));
  }
  return page;
}

}  // namespace

QString PagesToText(const std::list<PlanPage>& pages) {
  QJsonArray array;
  for (const PlanPage& page : pages) {
    array.append(PageToJson(page));
  }
  return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

std::list<PlanPage> PagesFromText(const QString& text) {
  std::list<PlanPage> pages;
  for (const QJsonValue& page : QJsonDocument::fromJson(text.toUtf8()).array()) {
    pages.push_back(PageFromJson(page.toObject()));
  }
  return pages;
}

}  // namespace TarnHost::Store
