#include "devices/device_question.h"

#include <QXmlStreamWriter>
#include <algorithm>

namespace TarnClient {

namespace {

constexpr int kMostPatience = 8;  // with all calls together, in times that with one

/// The pieces of a profile that are needed to choose among them; without this the newer service leaves them out.
SoapBody ProfilesBody2() {
  return SimpleBody(
      Onvif::kMedia2, "GetProfiles",
      {{"Type", FromAscii("VideoSource")}, {"Type", FromAscii("VideoEncoder")}, {"Type", FromAscii("PTZ")}});
}

SoapBody StreamBody2(const QString& profile) {
  return SimpleBody(Onvif::kMedia2, "GetStreamUri", {{"Protocol", FromAscii("RTSP")}, {"ProfileToken", profile}});
}

SoapBody StreamBody1(const QString& profile) {
  return [profile](QXmlStreamWriter& xml) {
    xml.writeStartElement(FromAscii(Onvif::kMedia1), FromAscii("GetStreamUri"));
    xml.writeStartElement(FromAscii(Onvif::kMedia1), FromAscii("StreamSetup"));
    xml.writeTextElement(FromAscii(Onvif::kSchema), FromAscii("Stream"), FromAscii("RTP-Unicast"));
    xml.writeStartElement(FromAscii(Onvif::kSchema), FromAscii("Transport"));
    xml.writeTextElement(FromAscii(Onvif::kSchema), FromAscii("Protocol"), FromAscii("RTSP"));
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeTextElement(FromAscii(Onvif::kMedia1), FromAscii("ProfileToken"), profile);
    xml.writeEndElement();
  };
}

}  // namespace

struct CDeviceQuestion::Running {
  QUrl address;
  DeviceServices services;
  bool is_newer = false;  // the newer service of media has answered
  std::vector<DeviceLens> lenses;
  DeviceAnswer answer;  // a camera for each lens
};

CDeviceQuestion::CDeviceQuestion(QObject* parent) : QObject(parent) {
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, [this] { Fail(DeviceFailure::NoAnswer, QString()); });
  qRegisterMetaType<TarnClient::DeviceAnswer>();
  qRegisterMetaType<TarnClient::DeviceFailure>();
}

CDeviceQuestion::~CDeviceQuestion() = default;

void CDeviceQuestion::Ask(const QUrl& address, const QString& user, const QString& password) {
  Cancel();
  session_ = std::make_unique<CDeviceSession>(user, password, this);
  session_->SetPatience(patience_ms_);
  session_->SetAuthority(authority_);
  running_ = std::make_unique<Running>();
  running_->address = address;
  deadline_.start(kMostPatience * patience_ms_);
  AskTime();
}

void CDeviceQuestion::Cancel() {
  deadline_.stop();
  if (session_) {
    session_.release()->deleteLater();  // it may be answering right now
  }
  running_.reset();
}

void CDeviceQuestion::Call(const QUrl& service, const SoapBody& body, std::initializer_list<DeviceFailure> mild,
                           const Then& then) {
  const CDeviceSession* asked = session_.get();
  const std::vector<DeviceFailure> going_on = mild;
  session_->Call(service, body, [=](const DeviceCallResult& result) {
    if (asked != session_.get()) {
      return;
    }
    const bool ends = result.failure && std::find(going_on.begin(), going_on.end(), *result.failure) == going_on.end();
    if (ends) {
      Fail(*result.failure, result.words);
    } else {
      then(result);
    }
  });
}

void CDeviceQuestion::Fail(DeviceFailure failure, const QString& words) {
  Cancel();
  Q_EMIT SignalFailed(failure, words);
}

void CDeviceQuestion::AskTime() {
  const CDeviceSession* asked = session_.get();
  session_->CallAsNoOne(running_->address, SimpleBody(Onvif::kDevice, "GetSystemDateAndTime"),
                        [=](const DeviceCallResult& result) {
                          if (asked != session_.get()) {
                            return;
                          }
                          const bool is_there = !result.failure || *result.failure == DeviceFailure::Refused ||
                                                *result.failure == DeviceFailure::WrongPassword;
                          if (!is_there) {
                            Fail(*result.failure, result.words);
                            return;
                          }
                          const QDateTime time = ReadDeviceTime(result.body);
                          if (time.isValid()) {
                            session_->SetDeviceTime(time);
                            running_->answer.clock_offset_ms = session_->ClockOffsetMs();
                          }
                          AskServices();
                        });
}

void CDeviceQuestion::AskServices() {
  const SoapBody body = SimpleBody(Onvif::kDevice, "GetServices", {{"IncludeCapability", FromAscii("false")}});
  Call(running_->address, body, {DeviceFailure::Refused, DeviceFailure::NotUnderstood},
       [this](const DeviceCallResult& result) {
         running_->services = ReadServices(result.body);
         const bool has_media = !running_->services.media2.isEmpty() || !running_->services.media1.isEmpty();
         if (has_media) {
           AskInformation();
         } else {
           AskCapabilities();
         }
       });
}

void CDeviceQuestion::AskCapabilities() {
  const SoapBody body = SimpleBody(Onvif::kDevice, "GetCapabilities", {{"Category", FromAscii("All")}});
  Call(running_->address, body, {}, [this](const DeviceCallResult& result) {
    running_->services = ReadCapabilities(result.body);
    AskInformation();
  });
}

void CDeviceQuestion::AskInformation() {
  Call(running_->address, SimpleBody(Onvif::kDevice, "GetDeviceInformation"),
       {DeviceFailure::Refused, DeviceFailure::NotUnderstood}, [this](const DeviceCallResult& result) {
         running_->answer.model = result.body.Child(Onvif::kDevice, "Model").text;
         AskName();
       });
}

void CDeviceQuestion::AskName() {
  Call(running_->address, SimpleBody(Onvif::kDevice, "GetScopes"),
       {DeviceFailure::Refused, DeviceFailure::NotUnderstood}, [this](const DeviceCallResult& result) {
         running_->answer.name = ReadDeviceName(result.body);
         AskProfiles();
       });
}

void CDeviceQuestion::AskProfiles() {
  const DeviceServices& services = running_->services;
  if (services.media2.isEmpty()) {
    AskProfiles1();
    return;
  }
  Call(ServiceOn(running_->address, services.media2), ProfilesBody2(),
       {DeviceFailure::Refused, DeviceFailure::NotUnderstood}, [this](const DeviceCallResult& result) {
         running_->is_newer = !result.failure;
         if (result.failure) {
           AskProfiles1();
         } else {
           OnProfiles(ReadProfiles2(result.body));
         }
       });
}

void CDeviceQuestion::AskProfiles1() {
  if (running_->services.media1.isEmpty()) {
    Fail(DeviceFailure::NoVideoProfile, QString());
    return;
  }
  Call(ServiceOn(running_->address, running_->services.media1), SimpleBody(Onvif::kMedia1, "GetProfiles"), {},
       [this](const DeviceCallResult& result) { OnProfiles(ReadProfiles1(result.body)); });
}

void CDeviceQuestion::OnProfiles(const std::vector<DeviceProfile>& profiles) {
  running_->lenses = LensesOf(profiles);
  running_->answer.cameras.resize(running_->lenses.size());
  AskStream(0, 0);
}

void CDeviceQuestion::AskStream(size_t lens, size_t stream) {
  if (lens == running_->lenses.size()) {
    AskPresets(0);
    return;
  }
  const std::vector<DeviceProfile>& profiles = running_->lenses[lens].streams;
  if (stream == profiles.size()) {
    AskStream(lens + 1, 0);
    return;
  }
  const DeviceServices& services = running_->services;
  QUrl service = services.media1;
  SoapBody body = StreamBody1(profiles[stream].token);
  if (running_->is_newer) {
    service = services.media2;
    body = StreamBody2(profiles[stream].token);
  }
  Call(ServiceOn(running_->address, service), body, {DeviceFailure::Refused, DeviceFailure::NotUnderstood},
       [=](const DeviceCallResult& result) { OnStream(lens, stream, ReadStreamAddress(result.body)); });
}

void CDeviceQuestion::OnStream(size_t lens, size_t stream, const QUrl& stream_address) {
  if (!stream_address.isEmpty()) {
    const DeviceProfile& profile = running_->lenses[lens].streams[stream];
    std::vector<DeviceStream>& streams = running_->answer.cameras[lens].streams;
    streams.push_back({static_cast<int>(streams.size()), profile.codec, profile.size, stream_address, profile.token});
  }
  AskStream(lens, stream + 1);
}

void CDeviceQuestion::AskPresets(size_t lens) {
  const std::vector<DeviceLens>& lenses = running_->lenses;
  while (lens < lenses.size() && lenses[lens].ptz_profile.isEmpty()) {
    ++lens;
  }
  const QUrl service = ServiceOn(running_->address, running_->services.ptz);
  if (lens == lenses.size() || service.isEmpty()) {
    Answer();
    return;
  }
  const QString profile = lenses[lens].ptz_profile;
  Call(service, SimpleBody(Onvif::kPtz, "GetPresets", {{"ProfileToken", profile}}),
       {DeviceFailure::Refused, DeviceFailure::NotUnderstood, DeviceFailure::NoAnswer},
       [=](const DeviceCallResult& result) {
         DeviceCamera& camera = running_->answer.cameras[lens];
         camera.presets = ReadPresets(result.body);
         camera.ptz_service = service;
         camera.ptz_profile = profile;
         AskPresets(lens + 1);
       });
}

void CDeviceQuestion::Answer() {
  DeviceAnswer answer = running_->answer;
  std::vector<DeviceCamera>& cameras = answer.cameras;
  cameras.erase(
      std::remove_if(cameras.begin(), cameras.end(), [](const DeviceCamera& camera) { return camera.streams.empty(); }),
      cameras.end());
  if (cameras.empty()) {
    Fail(DeviceFailure::NoVideoProfile, QString());
    return;
  }
  Cancel();
  Q_EMIT SignalAnswered(answer);
}

}  // namespace TarnClient
