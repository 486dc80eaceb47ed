#include "Window.h"

#include "UiLogging.h"
#include "ViewController.h"

#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>

namespace ui {

namespace {

QPointer<Window> &keyWindowSlot()
{
    static QPointer<Window> window;
    return window;
}

} // namespace

Window::Window(QObject *parent)
    : QObject(parent)
    , m_presentationModel(new ControllerListModel(this))
{
    keyWindowSlot() = this;
}

Window::~Window()
{
    // The QML items refer to the screens: tear them down first.
    if (m_quickWindow)
        m_quickWindow->close();
    m_engine.reset();
}

Window *Window::keyWindow()
{
    return keyWindowSlot();
}

void Window::setRootViewController(ViewController *controller)
{
    if (m_root == controller)
        return;
    QPointer<ViewController> old = m_root.data();
    if (controller && !controller->parent())
        controller->setParent(this);
    m_root = controller;
    if (m_visible) {
        if (old)
            old->beginAppearanceTransition(false, false);
        if (controller)
            controller->beginAppearanceTransition(true, false);
        if (old)
            old->endAppearanceTransition();
        if (controller)
            controller->endAppearanceTransition();
    }
    if (old && old->parent() == this)
        old->deleteLater();
    trackPresentations();
    Q_EMIT rootViewControllerChanged();
}

void Window::makeKeyAndVisible()
{
    keyWindowSlot() = this;
    if (!m_visible) {
        m_visible = true;
        if (m_root) {
            m_root->beginAppearanceTransition(true, false);
            m_root->endAppearanceTransition();
        }
    }
    if (m_drawsInterface)
        loadInterface();
}

QList<ViewController *> Window::presentationStack() const
{
    QList<ViewController *> stack;
    for (ViewController *c = m_root; c; c = c->presentedViewController())
        stack.append(c);
    return stack;
}

void Window::trackPresentations()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_tracking))
        disconnect(connection);
    m_tracking.clear();
    for (ViewController *c : presentationStack()) {
        m_tracking.append(connect(c, &ViewController::presentedViewControllerChanged, this,
                                  &Window::scheduleTracking, Qt::UniqueConnection));
        m_tracking.append(connect(c, &QObject::destroyed, this, &Window::trackPresentations, Qt::UniqueConnection));
    }
    m_presentationModel->setControllers(presentationStack());
    Q_EMIT presentationStackChanged();
}

void Window::scheduleTracking()
{
    // A presentation often starts while the drawn screens are busy with a change of their own
    // (a field losing focus as the screen under an alert is disabled shows another alert): the
    // drawn stack follows on the next turn of the event loop instead of in the middle of that.
    if (m_trackingScheduled)
        return;
    m_trackingScheduled = true;
    QTimer::singleShot(0, this, [this] {
        m_trackingScheduled = false;
        trackPresentations();
    });
}

void Window::loadInterface()
{
    if (m_engine)
        return;
    if (QQuickStyle::name().isEmpty())
        QQuickStyle::setStyle(QStringLiteral("Basic"));
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_engine->setInitialProperties({{QStringLiteral("uiWindow"), QVariant::fromValue(this)}});
    m_engine->load(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Ui/AppWindow.qml")));
    const QList<QObject *> roots = m_engine->rootObjects();
    m_quickWindow = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
    if (!m_quickWindow)
        qCCritical(lcUi) << "The application window could not be loaded";
}

} // namespace ui
