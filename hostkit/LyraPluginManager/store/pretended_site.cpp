#include "store/pretended_site.h"

#include <QStringList>

#include "TarnHost/plan_site.h"

namespace TarnHost::Store {
namespace {

QStringList CamerasOfTheDemoSite() {
  QStringList names;
  for (const PlanSite::Camera& camera : MakeDemoSite().cameras) {
    names.append(QString::fromStdString(camera.name));
  }
  return names;
}

QStringList CamerasOf(CSqlEngine& engine) {
  QStringList names;
  engine.ForEach("SELECT name FROM camera ORDER BY id", {},
                 [&names](const QSqlQuery& query) { names.append(query.value(0).toString()); });
  return names;
}

}  // namespace

void MarkIfPretended(CSqlEngine& engine) {
  const bool has_address =
      engine.Value("SELECT 1 FROM camera_stream WHERE url <> '' UNION ALL SELECT 1 FROM camera_access LIMIT 1")
          .isValid();
  if (!has_address && CamerasOf(engine) == CamerasOfTheDemoSite()) {
    engine.Execute("INSERT INTO store_info (name, value) VALUES ('pretended', '1') ON CONFLICT (name) DO NOTHING");
  }
}

}  // namespace TarnHost::Store
