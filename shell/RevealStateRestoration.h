#pragma once

#include <QString>
#include <QVariantMap>

class RevealViewController;

// Saves a reveal container's state and brings it back: every setting under its own name
// with a leading underscore ("_rearViewRevealWidth"), the interaction state kept for after a
// drag, the three screens and the front's position. A stored value that cannot be read as
// its setting (a word where a number belongs, a colour that is none) keeps the setting as it
// is; so does a position outside the seven known ones.
class RevealStateRestoration {
public:
    // The identifier under which restoration recreates the container.
    static inline const QString kRestorationIdentifier = QStringLiteral("RevealViewController");

    // A new container for its identifier, nullptr for any other.
    [[nodiscard]] static RevealViewController *viewControllerWithRestorationIdentifier(const QString &identifier);
    [[nodiscard]] static QVariantMap encode(const RevealViewController &reveal);
    static void decode(const QVariantMap &state, RevealViewController &reveal);
};
