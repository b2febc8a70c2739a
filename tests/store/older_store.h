#pragma once

#include "store_fixture.h"

namespace StoreTest {

/// Gives the store that `fixture` names the layout that programs of before made, 1 to 7, with its content as far as
/// that has room for it. No client has it open.
void SetBack(const CStoreFixture& fixture, int version);

}  // namespace StoreTest
