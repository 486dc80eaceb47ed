#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QNetworkRequest>
#include <QPair>
#include <QString>
#include <QUrl>

// The throwaway local backend that the CTest "backend" fixture started. Its state file
// (KEY=VALUE lines written by `server/backend start --throwaway`) tells where it listens.
class TestBackend {
public:
    // Reads the state file named by VANTREL_TEST_BACKEND_STATE (environment first, then the
    // path compiled in). Returns false, with a reason in error(), when there is none.
    static const TestBackend &instance();
    // Another backend, described by the state file that its start wrote.
    [[nodiscard]] static TestBackend fromStateFile(const QString &path);

    [[nodiscard]] bool isAvailable() const { return m_available; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QString value(const QString &key) const { return m_values.value(key); }

    [[nodiscard]] QUrl serverUrl() const { return QUrl(value(QStringLiteral("VANTREL_SERVER_URL"))); }
    [[nodiscard]] QUrl siteUrl() const { return QUrl(value(QStringLiteral("VANTREL_SITE_URL"))); }
    [[nodiscard]] QString applicationId() const { return value(QStringLiteral("VANTREL_APP_ID")); }
    [[nodiscard]] QString clientKey() const { return value(QStringLiteral("VANTREL_CLIENT_KEY")); }
    [[nodiscard]] QString masterKey() const { return value(QStringLiteral("VANTREL_MASTER_KEY")); }
    [[nodiscard]] QString mailOutbox() const { return value(QStringLiteral("VANTREL_MAIL_OUTBOX")); }
    [[nodiscard]] QString noticeOutbox() const { return value(QStringLiteral("VANTREL_NOTICE_OUTBOX")); }

    struct Reply {
        int status = 0; // HTTP status, 0 when no reply arrived
        QJsonDocument body;
        QByteArray raw;
        // A text key of the reply's object.
        [[nodiscard]] QString text(const QString &key) const { return body.object().value(key).toString(); }
    };

    using Header = QPair<QByteArray, QByteArray>;

    // A blocking REST call for test set-up and checks. With useMasterKey the call bypasses
    // permissions; otherwise it goes as a client (optionally with a session token). Extra
    // headers (such as X-Parse-Request-Id) are sent as given.
    Reply request(const QByteArray &method, const QString &path, const QJsonObject &body = {},
                  bool useMasterKey = false, const QString &sessionToken = {}, const QList<Header> &headers = {}) const;

    // Sends a prepared request and waits for its reply (30 s at most).
    static Reply exchange(const QNetworkRequest &request, const QByteArray &method, const QByteArray &payload,
                          QByteArray *contentType = nullptr);

    // A fresh user signed up for one test, with a unique name, authorised as registration makes
    // it (unless extraFields say otherwise). Returns its objectId and session token.
    struct User {
        QString objectId;
        QString username;
        QString password;
        QString sessionToken;
    };
    User signUpUser(const QJsonObject &extraFields = {}) const;

    // Appends the lines of a file written since the test began; used for the outboxes.
    static QStringList readLines(const QString &path);

private:
    explicit TestBackend(const QString &stateFile);
    bool m_available = false;
    QString m_error;
    QHash<QString, QString> m_values;
};

// Skips the current test when no backend was started (e.g. running one binary by hand).
#define REQUIRE_BACKEND()                                                                                              \
    do {                                                                                                               \
        if (!TestBackend::instance().isAvailable())                                                                    \
            QFAIL(qPrintable(QStringLiteral("local backend not running: ") + TestBackend::instance().error()));        \
    } while (false)
