#pragma once

#include <QMetaMethod>
#include <QStringList>

namespace TarnTest {

/// "name(parameter,parameter)" of each signal and slot that the class itself declares, in their order.
inline QStringList MethodsOf(const QMetaObject& meta) {
  QStringList found;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
    const QMetaMethod method = meta.method(i);
    found << QString::fromLatin1(method.name() + '(' + method.parameterNames().join(',') + ')');
  }
  return found;
}

}  // namespace TarnTest
