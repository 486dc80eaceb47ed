#pragma once

#include "ViewController.h"

#include <QStringList>

// A screen that writes each lifecycle call, with its name, to a shared log.
class RecordingController : public ui::ViewController {
    Q_OBJECT

public:
    RecordingController(const QString &name, QStringList *log, QObject *parent = nullptr)
        : ui::ViewController(parent)
        , m_log(log)
    {
        setObjectName(name);
    }

protected:
    void viewDidLoad() override { record(QStringLiteral("viewDidLoad")); }
    void viewWillAppear(bool) override { record(QStringLiteral("viewWillAppear")); }
    void viewDidAppear(bool) override { record(QStringLiteral("viewDidAppear")); }
    void viewWillDisappear(bool) override { record(QStringLiteral("viewWillDisappear")); }
    void viewDidDisappear(bool) override { record(QStringLiteral("viewDidDisappear")); }

    void record(const QString &event)
    {
        if (m_log)
            m_log->append(objectName() + QLatin1Char('.') + event);
    }

private:
    QStringList *m_log;
};
