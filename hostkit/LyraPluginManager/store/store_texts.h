#pragma once

#include <QtGlobal>

// What the store says in more than one place.
namespace TarnHost::Store {

inline const char kStoreClosed[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store has been closed.");
inline const char kNoAnswer[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The service does not answer");
inline const char kNoConfigureRight[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "You have no right to configure the site.");
inline const char kNoUserLoggedIn[] = QT_TRANSLATE_NOOP("TarnHost::Store", "No user is logged in.");
inline const char kUserGone[] = QT_TRANSLATE_NOOP("TarnHost::Store", "Your user was deleted in the meantime.");
inline const char kWrongPassword[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The name or the password is wrong.");
inline const char kGroupGone[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "The group does not exist or was deleted in the meantime.");
inline const char kPlanGone[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "The plan does not exist or was deleted in the meantime.");
inline const char kTooLateToUndo[] = QT_TRANSLATE_NOOP("TarnHost::Store", "It is too late to undo the deletion.");
inline const char kNoCamera[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The camera does not exist.");
inline const char kNoText[] = QT_TRANSLATE_NOOP("TarnHost::Store", "What was entered is not valid text.");
inline const char kNoMoreCodes[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store has given out all its codes.");
inline const char kNotAPlanStore[] = QT_TRANSLATE_NOOP("TarnHost::Store", "%1 is not a plan store.");
inline const char kReadOnlyStore[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 is read-only.");
inline const char kDamagedStore[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 is damaged.");
inline const char kStoreFileGone[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 is gone: it was removed or moved away.");
inline const char kStoreFileEmpty[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 is empty: its content was lost.");
inline const char kNewerStore[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 was made by a newer version (%2; this program knows %3).");

}  // namespace TarnHost::Store
