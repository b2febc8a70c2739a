#pragma once

#include <QByteArray>
#include <QLineEdit>

#include "TarnHost/secret.h"

namespace TarnClient {

/// What stands in a field for passwords, without leaving copies behind.
inline TarnHost::CSecret TypedPassword(const QLineEdit& field) {
  QByteArray bytes = field.text().toUtf8();
  TarnHost::CSecret password(std::string(bytes.constData(), static_cast<size_t>(bytes.size())));
  bytes.fill('\0');
  return password;
}

}  // namespace TarnClient
