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

QString CPanelStage::Enabled() const {
  QString enabled = "gped";
  const char* const buttons[] = {"add_group_btn", "add_view_btn", "edit_btn", "delete_btn"};
  for (int i = 0; i < enabled.size(); ++i) {
    enabled[i] = Button(buttons[i])->isEnabled() ? enabled[i] : QChar('-');
  }
  return enabled;
}

QString CPanelStage::PageName() const {
  const QString name = panel_->findChild<QStackedWidget*>()->currentWidget()->objectName();
  return name.startsWith("plan_view_tree") ? "tree" : name;
}

void CPanelStage::Expand(const QModelIndex& row) {
  const QPersistentModelIndex kept(row);
  Tree().ExpandAsync(row);
  QVERIFY(QTest::qWaitFor([&] { return !Tree().IsWaiting(kept); }));
}

void CPanelStage::ExpandAll() {
  Row("no row has this name");
  Tree().expandAll();
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

void CPanelStage::Choose(const QString& name) {
  const QModelIndex row = Row(name);
  QVERIFY2(row.isValid(), qPrintable(name));
  Tree().setCurrentIndex(row);
}

void CPanelStage::Drop(const QString& row, const QString& onto) {
  const QRect from = Tree().visualRect(Row(row)), target = Tree().visualRect(Row(onto));
  Q_EMIT Tree().SignalMoveRow(from.center(), target.center(), target);
}

void CPanelStage::Search(const QString& text) {
  Field()->setText(text);
  QTest::keyClick(Field(), Qt::Key_Return);
}

QStringList CPanelStage::Hits() const {
  QStringList names;
  for (int row = 0; row < List()->model()->rowCount(); ++row) {
    names.append(List()->model()->index(row, 0).data().toString());
  }
  return names;
}

QString CPanelStage::Edited() const {
  return panel_->IsEditorOpen() ? EditorName()->text() : QString();
}

void CPanelStage::Edit(const QString& plan) {
  BeginEdit(plan);
  QTRY_COMPARE(Edited(), plan);
}

QStringList CPanelStage::AwaitTips() {
  const bool said = QTest::qWaitFor([this] { return !tips_.isEmpty(); });
  return said ? TakeTips() : QStringList();
}

}  // namespace TarnTest
