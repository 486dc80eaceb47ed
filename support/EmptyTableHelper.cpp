#include "EmptyTableHelper.h"

#include "Label.h"
#include "TableView.h"
#include "TableViewController.h"
#include "View.h"

#include <QStringList>

void EmptyTableHelper::emptyMessage(const QString &message, ui::TableViewController *on)
{
    if (!on || !on->isViewLoaded())
        return;
    const ui::View *view = on->view();
    auto *label = new ui::Label(QStringLiteral("emptyMessageLabel"));
    label->setFrame(QRectF(20, 0, view->width() - 40, view->height()));
    label->setText(message);
    label->setTextColor(Qt::lightGray);
    label->setNumberOfLines(0);
    label->setTextAlignment(Qt::AlignHCenter);
    label->setFont(messageFont());
    label->sizeToFit();
    on->tableView()->setBackgroundView(label);
    on->tableView()->setSeparatorStyle(ui::TableView::SeparatorStyle::None);
}

QFont EmptyTableHelper::messageFont()
{
    QFont font;
    // Both spellings of the family, then a font every installation here has.
    font.setFamilies({QStringLiteral("TrebuchetMS"), QStringLiteral("Trebuchet MS"), QStringLiteral("DejaVu Sans")});
    // Sizes on screen are in device-independent pixels, as every frame here is.
    font.setPixelSize(20);
    return font;
}
