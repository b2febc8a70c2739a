#include "app/hide_passwords.h"

#include <QString>
#include <cstring>

#include "TarnHost/plan_store.h"

namespace TarnClient {

namespace {

constexpr char kStoreOption[] = "--store", kStoreOptionAndValue[] = "--store=";

void Hide(char* address) {
  const QByteArray shown = TarnHost::CPlanStore::ShownAddress(QString::fromLocal8Bit(address)).toLocal8Bit();
  const size_t length = std::strlen(address), shown_length = static_cast<size_t>(shown.size());
  if (shown == address) {
    return;
  }
  std::memset(address, 0, length);
  std::memcpy(address, shown.constData(), qMin(length, shown_length));
}

}  // namespace

// An address may also stand where none belongs.
void HidePasswords(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], kStoreOptionAndValue, std::strlen(kStoreOptionAndValue)) == 0) {
      Hide(argv[i] + std::strlen(kStoreOptionAndValue));
    } else if (std::strcmp(argv[i - 1], kStoreOption) == 0 || std::strstr(argv[i], "://") != nullptr ||
               std::strstr(argv[i], "password=") != nullptr) {
      Hide(argv[i]);
    }
  }
}

}  // namespace TarnClient
