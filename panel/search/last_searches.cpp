#include "last_searches.h"

#include <QMenu>
#include <algorithm>

#include "search_memory.h"
#include "view_extern_widget.h"

namespace TarnPlanView {

namespace {

constexpr int kWidest = 400;

}  // namespace

QStringList WithSearch(const QStringList& searches, const QString& text) {
  QStringList all = searches;
  const auto is_same = [&text](const QString& other) { return other.compare(text, Qt::CaseInsensitive) == 0; };
  all.erase(std::remove_if(all.begin(), all.end(), is_same), all.end());
  all.prepend(text);
  return all.mid(0, kMostLastSearches);
}

CLastSearches::CLastSearches(QWidget* field) : QObject(field), field_(field), menu_(new QMenu(field)) {
  menu_->setObjectName(QStringLiteral("last_searches"));
  menu_->setAccessibleName(CViewExternWidget::tr("Last searches"));
}

void CLastSearches::SetTexts(const QStringList& texts) {
  menu_->hide();
  texts_ = texts.mid(0, kMostLastSearches);
}

void CLastSearches::Add(const QString& text) {
  const QStringList with = WithSearch(texts_, text);
  if (!text.isEmpty() && with != texts_) {
    texts_ = with;
    Q_EMIT SignalChanged();
  }
}

bool CLastSearches::Offer() {
  if (texts_.isEmpty()) {
    return false;
  }
  menu_->clear();
  for (const QString& text : texts_) {
    AddEntry(text);
  }
  menu_->setMinimumWidth(std::min(field_->width(), kWidest));
  menu_->setActiveAction(menu_->actions().first());
  menu_->popup(field_->mapToGlobal(field_->rect().bottomLeft()));
  return true;
}

void CLastSearches::AddEntry(const QString& text) {
  QString shown = menu_->fontMetrics().elidedText(text, Qt::ElideRight, kWidest);
  shown.replace(QLatin1Char('&'), QLatin1String("&&"));  // no mark of a key
  connect(menu_->addAction(shown), &QAction::triggered, this, [this, text] { Q_EMIT SignalChosen(text); });
}

}  // namespace TarnPlanView
