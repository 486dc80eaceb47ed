#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <functional>

// The desktop's own file chooser, through the XDG desktop portal
// (org.freedesktop.portal.FileChooser on the session bus): the Linux convention, which also
// reaches outside a sandbox. One question at a time.
class PortalFileChooser : public QObject {
    Q_OBJECT

public:
    enum class Outcome { Picked, Cancelled, Failed };
    using Completion = std::function<void(Outcome, const QUrl &file)>;

    explicit PortalFileChooser(const QDBusConnection &bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    // A portal runs on the bus, or the bus can start one.
    [[nodiscard]] bool isAvailable() const;

    // Asks for one file of these MIME types (which match names in any letter case). The
    // completion comes once the person has answered; Failed when the portal cannot ask (none
    // runs, it has no file chooser, or a question is already open), so the caller can offer
    // its own picker.
    void openFile(const QString &title, const QStringList &mimeTypes, Completion completion);

private Q_SLOTS:
    void response(uint code, const QVariantMap &results);

private:
    void listen(const QString &requestPath);
    void finish(Outcome outcome, const QUrl &file = {});

    QDBusConnection m_bus;
    Completion m_completion;
    QString m_requestPath;
    int m_requests = 0;
};
