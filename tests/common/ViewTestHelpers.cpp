#include "ViewTestHelpers.h"

#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>

namespace ViewTest {

QQuickItem *findItem(QQuickItem *root, const QString &name, bool visibleOnly)
{
    if (root->objectName() == name && (!visibleOnly || root->isVisible()))
        return root;
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *found = findItem(child, name, visibleOnly))
            return found;
    }
    return nullptr;
}

QQuickItem *visibleItem(QQuickWindow *window, const QString &name)
{
    return findItem(window->contentItem(), name, true);
}

QPoint centreOf(QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

void tap(QQuickWindow *window, QQuickItem *item)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, centreOf(item));
}

void typeText(QQuickWindow *window, const QString &text)
{
    for (const QChar ch : text)
        QTest::keyClick(window, ch.toLatin1());
}

QString compileErrors(const QUrl &url)
{
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine, url);
    return component.isReady() ? QString() : component.errorString();
}

void failOnQmlWarnings()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("\\.qml:\\d+")));
}

} // namespace ViewTest
