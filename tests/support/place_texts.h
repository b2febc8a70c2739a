#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTranslator>

namespace TarnTest {

/// Stands in for a catalogue where a text takes arguments: without their places Qt warns and the arguments are lost.
/// Each such key becomes itself and its places, under its right context only. Thread: GUI, while it lives.
class CPlaceTexts : public QTranslator {
 public:
  CPlaceTexts() { QCoreApplication::installTranslator(this); }
  ~CPlaceTexts() override { QCoreApplication::removeTranslator(this); }

  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* text, const char*, int) const override {
    const QString of = QString::fromLatin1(context) + QLatin1Char(' ') + QString::fromLatin1(text);
    if (of == QLatin1String("TarnPlanView::CViewNameEdit PleaseEnterCharacterUYoapXK") ||
        of == QLatin1String("TarnPlanView::CSavePlanAsDlg PleaseEnterCharacterUYoapXK")) {
      return QStringLiteral("Rule %1 %2 %3");
    }
    return of == QLatin1String("TarnPlanView::CShareViewWgt Orbis-ControlClient.bd027996d94a4b8cba21495e77820e58.msg")
               ? QStringLiteral("Error %1")
               : QString();
  }
};

}  // namespace TarnTest
