#include "devices/device_answers.h"

#include <algorithm>
#include <map>

#include "devices/soap_message.h"

namespace TarnClient {

namespace {

constexpr char kAnySpace[] = "";
constexpr size_t kMostStreams = 3, kMostPresets = 256, kMostLenses = 64;
constexpr int kLargestSide = 16384;

QUrl ServiceUrl(const XmlNode& node) {
  const QUrl url(node.Child(kAnySpace, "XAddr").text, QUrl::StrictMode);
  const bool is_web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
  return is_web && !url.host().isEmpty() ? url : QUrl();
}

int NumberIn(const XmlNode& node, const char* name) {
  return node.Child(Onvif::kSchema, name).text.toInt();
}

QString KnownCodec(const QString& encoding) {
  static const QStringList known = {QStringLiteral("H264"), QStringLiteral("H265"), QStringLiteral("JPEG")};
  return known.contains(encoding) ? encoding : QString();
}

/// What both services say alike.
void ReadEncoder(const XmlNode& encoder, DeviceProfile* profile) {
  const XmlNode& resolution = encoder.Child(Onvif::kSchema, "Resolution");
  profile->codec = KnownCodec(encoder.Child(Onvif::kSchema, "Encoding").text.toUpper());
  profile->size = QSize(std::clamp(NumberIn(resolution, "Width"), 0, kLargestSide),
                        std::clamp(NumberIn(resolution, "Height"), 0, kLargestSide));
}

bool IsVideo(const DeviceProfile& profile) {
  return profile.codec == QLatin1String("H264") || profile.codec == QLatin1String("H265");
}

int AreaOf(const DeviceProfile& profile) {
  return profile.size.width() * profile.size.height();
}

DeviceLens LensOf(const std::vector<DeviceProfile>& profiles) {
  DeviceLens lens;
  const bool has_video = std::any_of(profiles.begin(), profiles.end(), IsVideo);
  for (const DeviceProfile& profile : profiles) {
    if (profile.turns && lens.ptz_profile.isEmpty()) {
      lens.ptz_profile = profile.token;
    }
    const bool is_shown = has_video ? IsVideo(profile) : !profile.codec.isEmpty();
    const bool is_repeated = std::any_of(lens.streams.begin(), lens.streams.end(),
                                         [&](const DeviceProfile& other) { return other.size == profile.size; });
    if (is_shown && !is_repeated) {
      lens.streams.push_back(profile);
    }
  }
  std::stable_sort(lens.streams.begin(), lens.streams.end(),
                   [](const DeviceProfile& a, const DeviceProfile& b) { return AreaOf(a) > AreaOf(b); });
  lens.streams.resize(std::min(lens.streams.size(), kMostStreams));
  return lens;
}

}  // namespace

DeviceServices ReadServices(const XmlNode& answer) {
  DeviceServices services;
  for (const XmlNode* service : answer.Children(Onvif::kDevice, "Service")) {
    const QString space = service->Child(kAnySpace, "Namespace").text;
    const std::pair<const char*, QUrl*> places[] = {
        {Onvif::kMedia2, &services.media2}, {Onvif::kMedia1, &services.media1}, {Onvif::kPtz, &services.ptz}};
    for (const auto& [known, url] : places) {
      if (space == QLatin1String(known)) {
        *url = ServiceUrl(*service);
      }
    }
  }
  return services;
}

DeviceServices ReadCapabilities(const XmlNode& answer) {
  const XmlNode& capabilities = answer.Child(Onvif::kDevice, "Capabilities");
  return {QUrl(), ServiceUrl(capabilities.Child(Onvif::kSchema, "Media")),
          ServiceUrl(capabilities.Child(Onvif::kSchema, "PTZ"))};
}

QDateTime ReadDeviceTime(const XmlNode& answer) {
  const XmlNode& utc = answer.Child(Onvif::kDevice, "SystemDateAndTime").Child(Onvif::kSchema, "UTCDateTime");
  const XmlNode& date = utc.Child(Onvif::kSchema, "Date");
  const XmlNode& time = utc.Child(Onvif::kSchema, "Time");
  if (date.IsNull() || time.IsNull()) {
    return QDateTime();
  }
  return QDateTime(QDate(NumberIn(date, "Year"), NumberIn(date, "Month"), NumberIn(date, "Day")),
                   QTime(NumberIn(time, "Hour"), NumberIn(time, "Minute"), std::min(59, NumberIn(time, "Second"))),
                   Qt::UTC);
}

QString ScopeText(const QStringList& scopes, const char* category) {
  constexpr int kLongestText = 80;
  const QString start = QStringLiteral("onvif://www.onvif.org/%1/").arg(QLatin1String(category));
  for (const QString& scope : scopes) {
    if (scope.startsWith(start)) {
      const QByteArray coded = scope.mid(start.size()).toUtf8();
      return QUrl::fromPercentEncoding(coded).simplified().left(kLongestText);
    }
  }
  return QString();
}

QString ReadDeviceName(const XmlNode& answer) {
  QStringList scopes;
  for (const XmlNode* scope : answer.Children(Onvif::kDevice, "Scopes")) {
    scopes.append(scope->Child(Onvif::kSchema, "ScopeItem").text);
  }
  return ScopeText(scopes, "name");
}

std::vector<DeviceProfile> ReadProfiles2(const XmlNode& answer) {
  std::vector<DeviceProfile> profiles;
  for (const XmlNode* node : answer.Children(Onvif::kMedia2, "Profiles")) {
    const XmlNode& configurations = node->Child(Onvif::kMedia2, "Configurations");
    DeviceProfile profile;
    profile.token = node->Attribute("token");
    profile.source = configurations.Child(Onvif::kMedia2, "VideoSource").Child(Onvif::kSchema, "SourceToken").text;
    profile.turns = !configurations.Child(Onvif::kMedia2, "PTZ").IsNull();
    ReadEncoder(configurations.Child(Onvif::kMedia2, "VideoEncoder"), &profile);
    profiles.push_back(profile);
  }
  return profiles;
}

std::vector<DeviceProfile> ReadProfiles1(const XmlNode& answer) {
  std::vector<DeviceProfile> profiles;
  for (const XmlNode* node : answer.Children(Onvif::kMedia1, "Profiles")) {
    DeviceProfile profile;
    profile.token = node->Attribute("token");
    profile.source = node->Child(Onvif::kSchema, "VideoSourceConfiguration").Child(Onvif::kSchema, "SourceToken").text;
    profile.turns = !node->Child(Onvif::kSchema, "PTZConfiguration").IsNull();
    ReadEncoder(node->Child(Onvif::kSchema, "VideoEncoderConfiguration"), &profile);
    profiles.push_back(profile);
  }
  return profiles;
}

QUrl ReadStreamAddress(const XmlNode& answer) {
  // The older service wraps it once more.
  const XmlNode& wrapped = answer.Child(Onvif::kMedia1, "MediaUri");
  const QString text = (wrapped.IsNull() ? answer.Child(kAnySpace, "Uri") : wrapped.Child(kAnySpace, "Uri")).text;
  QUrl url(text, QUrl::StrictMode);
  const bool is_stream = url.scheme() == QLatin1String("rtsp") || url.scheme() == QLatin1String("rtsps");
  if (!is_stream || url.host().isEmpty()) {
    return QUrl();
  }
  url.setUserInfo(QString());
  return url;
}

std::vector<DevicePreset> ReadPresets(const XmlNode& answer) {
  std::vector<DevicePreset> presets;
  for (const XmlNode* node : answer.Children(Onvif::kPtz, "Preset")) {
    DevicePreset preset{node->Attribute("token"), node->Child(Onvif::kSchema, "Name").text};
    if (preset.token.isEmpty() || presets.size() == kMostPresets) {
      continue;
    }
    if (preset.name.isEmpty()) {
      preset.name = preset.token;
    }
    presets.push_back(preset);
  }
  return presets;
}

std::vector<DeviceLens> LensesOf(const std::vector<DeviceProfile>& profiles) {
  std::vector<QString> order;  // as the device names them
  std::map<QString, std::vector<DeviceProfile>> by_source;
  for (const DeviceProfile& profile : profiles) {
    if (profile.token.isEmpty() || profile.codec.isEmpty()) {
      continue;
    }
    const bool is_new = by_source.count(profile.source) == 0;
    if (is_new && order.size() == kMostLenses) {
      continue;
    }
    if (is_new) {
      order.push_back(profile.source);
    }
    by_source[profile.source].push_back(profile);
  }
  std::vector<DeviceLens> lenses;
  for (const QString& source : order) {
    lenses.push_back(LensOf(by_source[source]));
  }
  return lenses;
}

QUrl ServiceOn(const QUrl& asked, const QUrl& named) {
  if (named.isEmpty()) {
    return QUrl();
  }
  if (named.host() == asked.host() && named.scheme() == asked.scheme()) {
    return named;
  }
  QUrl url = asked;
  url.setPath(named.path());
  url.setQuery(named.query());
  return url;
}

QUrl DeviceAddress(const QString& typed) {
  const QString text = typed.trimmed();
  const bool is_whole = text.contains(QLatin1String("://"));
  QUrl url(is_whole ? text : QStringLiteral("http://") + text, QUrl::StrictMode);
  const bool is_web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
  if (!url.isValid() || !is_web || url.host().isEmpty()) {
    return QUrl();
  }
  url.setUserInfo(QString());
  if (url.path().size() <= 1) {
    url.setPath(QStringLiteral("/onvif/device_service"));
  }
  return url;
}

}  // namespace TarnClient
