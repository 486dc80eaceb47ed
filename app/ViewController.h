#pragma once

// The framework's base shares this class's name; its header is reached through its folder.
#include "ui/ViewController.h"

#include <QtQml/qqmlregistration.h>

// The empty start-up screen. It carries no state: its view shows the app's name and nothing
// else, and its only lifecycle work is the base class's.
class ViewController : public ui::ViewController {
    Q_OBJECT
    QML_NAMED_ELEMENT(StartViewController)
    QML_UNCREATABLE("Made by the storyboard")
public:
    explicit ViewController(QObject *parent = nullptr);

protected:
    void viewDidLoad() override;
};
