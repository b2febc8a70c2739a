#include "store/store_text.h"

#include <QCoreApplication>

namespace TarnHost::Store {
namespace {

// In one go: an argument may hold a "%1" of its own.
QString Filled(const QString& text, const QStringList& arguments) {
  QString filled;
  for (int i = 0; i < text.size(); ++i) {
    const bool is_place = text[i] == '%' && i + 1 < text.size() && text[i + 1].isDigit();
    filled += is_place ? arguments.value(text[++i].digitValue() - 1) : QString(text[i]);
  }
  return filled;
}

}  // namespace

QString CStoreText::Rendered(bool translated) const {
  if (source_ == nullptr) {
    return words_;
  }
  const QString text =
      translated ? QCoreApplication::translate("TarnHost::Store", source_) : QString::fromUtf8(source_);
  return Filled(text, RenderedArguments(translated));
}

QStringList CStoreText::RenderedArguments(bool translated) const {
  QStringList rendered;
  for (const CStoreText& argument : arguments_) {
    rendered.append(argument.Rendered(translated));
  }
  return rendered;
}

}  // namespace TarnHost::Store
