#pragma once

#include <QPoint>
#include <QString>
#include <QUrl>

class QQuickItem;
class QQuickWindow;

// What view tests do with a drawn screen: find an item by its outlet name in the visual tree
// (which, unlike QObject children, holds what loaders and repeaters made), aim at it, type.
namespace ViewTest {

// The first item named `name` below `root`; with visibleOnly, hidden items are passed over.
QQuickItem *findItem(QQuickItem *root, const QString &name, bool visibleOnly = false);
// The first visible item named `name` in the window.
QQuickItem *visibleItem(QQuickWindow *window, const QString &name);
QPoint centreOf(QQuickItem *item);
// A left click in the middle of the item.
void tap(QQuickWindow *window, QQuickItem *item);
// Key clicks on the window, one per character (QTest::keyClicks serves widgets only).
void typeText(QQuickWindow *window, const QString &text);
// Empty when the QML file at `url` compiles with the app's modules; otherwise the errors.
QString compileErrors(const QUrl &url);
// Makes the running test function fail on any warning from QML (a binding loop, a type error,
// a missing property). Call it in each view suite's init().
void failOnQmlWarnings();

} // namespace ViewTest
