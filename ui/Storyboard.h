#pragma once

#include "StoryboardSegue.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <functional>

namespace ui {

class ViewController;

// A segue leaving a scene: how it shows its destination, and which scene that is.
// Embed segues run when the source's view loads; the identifier names the slot of the
// source's view that draws the child. Custom segues run `perform` after prepareForSegue.
struct SegueDefinition {
    StoryboardSegue::Kind kind = StoryboardSegue::Kind::Push;
    QString destination;
    std::function<void(StoryboardSegue *)> perform = {};
};

// One screen of a storyboard: how to make its controller and the QML file that draws it.
// A scene with a root is a navigation controller whose first screen is that scene.
struct SceneDefinition {
    std::function<ViewController *()> create;
    QUrl view = {};
    QMap<QString, SegueDefinition> segues = {};
    QString root = {};
};

struct StoryboardDefinition {
    QString initialIdentifier;
    QHash<QString, SceneDefinition> scenes;
};

// Named sets of screens and the segues between them. Storyboards are registered explicitly
// at start-up (and by tests); a name may be registered again to replace its scenes.
class Storyboard : public QObject {
    Q_OBJECT

public:
    static void registerStoryboard(const QString &name, const StoryboardDefinition &definition);
    // nullptr, with a logged error, for a name never registered.
    static Storyboard *storyboardWithName(const QString &name);
    // Whether a storyboard of that name is registered (asks without logging an error).
    [[nodiscard]] static bool hasStoryboard(const QString &name);
    // Every registered name, sorted.
    [[nodiscard]] static QStringList registeredNames();

    [[nodiscard]] QString name() const { return objectName(); }
    // The identifiers of this storyboard's scenes, sorted.
    [[nodiscard]] QStringList sceneIdentifiers() const;

    // New controllers without a QObject parent; nullptr, with a logged error, for an unknown
    // identifier.
    [[nodiscard]] ViewController *instantiateInitialViewController();
    [[nodiscard]] ViewController *instantiateViewControllerWithIdentifier(const QString &identifier);

    // Used by ViewController: runs the segue `identifier` of the source's scene.
    bool performSegue(ViewController *source, const QString &identifier, QObject *sender);
    // Used by ViewController while its view loads: runs the scene's embed segues.
    void performEmbedSegues(ViewController *source);

private:
    explicit Storyboard(const QString &name);
    void run(ViewController *source, const QString &identifier, const SegueDefinition &definition, QObject *sender);

    StoryboardDefinition m_definition;
};

} // namespace ui
