#include "store/page_codec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

QString TextOf(const QJsonDocument& json) {
  return QString::fromUtf8(json.toJson(QJsonDocument::Compact));
}

/// The fields known here over those that a newer version wrote.
QJsonObject WithExtra(const QJsonObject& known, const std::string& extra) {
  QJsonObject json = QJsonDocument::fromJson(QByteArray::fromStdString(extra)).object();
  for (auto field = known.begin(); field != known.end(); ++field) {
    json.insert(field.key(), field.value());
  }
  return json;
}

/// What `json` says beyond the fields known here; empty for nothing.
std::string ExtraOf(const QJsonObject& json, const QJsonObject& known) {
  QJsonObject extra;
  for (auto field = json.begin(); field != json.end(); ++field) {
    if (!known.contains(field.key())) {
      extra.insert(field.key(), field.value());
    }
  }
  return extra.isEmpty() ? std::string() : TextOf(QJsonDocument(extra)).toStdString();
}

QJsonObject KnownFields(const PlanWindow& window) {
  return {{"no", window.window_no},
          {"kind", window.content_kind},
          {"code", ToQt(window.resource_code)},
          {"name", ToQt(window.resource_name)},
          {"stream", window.stream_type},
          {"preset", window.preset_no}};
}

PlanWindow WindowFromJson(const QJsonObject& json) {
  static const QJsonObject known = KnownFields(PlanWindow());
  PlanWindow window;
  window.window_no = json["no"].toInt(window.window_no);
  window.content_kind = json["kind"].toInt(window.content_kind);
  window.resource_code = json["code"].toString().toStdString();
  window.resource_name = json["name"].toString().toStdString();
  window.stream_type = json["stream"].toInt(window.stream_type);
  window.preset_no = json["preset"].toInt(window.preset_no);
  window.extra = ExtraOf(json, known);
  return window;
}

QJsonObject KnownFields(const PlanPage& page) {
  QJsonArray windows;
  for (const PlanWindow& window : page.windows) {
    windows.append(WithExtra(KnownFields(window), window.extra));
  }
  return {{"no", page.page_no},
          {"name", ToQt(page.name)},
          {"split", page.split_type},
          {"dwell", page.dwell_seconds},
          {"windows", windows}};
}

PlanPage PageFromJson(const QJsonObject& json) {
  static const QJsonObject known = KnownFields(PlanPage());
  PlanPage page;
  page.page_no = json["no"].toInt(page.page_no);
  page.name = json["name"].toString().toStdString();
  page.split_type = json["split"].toInt(page.split_type);
  page.dwell_seconds = json["dwell"].toInt(page.dwell_seconds);
  for (const QJsonValue& window : json["windows"].toArray()) {
    page.windows.push_back(WindowFromJson(window.toObject()));
  }
  page.extra = ExtraOf(json, known);
  return page;
}

}  // namespace

QString PagesToText(const std::list<PlanPage>& pages) {
  QJsonArray array;
  for (const PlanPage& page : pages) {
    array.append(WithExtra(KnownFields(page), page.extra));
  }
  return TextOf(QJsonDocument(array));
}

std::list<PlanPage> PagesFromText(const QString& text) {
  std::list<PlanPage> pages;
  for (const QJsonValue& page : QJsonDocument::fromJson(text.toUtf8()).array()) {
    pages.push_back(PageFromJson(page.toObject()));
  }
  return pages;
}

}  // namespace TarnHost::Store
