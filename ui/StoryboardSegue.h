#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

Q_MOC_INCLUDE("ViewController.h")

namespace ui {

class ViewController;

// One transition between two screens of a storyboard, handed to the source's
// prepareForSegue before the destination appears.
class StoryboardSegue : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Segues are made by storyboards")
    Q_PROPERTY(QString identifier READ identifier CONSTANT)
    Q_PROPERTY(ui::ViewController *sourceViewController READ sourceViewController CONSTANT)
    Q_PROPERTY(ui::ViewController *destinationViewController READ destinationViewController CONSTANT)

public:
    enum class Kind { Push, Modal, Embed, Custom };
    Q_ENUM(Kind)

    StoryboardSegue(const QString &identifier, Kind kind, ViewController *source, ViewController *destination,
                    QObject *parent = nullptr);

    [[nodiscard]] QString identifier() const { return m_identifier; }
    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] ViewController *sourceViewController() const { return m_source; }
    [[nodiscard]] ViewController *destinationViewController() const { return m_destination; }

private:
    QString m_identifier;
    Kind m_kind;
    QPointer<ViewController> m_source;
    QPointer<ViewController> m_destination;
};

} // namespace ui
