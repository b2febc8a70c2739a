#pragma once

#include <QByteArray>
#include <QVector>

namespace TarnClient {

class CWallDesk;

/// The client's state as one line of JSON: rows present in the two trees, and for each wall, that of the main window
/// first, the plan that plays, its page and what each window shows. Thread: GUI.
QByteArray MakeStateReport(const QVector<CWallDesk*>& desks);

}  // namespace TarnClient
