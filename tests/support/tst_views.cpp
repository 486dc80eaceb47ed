#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>

// The designable views compile and take their layout-time properties (an unknown property
// would stop the component from being created).
class TestSupportViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void designableViewsTakeTheirLook_data()
    {
        QTest::addColumn<QString>("type");
        QTest::newRow("view") << QStringLiteral("DesignableView");
        QTest::newRow("button") << QStringLiteral("DesignableButton");
        QTest::newRow("label") << QStringLiteral("DesignableLabel");
    }

    void designableViewsTakeTheirLook()
    {
        QFETCH(QString, type);
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData(QStringLiteral("import QtQuick\nimport Vantrel.Support\n%1 { width: 100; height: 40; "
                                         "cornerRadius: 10; borderWidth: 1; borderColor: \"red\"; "
                                         "shadowRadius: 4; shadowOpacity: 0.5; shadowOffset: Qt.size(2, 3); "
                                         "shadowColor: \"blue\" }")
                              .arg(type)
                              .toUtf8(),
                          QUrl());
        std::unique_ptr<QObject> item(component.create());
        QVERIFY2(item, qPrintable(component.errorString()));
    }
};

QTEST_MAIN(TestSupportViews)
#include "tst_views.moc"
