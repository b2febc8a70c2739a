#pragma once

#include <QByteArray>

namespace TarnClient {

class CLiveWall;

/// The client's state as one line of JSON: rows present in the two trees, the plan that plays, its page and what each
/// window shows. Thread: GUI.
QByteArray MakeStateReport(const CLiveWall& wall);

}  // namespace TarnClient
