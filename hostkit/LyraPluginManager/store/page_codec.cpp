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

bool IsDigit(QChar character) {
  return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

// Takes a text apart as PagesToText() writes it, in the order of the keys and with those known here alone.
class WrittenPages {
 public:
  explicit WrittenPages(const QString& text) : rest_(text) {}

  bool TakeAll(std::vector<NamedCamera>* cameras) {
    return TakeList([this, cameras] { return TakePage(cameras); }) && rest_.isEmpty();
  }

 private:
  bool Skip(const char* start) {
    const QLatin1String text(start);
    const bool there = rest_.startsWith(text);
    if (there) {
      rest_ = rest_.mid(text.size());
    }
    return there;
  }

  // Up to the closing quote; not with an escaped character.
  bool TakeText(std::string* text) {
    qsizetype size = 0;
    while (size < rest_.size() && rest_.at(size) != QLatin1Char('"') && rest_.at(size) != QLatin1Char('\\')) {
      ++size;
    }
    const bool whole = size < rest_.size() && rest_.at(size) == QLatin1Char('"');
    if (whole) {
      *text = rest_.left(size).toString().toStdString();
      rest_ = rest_.mid(size + 1);
    }
    return whole;
  }

  // Nine digits fit any number.
  bool TakeNumber(int32_t* number) {
    const bool negative = Skip("-");
    int32_t taken = 0;
    int digits = 0;
    for (; digits < rest_.size() && digits < 9 && IsDigit(rest_.at(digits)); ++digits) {
      taken = 10 * taken + rest_.at(digits).digitValue();
    }
    rest_ = rest_.mid(digits);
    *number = negative ? -taken : taken;
    return digits > 0;
  }

  template <class TakeOne>
  bool TakeList(const TakeOne& take_one) {
    if (!Skip("[")) {
      return false;
    }
    if (Skip("]")) {
      return true;
    }
    do {
      if (!take_one()) {
        return false;
      }
    } while (Skip(","));
    return Skip("]");
  }

  bool TakePage(std::vector<NamedCamera>* cameras) {
    int32_t number = 0;
    std::string name;
    return Skip("{\"dwell\":") && TakeNumber(&number) && Skip(",\"name\":\"") && TakeText(&name) && Skip(",\"no\":") &&
           TakeNumber(&number) && Skip(",\"split\":") && TakeNumber(&number) && Skip(",\"windows\":") &&
           TakeList([this, cameras] { return TakeWindow(cameras); }) && Skip("}");
  }

  bool TakeWindow(std::vector<NamedCamera>* cameras) {
    int32_t number = 0;
    PlanWindow window;
    const bool taken = Skip("{\"code\":\"") && TakeText(&window.resource_code) && Skip(",\"kind\":") &&
                       TakeNumber(&window.content_kind) && Skip(",\"name\":\"") && TakeText(&window.resource_name) &&
                       Skip(",\"no\":") && TakeNumber(&number) && Skip(",\"preset\":") && TakeNumber(&number) &&
                       Skip(",\"stream\":") && TakeNumber(&number) && Skip("}");
    if (taken && view_plugin_protocol::IsCamera(window)) {
      cameras->push_back({std::move(window.resource_code), std::move(window.resource_name)});
    }
    return taken;
  }

  QStringView rest_;
};

// Without making JSON of the text: a site has many plans. Nothing for a text with more or less in it than is written
// here, or in another order.
std::optional<std::vector<NamedCamera>> CamerasAsWritten(const QString& text) {
  std::vector<NamedCamera> cameras;
  if (!WrittenPages(text).TakeAll(&cameras)) {
    return std::nullopt;
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
