#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QStringDecoder>
#else
#include <QTextCodec>
#endif

namespace TarnQt {

/// The text that `bytes` are in an encoding ("UTF-8", "GB18030", ...); none when some of them are no text in it, or
/// when they end within a character. A byte order mark at the beginning is left out.
inline std::optional<QString> DecodedText(const char* encoding, const QByteArray& bytes) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless);
  const QString text = decoder.decode(bytes);
  const bool is_whole = !decoder.hasError();
#else
  QTextCodec::ConverterState state;
  const QString text = QTextCodec::codecForName(encoding)->toUnicode(bytes.constData(), bytes.size(), &state);
  const bool is_whole = state.invalidChars == 0 && state.remainingChars == 0;
#endif
  if (!is_whole) {
    return std::nullopt;
  }
  return text;
}

}  // namespace TarnQt
