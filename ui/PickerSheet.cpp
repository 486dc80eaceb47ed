#include "PickerSheet.h"

#include "View.h"

#include <QGuiApplication>
#include <QPointer>
#include <QStyleHints>

#include <algorithm>

namespace ui {

PickerSheet::PickerSheet(const QString &title, const QStringList &rows, int initialSelection, DoneHandler done,
                         CancelHandler cancel, QObject *parent)
    : ViewController(parent)
    , m_rows(rows)
    , m_done(std::move(done))
    , m_cancel(std::move(cancel))
{
    setTitle(title);
    setSelectedIndex(initialSelection);
    setModalPresentationStyle(ModalPresentationStyle::OverFullScreen);
    setViewUrl(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Ui/PickerSheetView.qml")));
}

PickerSheet *PickerSheet::showPickerWithTitle(const QString &title, const QStringList &rows, int initialSelection,
                                              DoneHandler done, CancelHandler cancel, ViewController *origin)
{
    if (!origin)
        return nullptr;
    auto *sheet = new PickerSheet(title, rows, initialSelection, std::move(done), std::move(cancel));
    origin->presentViewController(sheet, true);
    if (!sheet->presentingViewController()) {
        delete sheet;
        return nullptr;
    }
    return sheet;
}

void PickerSheet::setSelectedIndex(int index)
{
    const int clamped = m_rows.isEmpty() ? -1 : std::clamp(index, 0, int(m_rows.size()) - 1);
    if (m_selectedIndex == clamped)
        return;
    m_selectedIndex = clamped;
    Q_EMIT selectedIndexChanged();
}

void PickerSheet::viewDidLoad()
{
    view()->setBackgroundColor(Qt::transparent);
}

void PickerSheet::done()
{
    if (m_finishing)
        return;
    m_finishing = true;
    QPointer<PickerSheet> sheet(this);
    const int index = m_selectedIndex;
    const QString value = index >= 0 ? m_rows.at(index) : QString();
    DoneHandler handler = m_done;
    dismissViewControllerAnimated(true, [sheet, handler, index, value] {
        if (handler)
            handler(sheet, index, value);
    });
}

void PickerSheet::cancel()
{
    if (m_finishing)
        return;
    m_finishing = true;
    QPointer<PickerSheet> sheet(this);
    CancelHandler handler = m_cancel;
    dismissViewControllerAnimated(true, [sheet, handler] {
        if (handler)
            handler(sheet);
    });
}

int PickerSheet::rowStartingWith(const QStringList &rows, const QString &prefix, int from)
{
    const int count = int(rows.size());
    if (prefix.isEmpty() || count == 0)
        return -1;
    const int start = ((from % count) + count) % count;
    for (int step = 0; step < count; ++step) {
        const int row = (start + step) % count;
        if (rows.at(row).startsWith(prefix, Qt::CaseInsensitive))
            return row;
    }
    return -1;
}

void PickerSheet::keyboardSearch(const QString &text)
{
    if (text.isEmpty() || !text.at(0).isPrint())
        return;
    const bool continues =
        m_lastKey.isValid() && m_lastKey.elapsed() < QGuiApplication::styleHints()->keyboardInputInterval();
    m_search = continues ? m_search + text : text;
    m_lastKey.restart();

    // "ttt" cycles through the rows starting with t; anything else narrows the search.
    const bool sameLetter = m_search.count(m_search.at(0), Qt::CaseInsensitive) == m_search.size();
    const QString prefix = sameLetter ? m_search.left(1) : m_search;
    const int from = sameLetter ? m_selectedIndex + 1 : m_selectedIndex;
    int row = rowStartingWith(m_rows, prefix, from);
    if (row < 0 && sameLetter && m_search.size() > 1)
        row = rowStartingWith(m_rows, m_search, m_selectedIndex); // a name such as "Aa..."
    if (row >= 0)
        setSelectedIndex(row);
}

} // namespace ui
