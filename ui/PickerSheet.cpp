#include "PickerSheet.h"

#include "View.h"

#include <QPointer>

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

} // namespace ui
