#include "app/store_tool.h"

#include <cstdio>

#include "TarnHost/store_care.h"
#include "app/data_file.h"

namespace TarnClient {

namespace {

enum ExitCode { kWell = 0, kFindings = 1, kCannotDo = 2 };

int Refuse(const QString& line) {
  std::fprintf(stderr, "tarn-client: %s\n", qUtf8Printable(line));
  return kCannotDo;
}

int Check(const QString& url) {
  QStringList findings;
  QString summary, error;
  if (!TarnHost::StoreCare::Check(url, &findings, &summary, &error)) {
    return Refuse(error);
  }
  for (const QString& line : findings + QStringList{summary}) {
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
  }
  return findings.isEmpty() ? kWell : kFindings;
}

int BackUp(const QString& url, const QString& copy) {
  QString error;
  if (!TarnHost::StoreCare::BackUp(url, copy, &error)) {
    return Refuse(error);
  }
  std::fprintf(stdout, "%s\n", qUtf8Printable(QStringLiteral("The store was copied to %1.").arg(copy)));
  return kWell;
}

}  // namespace

int RunStoreTool(const ClientOptions& options) {
  const QString url = StoreUrlOf(options);
  return options.check ? Check(url) : BackUp(url, options.backup_file);
}

}  // namespace TarnClient
