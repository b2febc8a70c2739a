#include "store/page_codec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <utility>

#include "plan_rules/window_content.h"
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

// A field that is there must be what it should be; one that is not keeps its default.
bool Take(const QJsonObject& json, const char* key, int32_t* number) {
  const QJsonValue value = json[QLatin1String(key)];
  if (value.isUndefined()) {
    return true;
  }
  const int32_t taken = value.toInt(0);
  const bool whole = value.isDouble() && taken == value.toInt(1);
  *number = whole ? taken : *number;
  return whole;
}

bool Take(const QJsonObject& json, const char* key, std::string* text) {
  const QJsonValue value = json[QLatin1String(key)];
  *text = value.toString().toStdString();
  return value.isUndefined() || value.isString();
}

bool Read(const QJsonObject& json, PlanWindow* window) {
  static const QJsonObject known = KnownFields(PlanWindow());
  window->extra = ExtraOf(json, known);
  return Take(json, "no", &window->window_no) && Take(json, "kind", &window->content_kind) &&
         Take(json, "code", &window->resource_code) && Take(json, "name", &window->resource_name) &&
         Take(json, "stream", &window->stream_type) && Take(json, "preset", &window->preset_no);
}

bool Read(const QJsonObject& json, PlanPage* page);

// Reads each object of `array` into a record of `list`.
template <class List>
bool ReadAll(const QJsonArray& array, List* list) {
  return std::all_of(array.begin(), array.end(), [list](const QJsonValue& value) {
    list->emplace_back();
    return value.isObject() && Read(value.toObject(), &list->back());
  });
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

bool Read(const QJsonObject& json, PlanPage* page) {
  static const QJsonObject known = KnownFields(PlanPage());
  page->extra = ExtraOf(json, known);
  const QJsonValue windows = json["windows"];
  return Take(json, "no", &page->page_no) && Take(json, "name", &page->name) &&
         Take(json, "split", &page->split_type) && Take(json, "dwell", &page->dwell_seconds) &&
         (windows.isUndefined() || windows.isArray()) && ReadAll(windows.toArray(), &page->windows);
}

bool Skip(QStringView* rest, const QString& start) {
  const bool there = rest->startsWith(start);
  if (there) {
    *rest = rest->mid(start.size());
  }
  return there;
}

// Up to the closing quote; not with an escaped character.
bool TakeText(QStringView* rest, std::string* text) {
  qsizetype size = 0;
  while (size < rest->size() && rest->at(size) != QLatin1Char('"') && rest->at(size) != QLatin1Char('\\')) {
    ++size;
  }
  const bool whole = size < rest->size() && rest->at(size) == QLatin1Char('"');
  if (whole) {
    *text = rest->left(size).toString().toStdString();
    *rest = rest->mid(size + 1);
  }
  return whole;
}

// Of one digit, as all kinds are so far.
bool TakeKind(QStringView* rest, int32_t* kind) {
  const bool digit = rest->size() > 1 && rest->front().isDigit() && rest->at(1) == QLatin1Char(',');
  if (digit) {
    *kind = rest->front().digitValue();
    *rest = rest->mid(1);
  }
  return digit;
}

// The cameras of a text as PagesToText() writes it, without making JSON of it: a site has many plans. Nothing where a
// field is elsewhere or holds what is not read here.
std::optional<std::vector<NamedCamera>> CamerasAsWritten(const QString& text) {
  static const QString field = QStringLiteral("\"code\""), code = field + QStringLiteral(":\""),
                       kind = QStringLiteral(",\"kind\":"), name = QStringLiteral(",\"name\":\"");
  std::vector<NamedCamera> cameras;
  QStringView rest(text);
  for (qsizetype at = text.indexOf(field); at >= 0; at = text.indexOf(field, int(text.size() - rest.size()))) {
    rest = QStringView(text).mid(at);
    PlanWindow window;
    const bool read = Skip(&rest, code) && TakeText(&rest, &window.resource_code) && Skip(&rest, kind) &&
                      TakeKind(&rest, &window.content_kind) && Skip(&rest, name) &&
                      TakeText(&rest, &window.resource_name);
    if (!read) {
      return std::nullopt;
    }
    if (view_plugin_protocol::IsCamera(window)) {
      cameras.push_back({std::move(window.resource_code), std::move(window.resource_name)});
    }
  }
  return cameras;
}

}  // namespace

QString PagesToText(const std::list<PlanPage>& pages) {
  QJsonArray array;
  for (const PlanPage& page : pages) {
    array.append(WithExtra(KnownFields(page), page.extra));
  }
  return TextOf(QJsonDocument(array));
}

std::optional<std::list<PlanPage>> PagesFromText(const QString& text) {
  const QJsonDocument json = QJsonDocument::fromJson(text.toUtf8());
  std::list<PlanPage> pages;
  return json.isArray() && ReadAll(json.array(), &pages) ? std::make_optional(std::move(pages)) : std::nullopt;
}

std::vector<NamedCamera> CamerasOf(const std::list<PlanPage>& pages) {
  std::vector<NamedCamera> cameras;
  for (const PlanPage& page : pages) {
    for (const PlanWindow& window : page.windows) {
      if (view_plugin_protocol::IsCamera(window)) {
        cameras.push_back({window.resource_code, window.resource_name});
      }
    }
  }
  return cameras;
}

std::vector<NamedCamera> CamerasInText(const QString& text) {
  if (auto cameras = CamerasAsWritten(text)) {
    return std::move(*cameras);
  }
  std::vector<NamedCamera> cameras;
  const QJsonArray pages = QJsonDocument::fromJson(text.toUtf8()).array();
  for (const QJsonValue& page : pages) {
    const QJsonArray windows = page[QLatin1String("windows")].toArray();
    for (const QJsonValue& json : windows) {
      PlanWindow window;
      window.content_kind = json[QLatin1String("kind")].toInt();
      window.resource_code = json[QLatin1String("code")].toString().toStdString();
      if (view_plugin_protocol::IsCamera(window)) {
        cameras.push_back({window.resource_code, json[QLatin1String("name")].toString().toStdString()});
      }
    }
  }
  return cameras;
}

}  // namespace TarnHost::Store
