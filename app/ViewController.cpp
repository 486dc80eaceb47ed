#include "app/ViewController.h"

ViewController::ViewController(QObject *parent) : ui::ViewController(parent) {}

void ViewController::viewDidLoad()
{
    ui::ViewController::viewDidLoad();
}
