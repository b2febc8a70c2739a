#include "devices/device_texts.h"

#include <QCoreApplication>

namespace TarnClient {

namespace {

const char* SourceOf(DeviceFailure failure) {
  switch (failure) {
    case DeviceFailure::NoAnswer:
      return QT_TRANSLATE_NOOP("TarnClient::DeviceTexts", "The device does not answer");
    case DeviceFailure::Certificate:
      return QT_TRANSLATE_NOOP("TarnClient::DeviceTexts",
                               "No authority known here vouches for the device's certificate");
    case DeviceFailure::WrongPassword:
      return QT_TRANSLATE_NOOP("TarnClient::DeviceTexts", "The device refuses this user and password");
    case DeviceFailure::Refused:
      return QT_TRANSLATE_NOOP("TarnClient::DeviceTexts", "The device does not do what it was asked for");
    case DeviceFailure::NotUnderstood:
      return QT_TRANSLATE_NOOP("TarnClient::DeviceTexts", "What answers there is no ONVIF device");
    case DeviceFailure::NoVideoProfile:
      return QT_TRANSLATE_NOOP("TarnClient::DeviceTexts", "The device has no stream that can be shown");
  }
  return "";
}

}  // namespace

QString TextOf(DeviceFailure failure, const QString& words) {
  const QString text = QCoreApplication::translate("TarnClient::DeviceTexts", SourceOf(failure));
  if (words.isEmpty()) {
    return text;
  }
  return QStringLiteral("%1 (%2)").arg(text, words);
}

}  // namespace TarnClient
