#include "accounts/password_hash.h"

#include <sodium.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "store/store_error.h"

namespace TarnHost::Store {
namespace {

constexpr auto kOperations = crypto_pwhash_OPSLIMIT_MODERATE;
constexpr auto kMemory = crypto_pwhash_MEMLIMIT_INTERACTIVE;

void Begin() {
  static const int begun = sodium_init();
  if (begun < 0) {
    throw CStoreError(CStoreError::kFailed, QStringLiteral("Passwords cannot be checked on this machine."));
  }
}

[[noreturn]] void RefuseForMemory() {
  throw CStoreError(CStoreError::kFailed, QStringLiteral("There is not enough memory to look at a password."));
}

void Wipe(QString* text) {
  sodium_memzero(text->data(), static_cast<size_t>(text->size()) * sizeof(QChar));
}

// What is no text stays as it is. Each copy on the way is wiped.
CSecret Composed(const CSecret& password) {
  const std::string& bytes = password.Reveal();
  const bool is_plain = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; });
  if (is_plain) {
    return password;
  }
  QString text = QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
  QString composed = text.normalized(QString::NormalizationForm_C);
  QByteArray utf8 = composed.toUtf8();
  const bool was_text = !text.contains(QChar::ReplacementCharacter);
  CSecret result = password;
  if (was_text) {
    result = CSecret(std::string(utf8.constData(), static_cast<size_t>(utf8.size())));
  }
  Wipe(&text);
  Wipe(&composed);
  sodium_memzero(utf8.data(), static_cast<size_t>(utf8.size()));
  return result;
}

}  // namespace

QString PasswordHash::Of(const CSecret& password) {
  Begin();
  const CSecret composed = Composed(password);
  char hash[crypto_pwhash_STRBYTES] = {};
  const std::string& bytes = composed.Reveal();
  if (crypto_pwhash_str(hash, bytes.data(), bytes.size(), kOperations, kMemory) != 0) {
    RefuseForMemory();
  }
  return QString::fromLatin1(hash);
}

bool PasswordHash::Fits(const QString& hash, const CSecret& password) {
  Begin();
  const CSecret composed = Composed(password);
  const QByteArray known = hash.toLatin1();
  const std::string& bytes = composed.Reveal();
  errno = 0;  // the same answer says that the password is wrong
  const bool fits = crypto_pwhash_str_verify(known.constData(), bytes.data(), bytes.size()) == 0;
  if (!fits && errno == ENOMEM) {
    RefuseForMemory();
  }
  return fits;
}

}  // namespace TarnHost::Store
