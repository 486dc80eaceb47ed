#include "StoryboardSegue.h"

#include "ViewController.h"

namespace ui {

StoryboardSegue::StoryboardSegue(const QString &identifier, Kind kind, ViewController *source,
                                 ViewController *destination, QObject *parent)
    : QObject(parent)
    , m_identifier(identifier)
    , m_kind(kind)
    , m_source(source)
    , m_destination(destination)
{
}

} // namespace ui
