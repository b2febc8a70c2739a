#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <vector>

#include "devices/device_records.h"

namespace TarnClient {

/// Asks a network which cameras there are; `id` is a number of its own, "urn:uuid:...".
QByteArray ProbeMessage(const QString& id);

/// The devices in an answer to one of these questions, that `sender` has sent. Empty for anything else.
std::vector<DeviceFound> ReadProbeMatches(const QByteArray& bytes, const QStringList& questions,
                                          const QHostAddress& sender);

}  // namespace TarnClient
