#pragma once

#include "Control.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

namespace ui {

// A spinning busy indicator placed by frame over a view.
class ActivityIndicatorView : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(ActivityIndicatorViewOutlet)
    QML_UNCREATABLE("Create indicators in C++")
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged)
    Q_PROPERTY(qreal cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY cornerRadiusChanged)
    Q_PROPERTY(bool hidesWhenStopped READ hidesWhenStopped WRITE setHidesWhenStopped NOTIFY hidesWhenStoppedChanged)
    Q_PROPERTY(Style style READ style WRITE setStyle NOTIFY styleChanged)
    Q_PROPERTY(QColor color READ color NOTIFY styleChanged)
    Q_PROPERTY(qreal indicatorSize READ indicatorSize NOTIFY styleChanged)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY backgroundColorChanged)
    Q_PROPERTY(bool animating READ isAnimating NOTIFY animatingChanged)
    Q_PROPERTY(QString caption READ caption WRITE setCaption NOTIFY captionChanged)

public:
    // The platform's numbering: 0 is the large white indicator.
    enum class Style { WhiteLarge = 0, White = 1, Gray = 2 };
    Q_ENUM(Style)

    explicit ActivityIndicatorView(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] QRectF frame() const { return m_frame; }
    void setFrame(const QRectF &frame);
    [[nodiscard]] QPointF center() const { return m_frame.center(); }
    void setCenter(const QPointF &center);
    [[nodiscard]] qreal cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(qreal radius);
    [[nodiscard]] bool hidesWhenStopped() const { return m_hidesWhenStopped; }
    void setHidesWhenStopped(bool hides);
    [[nodiscard]] Style style() const { return m_style; }
    void setStyle(Style style);
    // The colour and diameter of the spinning mark, given by the style.
    [[nodiscard]] QColor color() const;
    [[nodiscard]] qreal indicatorSize() const;
    [[nodiscard]] QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    [[nodiscard]] bool isAnimating() const { return m_animating; }
    // What the wait is for ("Signing in…"), drawn under the indicator and read out by screen
    // readers; empty: the indicator alone.
    [[nodiscard]] QString caption() const { return m_caption; }
    void setCaption(const QString &caption);

    Q_INVOKABLE void startAnimating();
    Q_INVOKABLE void stopAnimating();

Q_SIGNALS:
    void frameChanged();
    void cornerRadiusChanged();
    void hidesWhenStoppedChanged();
    void styleChanged();
    void backgroundColorChanged();
    void animatingChanged();
    void captionChanged();

private:
    QRectF m_frame;
    qreal m_cornerRadius = 0;
    bool m_hidesWhenStopped = true;
    Style m_style = Style::White;
    QColor m_backgroundColor = Qt::transparent;
    bool m_animating = false;
    QString m_caption;
};

} // namespace ui
