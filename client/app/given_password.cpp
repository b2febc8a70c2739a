#include "app/given_password.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace TarnClient {

using TarnHost::CSecret;

namespace {

constexpr char kVariable[] = "TARN_PASSWORD";
constexpr size_t kLongest = 64 * 1024;

// The block that the process was started with can be read by others of the same user, so the letters go, too.
std::optional<CSecret> TakeVariable() {
  char* text = std::getenv(kVariable);
  if (text == nullptr) {
    return std::nullopt;
  }
  CSecret password{std::string(text)};
  volatile char* letters = text;
  for (size_t place = std::strlen(text); place > 0; --place) {
    letters[place - 1] = 0;
  }
  ::unsetenv(kVariable);
  return password;
}

// Byte by byte: what stands behind the line is another reader's.
std::optional<CSecret> FirstLine(int descriptor, QString* error) {
  std::string line;
  line.reserve(kLongest);  // or copies of its beginning would be left
  for (;;) {
    char byte = 0;
    const ssize_t count = ::read(descriptor, &byte, 1);
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count < 0 || line.size() == kLongest) {
      *error = QStringLiteral("no password can be read from the descriptor %1").arg(descriptor);
      const CSecret wiped(std::move(line));
      return std::nullopt;
    }
    if (count == 0 || byte == '\n') {
      break;
    }
    line.push_back(byte);
  }
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  return CSecret(std::move(line));
}

}  // namespace

std::optional<CSecret> TakeGivenPassword(std::optional<int> descriptor, QString* error) {
  std::optional<CSecret> of_variable = TakeVariable();
  if (descriptor) {
    return FirstLine(*descriptor, error);
  }
  return of_variable;
}

}  // namespace TarnClient
