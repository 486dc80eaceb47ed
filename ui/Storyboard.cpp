#include "Storyboard.h"

#include "NavigationController.h"
#include "UiLogging.h"
#include "ViewController.h"

#include <QQmlEngine>

namespace ui {

namespace {

QHash<QString, Storyboard *> &registry()
{
    static QHash<QString, Storyboard *> storyboards;
    return storyboards;
}

} // namespace

Storyboard::Storyboard(const QString &name)
{
    setObjectName(name);
}

void Storyboard::registerStoryboard(const QString &name, const StoryboardDefinition &definition)
{
    Storyboard *&storyboard = registry()[name];
    if (!storyboard)
        storyboard = new Storyboard(name);
    storyboard->m_definition = definition;
}

Storyboard *Storyboard::storyboardWithName(const QString &name)
{
    Storyboard *storyboard = registry().value(name);
    if (!storyboard)
        qCCritical(lcStoryboard).noquote() << QStringLiteral("Could not find a storyboard named '%1'").arg(name);
    return storyboard;
}

bool Storyboard::hasStoryboard(const QString &name)
{
    return registry().contains(name);
}

QStringList Storyboard::registeredNames()
{
    QStringList names = registry().keys();
    names.sort();
    return names;
}

QStringList Storyboard::sceneIdentifiers() const
{
    QStringList identifiers = m_definition.scenes.keys();
    identifiers.sort();
    return identifiers;
}

ViewController *Storyboard::instantiateInitialViewController()
{
    if (m_definition.initialIdentifier.isEmpty()) {
        qCCritical(lcStoryboard).noquote()
            << QStringLiteral("Storyboard '%1' has no initial view controller").arg(name());
        return nullptr;
    }
    return instantiateViewControllerWithIdentifier(m_definition.initialIdentifier);
}

ViewController *Storyboard::instantiateViewControllerWithIdentifier(const QString &identifier)
{
    const auto scene = m_definition.scenes.constFind(identifier);
    if (scene == m_definition.scenes.cend() || !scene->create) {
        qCCritical(lcStoryboard).noquote()
            << QStringLiteral("Storyboard '%1' doesn't contain a view controller with identifier '%2'")
                   .arg(name(), identifier);
        return nullptr;
    }
    ViewController *controller = scene->create();
    if (!controller) {
        qCCritical(lcStoryboard).noquote()
            << QStringLiteral("Storyboard '%1' could not make the view controller '%2'").arg(name(), identifier);
        return nullptr;
    }
    // QML must never collect a screen handed to it.
    QQmlEngine::setObjectOwnership(controller, QQmlEngine::CppOwnership);
    controller->attachToStoryboard(this, identifier);
    if (!scene->view.isEmpty())
        controller->setViewUrl(scene->view);

    if (!scene->root.isEmpty()) {
        auto *navigation = qobject_cast<NavigationController *>(controller);
        ViewController *root = instantiateViewControllerWithIdentifier(scene->root);
        if (!navigation || !root) {
            qCCritical(lcStoryboard).noquote()
                << QStringLiteral("Scene '%1' of storyboard '%2' cannot hold the root '%3'")
                       .arg(identifier, name(), scene->root);
            delete root;
        } else {
            navigation->setViewControllers({root});
        }
    }
    return controller;
}

bool Storyboard::performSegue(ViewController *source, const QString &identifier, QObject *sender)
{
    const auto scene = m_definition.scenes.constFind(source->storyboardIdentifier());
    if (scene == m_definition.scenes.cend() || !scene->segues.contains(identifier)) {
        qCCritical(lcStoryboard).noquote() << QStringLiteral("Receiver (<%1>) has no segue with identifier '%2'")
                                                  .arg(QLatin1String(source->metaObject()->className()), identifier);
        return false;
    }
    run(source, identifier, scene->segues.value(identifier), sender);
    return true;
}

void Storyboard::performEmbedSegues(ViewController *source)
{
    const auto scene = m_definition.scenes.constFind(source->storyboardIdentifier());
    if (scene == m_definition.scenes.cend())
        return;
    for (auto it = scene->segues.cbegin(); it != scene->segues.cend(); ++it) {
        if (it->kind == StoryboardSegue::Kind::Embed)
            run(source, it.key(), it.value(), nullptr);
    }
}

void Storyboard::run(ViewController *source, const QString &identifier, const SegueDefinition &definition,
                     QObject *sender)
{
    ViewController *destination = instantiateViewControllerWithIdentifier(definition.destination);
    if (!destination)
        return;
    StoryboardSegue segue(identifier, definition.kind, source, destination);
    source->prepareForSegue(&segue, sender);

    switch (definition.kind) {
    case StoryboardSegue::Kind::Push:
        if (NavigationController *navigation = source->navigationController()) {
            navigation->pushViewController(destination, true);
            break;
        }
        // Without a navigation controller the screen is shown modally, as the platform does.
        source->presentViewController(destination, true);
        break;
    case StoryboardSegue::Kind::Modal:
        destination->setModalPresentationStyle(ViewController::ModalPresentationStyle::FullScreen);
        source->presentViewController(destination, true);
        break;
    case StoryboardSegue::Kind::Embed:
        source->addChildViewController(destination, identifier);
        if (source->isOnScreen()) {
            destination->beginAppearanceTransition(true, false);
            destination->endAppearanceTransition();
        }
        break;
    case StoryboardSegue::Kind::Custom:
        if (definition.perform)
            definition.perform(&segue);
        break;
    }
    // A destination that was refused (e.g. an alert is showing) is not left behind.
    if (!destination->parent())
        delete destination;
}

} // namespace ui
