#pragma once

#include <chrono>

#include "store/postgres_address.h"
#include "store/store_text.h"

namespace TarnHost::Store {

/// What comes of an attempt to connect.
struct PostgresAttempt {
  bool lets_in = false;
  bool refuses_account = false;  // user or password are not right, or not from here
  CStoreText reason;             // else
};

/// Waits for no longer than that.
PostgresAttempt TryToConnect(const PostgresAddress& address, std::chrono::milliseconds patience);

/// Why no connection comes about, the reason as one plain sentence without a stop at its end. Tries to connect once
/// more, for the driver does not hand on what kind of refusal it was, and its texts are in the server's language. Waits
/// for at most five seconds.
PostgresAttempt LookWhyRefused(const PostgresAddress& address);
/// The reason of a server that has kept silent for too long already.
CStoreText ReasonOfSilence(const PostgresAddress& address);

}  // namespace TarnHost::Store
