#pragma once

namespace TarnClient {

/// Sends Qt's messages to the log, and warnings to stderr as well. Thread: any.
void InstallQtMessageHandler();

/// Qt complains and falls back to a shared folder when the session has no runtime folder; this makes a private one.
/// Call before the application object is made.
void EnsureRuntimeFolder();

}  // namespace TarnClient
