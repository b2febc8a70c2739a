#pragma once

namespace TarnClient {

/// How long to wait after so many failures in a row before the service is asked once more: a moment at first, a minute
/// at the most. 1 is the first failure.
int RetryPauseSeconds(int failures);

}  // namespace TarnClient
