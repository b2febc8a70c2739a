#pragma once

#include <QString>

#include "TarnHost/secret.h"

namespace TarnHost::Store {

/// Passwords as the store keeps them: salted Argon2id, in the text form that names its own parameters. The same letters
/// composed in another way are the same password (NFC); any length and any character will do. Takes about a fifth of a
/// second and 64 MB. Thread: any.
struct PasswordHash {
  /// Both throw CStoreError when the machine lacks the memory.
  static QString Of(const CSecret& password);
  static bool Fits(const QString& hash, const CSecret& password);
};

}  // namespace TarnHost::Store
