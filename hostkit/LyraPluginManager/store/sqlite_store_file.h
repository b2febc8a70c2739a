#pragma once

#include <functional>
#include <memory>

#include "store/sqlite_engine.h"
#include "store/store_opener.h"

namespace TarnHost::Store {

std::unique_ptr<CSqlEngine> MakeMemoryStore(const NewStore& fresh);

/// Opens a store file. A missing one is made beside its place and moved there when it is complete, so that no half
/// store ever carries the name and of several processes that start at once one makes it.
std::unique_ptr<CSqlEngine> OpenStoreFile(const QString& file, const NewStore& fresh);

/// Opens an existing store file for looking at it: nothing is made, brought along or refused for its content.
std::unique_ptr<CSqlEngine> OpenStoreFileAsItIs(const QString& file);

/// Writes one state of the store, whatever other programs use it, into the new file `copy`, which gets its name when it
/// is whole and sound.
void BackUpStoreFile(const QString& file, const QString& copy);
/// The same of a store that is in no file: makes the tables of the newest layout and has `fill` put the rows in.
void BackUpInto(const QString& copy, const std::function<void(CSqlEngine&)>& fill);

}  // namespace TarnHost::Store
