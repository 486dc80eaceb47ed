#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace ui {

// State every outlet shares: whether it is drawn, whether it takes input, and the
// integer tag screens use to tell their controls apart. The objectName is the outlet's
// name on its screen, so QML items and tests find it by that name.
class Control : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(ControlOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY hiddenChanged)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(int tag READ tag WRITE setTag NOTIFY tagChanged)
    Q_PROPERTY(qreal alpha READ alpha WRITE setAlpha NOTIFY alphaChanged)

public:
    explicit Control(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    [[nodiscard]] int tag() const { return m_tag; }
    void setTag(int tag);
    [[nodiscard]] qreal alpha() const { return m_alpha; }
    void setAlpha(qreal alpha);

Q_SIGNALS:
    void hiddenChanged();
    void enabledChanged();
    void tagChanged();
    void alphaChanged();

private:
    bool m_hidden = false;
    bool m_enabled = true;
    int m_tag = 0;
    qreal m_alpha = 1.0;
};

} // namespace ui
