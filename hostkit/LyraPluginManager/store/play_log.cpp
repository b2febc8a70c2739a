#include "store/play_log.h"

#include <QLocale>
#include <algorithm>

#include "store/store_functions.h"

namespace TarnHost::Store {
namespace {

constexpr int kKeptDays = 90;
constexpr int kForgottenAtOnce = 1000;
const char kTimeFormat[] = "yyyy-MM-dd HH:mm:ss";

QString TextOf(const QDateTime& time) {
  return QLocale::c().toString(time, kTimeFormat);  // other locales have other digits
}

}  // namespace

void CPlayLog::Add(const Entry& entry, const QDateTime& now) {
  ForgetOld(now);
  engine_.Execute("INSERT INTO plan_log (played_at, user_id, name, automatic, from_history) VALUES (?, ?, ?, ?, ?)",
                  {TextOf(now), entry.user, entry.name, int(entry.automatic), int(entry.from_history)});
}

// Old is what is far behind the newest entry as well: a desk whose clock is years ahead forgets nothing.
void CPlayLog::ForgetOld(const QDateTime& now) {
  if (looked_on_ == now.date()) {
    return;
  }
  if (CStoreFunctions* functions = engine_.Functions()) {
    if (functions->ForgetOldPlays(kKeptDays, kForgottenAtOnce)) {
      looked_on_ = now.date();
    }
    return;
  }
  const QDateTime newest =
      QDateTime::fromString(engine_.Value("SELECT max(played_at) FROM plan_log").toString(), kTimeFormat);
  if (newest.isValid()) {
    const QString oldest_kept = TextOf(std::min(now, newest).addDays(-kKeptDays));
    const QVariant last_of_part =
        engine_.Value("SELECT played_at FROM plan_log WHERE played_at < ? ORDER BY played_at LIMIT 1 OFFSET ?",
                      {oldest_kept, kForgottenAtOnce - 1});
    if (last_of_part.isValid()) {
      engine_.Execute("DELETE FROM plan_log WHERE played_at <= ?", {last_of_part});
      return;
    }
    engine_.Execute("DELETE FROM plan_log WHERE played_at < ?", {oldest_kept});
  }
  looked_on_ = now.date();
}

}  // namespace TarnHost::Store
