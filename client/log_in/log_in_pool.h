#pragma once

class QThreadPool;

namespace TarnClient {

/// The threads on which passwords are checked and users logged in: who wants to work here does not wait behind loads
/// and saves of a store that is slow to answer. Thread: any.
QThreadPool& LogInPool();

}  // namespace TarnClient
