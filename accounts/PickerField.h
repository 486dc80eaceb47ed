#pragma once

#include "CountryCode.h"
#include "PickerSheet.h"
#include "TextField.h"
#include "ViewController.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

// A text field filled from a list picker, as the registration and contact-details forms use
// them (role, dialling codes, home country).
//
// When editing of the field begins and the field is EMPTY, the field is first filled with the
// first row's value, then a picker sheet opens on the owner screen with the title, the rows and
// that first row selected. Done writes the chosen row's value into the field, resigns the field
// and ends editing of the whole screen (whichever input holds focus resigns); Cancel (or a picker
// refused because an alert shows) empties the field again, as it was, and resigns it. A field
// that already holds text opens no picker, so the text typed or chosen earlier is left alone.
//
// A row's value is what the field receives: the row itself, or, for dialling codes, the code
// alone (setDialCodes). The picker rows can be replaced at any time (e.g. after a late load);
// with no rows, editing begins as usual and no picker opens.
class PickerField : public QObject {
    Q_OBJECT

public:
    // Watches field (owned elsewhere) and presents the picker on owner; both must outlive the
    // picker field or be its parents.
    PickerField(ui::TextField *field, ui::ViewController *owner, const QString &title, QObject *parent = nullptr);

    // Rows that write themselves into the field.
    void setRows(const QStringList &rows);
    // Rows with their own values (same length; a shorter list of values is an error and is
    // ignored with a warning).
    void setRows(const QStringList &rows, const QStringList &values);
    // One row per country ("name:  +code : XX "), each writing its dialling code; pass the list
    // with the placeholder in front so that the first row clears the field.
    void setDialCodes(const QList<CountryCode> &countries);

    [[nodiscard]] ui::TextField *field() const { return m_field; }
    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] QStringList rows() const { return m_rows; }
    [[nodiscard]] QStringList values() const { return m_values; }
    // The sheet on screen, if one is open.
    [[nodiscard]] ui::PickerSheet *sheet() const { return m_sheet; }

Q_SIGNALS:
    // After a choice has been written into the field.
    void picked(int index, const QString &value);

private:
    void editingBegan();
    void chosen(int index);
    void cancelled();

    QPointer<ui::TextField> m_field;
    QPointer<ui::ViewController> m_owner;
    QString m_title;
    QStringList m_rows;
    QStringList m_values;
    QPointer<ui::PickerSheet> m_sheet;
};
