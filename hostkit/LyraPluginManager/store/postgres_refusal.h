#pragma once

#include "store/postgres_address.h"
#include "store/store_text.h"

namespace TarnHost::Store {

/// Why no connection comes about, as one plain sentence without a stop at its end. Tries to connect once more, for the
/// driver does not hand on what kind of refusal it was, and its texts are in the server's language. Waits for at most
/// five seconds.
CStoreText ReasonOfRefusal(const PostgresAddress& address);
/// The same for a server that has kept silent for too long already.
CStoreText ReasonOfSilence(const PostgresAddress& address);

}  // namespace TarnHost::Store
