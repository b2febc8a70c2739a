#include "panel_stage.h"

#include <QStackedWidget>

namespace TarnTest {

using namespace TarnPlanView;

CPanelStage::CPanelStage(CPlanFixture& fixture, bool own)
    : panel_(new CViewExternWidget(nullptr)),
      controller_(new CStandardViewController(own ? fixture.Own() : fixture.Public())) {
  controller_->setParent(nullptr);
  panel_->SetModel(own ? fixture.Own() : fixture.Public());
  panel_->SetStandardViewControl(controller_.get());
  QObject::connect(panel_.get(), &CViewExternWidget::SignalMessageTipNeeded, panel_.get(),
                   [this](const QString& text, int state) { tips_.append(QString::number(state) + ':' + text); });
  TarnHost::SetModalAnswer([this](const TarnHost::ModalQuestion& question) {
    questions_.append(question.text);
    if (while_asking) {
      while_asking();
    }
    return answer;
  });
  panel_->resize(320, 600);
  panel_->show();
}

CPanelStage::~CPanelStage() {
  TarnHost::SetModalAnswer({});
}

QToolButton* CPanelStage::Button(const char* name) const {
  return panel_->findChild<QToolButton*>(QString::fromLatin1(name));
}

QString CPanelStage::Enabled() const {
  QString enabled;
  const std::pair<const char*, QChar> buttons[] = {
      {"add_group_btn", 'g'}, {"add_view_btn", 'p'}, {"edit_btn", 'e'}, {"delete_btn", 'd'}};
  for (const auto& [name, letter] : buttons) {
    enabled += Button(name)->isEnabled() ? letter : QChar('-');
  }
  return enabled;
}

QString CPanelStage::PageName() const {
  const QString name = panel_->findChild<QStackedWidget*>()->currentWidget()->objectName();
  return name.startsWith(QLatin1String("plan_view_tree")) ? QStringLiteral("tree") : name;
}

void CPanelStage::Expand(const QModelIndex& row) {
  const QPersistentModelIndex kept(row);
  Tree().ExpandAsync(row);
  QVERIFY(QTest::qWaitFor([&] { return !Tree().IsWaiting(kept); }));
}

QModelIndex CPanelStage::findBelow(const QModelIndex& parent, const QString& name) {
  QAbstractItemModel* rows = Tree().model();
  if (parent.isValid() && rows->canFetchMore(parent)) {
    Expand(parent);
  }
  for (int row = 0; row < rows->rowCount(parent); ++row) {
    const QModelIndex child = rows->index(row, 0, parent);
    const QModelIndex found = child.data().toString() == name ? child : findBelow(child, name);
    if (found.isValid()) {
      return found;
    }
  }
  return QModelIndex();
}

QModelIndex CPanelStage::Row(const QString& name) {
  return findBelow(QModelIndex(), name);
}

void CPanelStage::Choose(const QString& name) {
  const QModelIndex row = Row(name);
  QVERIFY2(row.isValid(), qPrintable(name));
  Tree().setCurrentIndex(row);
}

QStringList CPanelStage::TakeTips() {
  return std::exchange(tips_, {});
}

QStringList CPanelStage::TakeQuestions() {
  return std::exchange(questions_, {});
}

}  // namespace TarnTest
