#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

#include "figures.h"

namespace {

struct Chapter {
  const char* name;
  Figures (*measure)();
};

// Sorting comes first, before other chapters have scattered the heap.
const Chapter kChapters[] = {
    {"sort", MeasureSorting},  {"load", MeasureFullLoad},   {"lookup", MeasureLookUps}, {"expand", MeasureExpand},
    {"tree", MeasureTreeView}, {"locate", MeasureLocate},   {"memory", MeasureMemory},  {"store", MeasureStoreReads},
    {"search", MeasureSearch}, {"cameras", MeasureCameras}, {"editor", MeasureEditor},  {"start", MeasureStart},
    {"growth", MeasureGrowth}, {"wall", MeasureWall},
#ifdef WITH_POSTGRES
    {"site", MeasureSite},
#endif
};

void Print(const Figure& figure) {
  const char* sense = figure.sense == Figure::AtMost ? "<=" : ">=";
  const char* verdict = figure.Holds() ? "ok" : "FALLS SHORT";
  std::printf("%-20s %10.2f  bar %s %-8g %-4s  %s (%s)\n", qPrintable(figure.name), figure.value, sense, figure.bar,
              verdict, qPrintable(figure.what), qPrintable(figure.note));
  std::fflush(stdout);
}

QJsonObject ToJson(const Figure& figure) {
  const QString sense = figure.sense == Figure::AtMost ? QStringLiteral("at most") : QStringLiteral("at least");
  return {{QStringLiteral("name"), figure.name},    {QStringLiteral("what"), figure.what},
          {QStringLiteral("note"), figure.note},    {QStringLiteral("sense"), sense},
          {QStringLiteral("value"), figure.value},  {QStringLiteral("bar"), figure.bar},
          {QStringLiteral("holds"), figure.Holds()}};
}

// The offscreen platform warns of size hints for every window.
void DropSizeHints(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (!text.contains(QLatin1String("propagateSizeHints"))) {
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
  }
}

bool WriteJson(const QString& path, const QJsonArray& figures) {
  QFile file(path);
  const QByteArray text = QJsonDocument(QJsonObject{{QStringLiteral("figures"), figures}}).toJson();
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  qInstallMessageHandler(DropSizeHints);
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Measures the figures of the plan panel against their bars."));
  parser.addHelpOption();
  const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Write all figures to FILE."),
                                QStringLiteral("FILE"));
  const QCommandLineOption only(QStringLiteral("only"), QStringLiteral("Measure one chapter only."),
                                QStringLiteral("CHAPTER"));
  const QCommandLineOption without(QStringLiteral("without"), QStringLiteral("Leave one chapter out; may be repeated."),
                                   QStringLiteral("CHAPTER"));
  parser.addOptions({json, only, without});
  parser.process(app);

  QJsonArray figures;
  bool all_hold = true;
  for (const Chapter& chapter : kChapters) {
    const QString name = QLatin1String(chapter.name);
    if ((parser.isSet(only) && parser.value(only) != name) || parser.values(without).contains(name)) {
      continue;
    }
    for (const Figure& figure : chapter.measure()) {
      Print(figure);
      figures.append(ToJson(figure));
      all_hold = all_hold && figure.Holds();
    }
  }
  if (parser.isSet(json) && !WriteJson(parser.value(json), figures)) {
    std::fprintf(stderr, "bench: cannot write %s\n", qPrintable(parser.value(json)));
    return 2;
  }
  return all_hold && !figures.isEmpty() ? 0 : 1;
}
