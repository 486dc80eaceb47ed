#include "PFSecureStorage.h"

#include <QCoreApplication>

QString PFSecureStorage::describe(Status status)
{
    switch (status) {
    case Status::Ok:
        return QCoreApplication::translate("PFSecureStorage", "the secure store answered");
    case Status::NotFound:
        return QCoreApplication::translate("PFSecureStorage", "nothing is stored there");
    case Status::Locked:
        return QCoreApplication::translate("PFSecureStorage", "the keyring is locked");
    case Status::Unavailable:
        return QCoreApplication::translate("PFSecureStorage", "there is no keyring on this computer");
    case Status::Denied:
        return QCoreApplication::translate("PFSecureStorage", "the keyring refused");
    case Status::Failed:
        break;
    }
    return QCoreApplication::translate("PFSecureStorage", "the keyring failed");
}
