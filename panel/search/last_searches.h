#pragma once

#include <QObject>
#include <QStringList>

class QMenu;
class QWidget;

namespace TarnPlanView {

/// With `text` as the latest of them, once, and no more than kMostLastSearches.
QStringList WithSearch(const QStringList& searches, const QString& text);

/// What a user has last searched for, latest first, and the list that offers it below the search field. Thread: GUI.
class CLastSearches : public QObject {
  Q_OBJECT
 public:
  explicit CLastSearches(QWidget* field);

  const QStringList& Texts() const { return texts_; }
  /// Of another user, or as remembered.
  void SetTexts(const QStringList& texts);
  /// The user has searched for this; nothing for an empty text.
  void Add(const QString& text);
  /// False when there is none to offer.
  bool Offer();

 Q_SIGNALS:
  /// By Add().
  void SignalChanged();
  void SignalChosen(const QString& text);

 private:
  void AddEntry(const QString& text);

  QWidget* const field_;
  QMenu* const menu_;
  QStringList texts_;
};

}  // namespace TarnPlanView
