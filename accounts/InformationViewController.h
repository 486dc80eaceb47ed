#pragma once

#include "ViewController.h"

#include <QtQml/qqmlregistration.h>

// The information page behind the sign-in: what the app is for, how accounts are authorised,
// and where to get help.
class InformationViewController : public ui::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(QString helpEmail READ helpEmail CONSTANT)
    Q_PROPERTY(QString administratorEmail READ administratorEmail CONSTANT)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)

public:
    explicit InformationViewController(QObject *parent = nullptr);

    [[nodiscard]] QString helpEmail() const { return m_helpEmail; }
    [[nodiscard]] QString administratorEmail() const { return m_administratorEmail; }
    [[nodiscard]] QString versionText() const { return m_versionText; }

private:
    QString m_helpEmail;
    QString m_administratorEmail;
    QString m_versionText;
};
