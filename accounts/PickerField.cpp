#include "PickerField.h"

#include "AccountsLogging.h"
#include "DialCodes.h"
#include "FirstResponder.h"
#include "PickerSheet.h"
#include "TextField.h"
#include "ViewController.h"

PickerField::PickerField(ui::TextField *field, ui::ViewController *owner, const QString &title, QObject *parent)
    : QObject(parent), m_field(field), m_owner(owner), m_title(title)
{
    Q_ASSERT(field && owner);
    connect(field, &ui::TextField::editingDidBegin, this, &PickerField::editingBegan);
}

void PickerField::setRows(const QStringList &rows)
{
    setRows(rows, rows);
}

void PickerField::setRows(const QStringList &rows, const QStringList &values)
{
    if (values.size() != rows.size()) {
        qCWarning(lcAccounts) << "The picker" << m_title << "got" << rows.size() << "rows but" << values.size()
                              << "values; its rows stay as they were";
        return;
    }
    m_rows = rows;
    m_values = values;
}

void PickerField::setDialCodes(const QList<CountryCode> &countries)
{
    QStringList values;
    values.reserve(countries.size());
    for (const CountryCode &country : countries)
        values.append(country.dial_code);
    setRows(DialCodes::pickerRows(countries), values);
}

void PickerField::editingBegan()
{
    if (!m_field || !m_owner || !m_field->text().isEmpty() || m_rows.isEmpty() || m_sheet)
        return;
    m_field->setText(m_values.first());
    QPointer<PickerField> self(this);
    m_sheet = ui::PickerSheet::showPickerWithTitle(
        m_title, m_rows, 0,
        [self](ui::PickerSheet *, int index, const QString &) {
            if (self)
                self->chosen(index);
        },
        [self](ui::PickerSheet *) {
            if (self)
                self->cancelled();
        },
        m_owner);
    if (!m_sheet) // refused: an alert is on screen
        cancelled();
}

void PickerField::chosen(int index)
{
    m_sheet = nullptr;
    if (!m_field || index < 0 || index >= m_values.size())
        return;
    const QString value = m_values.at(index);
    m_field->setText(value);
    m_field->resignFirstResponder();
    // Ends editing of the screen: whichever input took focus meanwhile lets it go too.
    if (ui::TextInput *current = ui::FirstResponder::instance()->current())
        current->resignFirstResponder();
    Q_EMIT picked(index, value);
}

void PickerField::cancelled()
{
    m_sheet = nullptr;
    if (!m_field)
        return;
    // Back to what the field held before: only an empty field opens the picker.
    m_field->setText({});
    m_field->resignFirstResponder();
}
