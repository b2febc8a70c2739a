#pragma once

#include <QDateTime>
#include <QString>

namespace TarnClient {

/// The time of day, "HH:mm" for instance; of another day than today with its date before.
QString ShownTime(const QDateTime& time, const QString& clock_format, const QDate& today = QDate::currentDate());

}  // namespace TarnClient
