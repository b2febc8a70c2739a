#pragma once

#include <memory>

#include "store_fixture.h"

namespace StoreTest {

/// A site whose users have roles at the server, and each something of everything: ann may do everything, bob is a guard
/// and adds and edits, cid has no right and sees no closed group.
class CRolesTest : public CStoreTest {
  Q_OBJECT
 protected Q_SLOTS:
  void init();
  void cleanup();

 protected:
  QString Owner(const QString& statement) const { return owner_->Run(statement); }
  QString Code(const QString& table, const QString& name) const {
    return Owner(QString("SELECT code FROM %1 WHERE name = $$%2$$").arg(table, name));
  }

  std::unique_ptr<CDirectAccess> owner_, cid_;  // straight to the database
};

}  // namespace StoreTest
