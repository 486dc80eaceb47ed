#pragma once

#include "ViewController.h"

#include <QElapsedTimer>
#include <QStringList>

#include <functional>

namespace ui {

// A sheet at the bottom of the screen with a wheel of text rows and "Cancel" / "Done".
// Done dismisses the sheet, then hands over the chosen row; Cancel dismisses it, then
// runs the cancel handler. A tap on a row selects it; typing jumps to a row (keyboardSearch).
class PickerSheet : public ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Picker sheets are made in C++")
    Q_PROPERTY(QStringList rows READ rows CONSTANT)
    Q_PROPERTY(int selectedIndex READ selectedIndex WRITE setSelectedIndex NOTIFY selectedIndexChanged)

public:
    using DoneHandler = std::function<void(PickerSheet *, int index, const QString &value)>;
    using CancelHandler = std::function<void(PickerSheet *)>;

    PickerSheet(const QString &title, const QStringList &rows, int initialSelection, DoneHandler done,
                CancelHandler cancel = {}, QObject *parent = nullptr);

    // Makes a sheet and presents it on origin; nullptr when the presentation is refused.
    static PickerSheet *showPickerWithTitle(const QString &title, const QStringList &rows, int initialSelection,
                                            DoneHandler done, CancelHandler cancel, ViewController *origin);

    [[nodiscard]] QStringList rows() const { return m_rows; }
    [[nodiscard]] int selectedIndex() const { return m_selectedIndex; }
    // Clamped to the rows; -1 only when there are none.
    void setSelectedIndex(int index);

    Q_INVOKABLE void done();
    Q_INVOKABLE void cancel();

    // Typed text: selects the first row that starts with it, letter case ignored. Keys typed in
    // quick succession build one search ("uni" for United Kingdom); the same letter typed
    // again moves on to the next row starting with it.
    Q_INVOKABLE void keyboardSearch(const QString &text);
    // The first row at or after `from` (wrapping round) that starts with prefix, letter case
    // ignored; -1 when none does.
    [[nodiscard]] static int rowStartingWith(const QStringList &rows, const QString &prefix, int from);

Q_SIGNALS:
    void selectedIndexChanged();

protected:
    void viewDidLoad() override;

private:
    QStringList m_rows;
    int m_selectedIndex = -1;
    DoneHandler m_done;
    CancelHandler m_cancel;
    bool m_finishing = false;
    QString m_search;
    QElapsedTimer m_lastKey;
};

} // namespace ui
