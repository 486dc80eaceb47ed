#pragma once

#include "TestBackend.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

// Helpers for the backend suites: pointers, master-key look-ups, uploads and plain pages.
namespace BackendProbe {

using Header = TestBackend::Header;

[[nodiscard]] QJsonObject pointer(const QString &className, const QString &objectId);
[[nodiscard]] QJsonObject userPointer(const QString &objectId);

// A client request (client key, optional session token) with additional headers.
[[nodiscard]] TestBackend::Reply send(const QByteArray &method, const QString &path, const QJsonObject &body,
                                      const QString &sessionToken, const QList<Header> &headers);

// Uploads bytes as a file with the caller's session; answers the stored file's name and URL.
[[nodiscard]] TestBackend::Reply upload(const QString &name, const QByteArray &bytes, const QString &sessionToken);

// A request sent over a plain socket, its target exactly as given (Qt's URL class would bring
// percent-encodings into its own form first). Reads the status line and the body.
[[nodiscard]] TestBackend::Reply rawRequest(const TestBackend &backend, const QByteArray &method,
                                            const QByteArray &target, const QByteArray &body,
                                            const QString &sessionToken);

// A plain GET of any URL, for the static pages.
[[nodiscard]] TestBackend::Reply fetch(const QUrl &url, QByteArray *contentType = nullptr);

// The stored record as the master key sees it (empty when missing).
[[nodiscard]] QJsonObject masterGet(const QString &className, const QString &objectId);

// Results of a master-key query with the given constraints.
[[nodiscard]] QList<QJsonObject> masterFind(const QString &className, const QJsonObject &where);

// The Parse error code of a reply, or 0 when it carries none.
[[nodiscard]] int errorCode(const TestBackend::Reply &reply);

// A unique text for one test's data.
[[nodiscard]] QString uniqueTag();

// "where=<JSON>" for a query string, with more parameters after it.
[[nodiscard]] QString whereQuery(const QJsonObject &where, const QString &extra = {});

// A fresh newsroom account (administrators set the flag with the master key).
[[nodiscard]] TestBackend::User newsroomUser(const TestBackend &backend = TestBackend::instance());

// The backend still answers its health check.
[[nodiscard]] bool healthy(const TestBackend &backend = TestBackend::instance());

// The app's deletion notice for an account, as the profile screen sends it.
[[nodiscard]] QString deletionNotice(const QString &firstName, const QString &objectId, const QString &username);

} // namespace BackendProbe
